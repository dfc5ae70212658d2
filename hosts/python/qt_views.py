"""Both live views in a PyQt5 window, with events.

    python qt_views.py        click a number, or beside the line of the graph; close the window to end

QAxWidget holds the control. PyQt5 passes no COM objects, in calls or in events: the members of the control, and events
that carry objects, are pywin32's. Events that carry numbers are signals of Qt.
"""

import ctypes
import sys

import pythoncom
from PyQt5 import sip
from PyQt5.QAxContainer import QAxWidget
from PyQt5.QtCore import QVariant, Qt
from PyQt5.QtWidgets import QApplication, QSplitter
from win32com.client import Dispatch, WithEvents


def members(widget):
    """The control in a QAxWidget as an object of pywin32."""
    sip.enableautoconversion(QVariant, False)  # an address of an address in place of an object otherwise
    try:
        variant = widget.asVariant()
    finally:
        sip.enableautoconversion(QVariant, True)
    address = ctypes.c_void_p.from_address(int(variant.value())).value
    return Dispatch(pythoncom.ObjectFromAddress(address, pythoncom.IID_IDispatch))


def triangle(left, colour):
    result = Dispatch("ZYNVue.ZYNGLTriangle")
    for index, (y, z) in enumerate([(left, 0), (left + 8, 0), (left + 4, 6)]):
        result.setPoint(index, 0, y, z)
        result.setNormale(index, 1, 0, 0)
    result.setMaterial(*colour, 1, 0.5, 0.6, 0, 0, 0)
    return result


def label(number, left):
    result = Dispatch("ZYNVue.ZYNGLTexte")
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
    trace = Dispatch("ZYNModeleGeom.Polyligne")
    trace.setPoints([0, 1, 2, 3], [0, 1, 4, 9])
    trace.setColor(0.8, 0.2, 0.15, 1)
    trace.Epaisseur = 2
    graph.setBackground(1, 1, 1)
    graph.Add(trace, 0)
    # The colour of the axes; for x and for y: name, unit, picture in their place, range, steps, scale.
    graph.GraphView(0.1, 0.1, 0.1, "t", "s", None, 0, 3, 1, 0.5, 1, "U", "mV", None, 0, 9, 3, 1, 1 / 3)
    graph.setActiveProfil(trace)
    graph.Mode = 3  # a press asks for the nearest point


class GraphEvents:
    def OnPlusProche(self, parameter, nearest, asked, direction, attribute):
        point = Dispatch(nearest)
        window.setWindowTitle(f"Nearest: {point.x:.1f}, {point.y:.1f}")


def picked(key, x, y, names):
    window.setWindowTitle("Picked: " + (" ".join(str(name) for name in names) if names else "nothing"))


application = QApplication(sys.argv)
window = QSplitter(Qt.Horizontal)
window.setWindowTitle("PyQt5")
view_widget = QAxWidget("ZYNVue.ZYNVue3D", window)
graph_widget = QAxWidget("ZYNVue.ZYNVue2D", window)
window.setSizes([500, 500])
window.resize(1000, 500)
window.show()

view_widget.MouseSelection.connect(picked)
fill_view(members(view_widget))
graph = members(graph_widget)
events = WithEvents(graph, GraphEvents)  # as long as it is kept
fill_graph(graph)
application.exec_()
print("done")
