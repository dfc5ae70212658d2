"""Both live views in a wxPython window, with events, by comtypes.

python wx_views.py        click a number, or beside the line of the graph; close the window to end
"""

import wx
from comtypes.client import CreateObject, GetEvents
from wx.lib.activex import ActiveXCtrl


class Control(ActiveXCtrl):
    """A control in a window; "ctrl" has its members. Methods with the name of an event receive it."""

    def MSWTranslateMessage(self, msg):
        """That of ActiveXCtrl fails in 64-bit processes: it takes addresses for numbers of 32 bits."""
        return wx.msw.PyAxBaseWindow.MSWTranslateMessage(self, msg)


class View(Control):
    def MouseSelection(self, this, key, x, y, names):
        frame.SetTitle("Picked: " + (" ".join(str(name) for name in names) if names else "nothing"))


class GraphEvents:
    """Receives events as well, where it is told to."""

    def PlusProche(self, this, parameter, nearest, asked, direction, attribute):
        frame.SetTitle(f"Nearest: {nearest.x:.1f}, {nearest.y:.1f}")


def triangle(left, colour):
    result = CreateObject("ZYNVue.ZYNGLTriangle")
    for index, (y, z) in enumerate([(left, 0), (left + 8, 0), (left + 4, 6)]):
        result.setPoint(index, 0, y, z)
        result.setNormale(index, 1, 0, 0)
    result.setMaterial(*colour, 1, 0.5, 0.6, 0, 0, 0)
    return result


def label(number, left):
    result = CreateObject("ZYNVue.ZYNGLTexte")
    result.Texte = str(number)
    result.HauteurPixels = 60
    result.NomSelection = number  # the name by which it answers
    result.setPosition(0, left + 4, 2, 9)
    return result


def fill_view(view):
    for left, number, colour in ((0, 1, (0.9, 0.4, 0.1)), (10, 2, (0.1, 0.5, 0.3))):
        view.Add(triangle(left, colour), 0)
        name = label(number, left)
        view.Add(name, 0)
        view.AddSelection(name)  # what can be picked is a list of its own
    view.MouseMode = -1  # a press picks
    view.initView(0.1)


def fill_graph(graph):
    trace = CreateObject("ZYNModeleGeom.Polyligne")
    trace.setPoints([0.0, 1.0, 2.0, 3.0], [0.0, 1.0, 4.0, 9.0])
    trace.setColor(0.8, 0.2, 0.15, 1)
    trace.Epaisseur = 2
    graph.setBackground(1, 1, 1)
    graph.Add(trace, 0)
    # The colour of the axes; for x and for y: name, unit, picture in their place, range, steps, scale.
    graph.GraphView(0.1, 0.1, 0.1, "t", "s", None, 0, 3, 1, 0.5, 1, "U", "mV", None, 0, 9, 3, 1, 1 / 3)
    graph.setActiveProfil(trace)
    graph.Mode = 3  # a press asks for the nearest point


application = wx.App()
frame = wx.Frame(None, title="wxPython")
sizer = wx.BoxSizer(wx.HORIZONTAL)
view = View(frame, "ZYNVue.ZYNVue3D")
graph = Control(frame, "ZYNVue.ZYNVue2D")
for control in (view, graph):
    sizer.Add(control, 1, wx.EXPAND)
frame.SetSizer(sizer)
frame.SetClientSize(1000, 500)
frame.Show()

fill_view(view.ctrl)
events = GetEvents(graph.ctrl, GraphEvents())  # as long as it is kept
fill_graph(graph.ctrl)
application.MainLoop()
print("done")
