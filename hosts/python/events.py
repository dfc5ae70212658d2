"""A live view and its events with pywin32 alone: a plain window, and the container that Windows brings (ATL).

python events.py        click a number; close the window to end
"""

import ctypes

import pythoncom
import win32con
import win32gui
from win32com.client import Dispatch, WithEvents

TITLE = "pywin32"


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


class Events:
    """Its methods are called by the view: "On" and the name of the event."""

    def OnMouseSelection(self, key, x, y, names):
        picked = " ".join(str(name) for name in names) if names else "nothing"
        win32gui.SetWindowText(window, "Picked: " + picked)


def on_destroy(window, message, w, l):
    win32gui.PostQuitMessage(0)
    return 0


def make_window():
    """A window with the class of ATL that holds a control; its text says which."""
    ctypes.windll.atl.AtlAxWinInit()
    window_class = win32gui.WNDCLASS()
    window_class.lpszClassName = TITLE
    window_class.hCursor = win32gui.LoadCursor(0, win32con.IDC_ARROW)
    window_class.lpfnWndProc = {win32con.WM_DESTROY: on_destroy}
    win32gui.RegisterClass(window_class)
    frame = win32gui.CreateWindow(TITLE, TITLE, win32con.WS_OVERLAPPEDWINDOW, 0, 0, 736, 600, 0, 0, 0, None)
    _, _, width, height = win32gui.GetClientRect(frame)
    style = win32con.WS_CHILD | win32con.WS_VISIBLE
    child = win32gui.CreateWindow(
        "AtlAxWin", "ZYNVue.ZYNVue3D", style, 0, 0, width, height, frame, 0, 0, None
    )
    return frame, child


def control_in(child):
    """The control that the window holds."""
    pointer = ctypes.c_void_p()
    ctypes.oledll.atl.AtlAxGetControl(ctypes.c_void_p(child), ctypes.byref(pointer))
    control = Dispatch(pythoncom.ObjectFromAddress(pointer.value, pythoncom.IID_IDispatch))
    ctypes.WINFUNCTYPE(ctypes.c_ulong)(2, "Release")(pointer)  # "control" holds a reference of its own
    return control


window, child = make_window()
view = control_in(child)
events = WithEvents(view, Events)  # as long as it is kept

for left, number, colour in ((0, 1, (0.9, 0.4, 0.1)), (10, 2, (0.1, 0.5, 0.3))):
    view.Add(triangle(left, colour), 0)
    name = label(number, left)
    view.Add(name, 0)
    view.AddSelection(name)  # what can be picked is a list of its own
view.MouseMode = -1  # a press picks
win32gui.ShowWindow(window, win32con.SW_SHOW)
view.initView(0.1)
win32gui.PumpMessages()
print("done")
