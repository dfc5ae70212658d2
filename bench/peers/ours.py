"""This library: live views in a window of the system's control container, objects by the package zynvue."""

import ctypes
from ctypes import wintypes

import comtypes.client
import numpy
import zynvue
from comtypes import IUnknown
from comtypes.gen import ZYNVUELib as types

import scenes

comtypes.npsupport.enable()  # arrays may be arguments

VERSION = "this tree, by comtypes"

WS_POPUP_VISIBLE = 0x90000000
RDW_INVALIDATE_UPDATENOW = 0x0101
_user32, _atl = ctypes.WinDLL("user32"), ctypes.OleDLL("atl")
_user32.CreateWindowExW.restype = wintypes.HWND
_user32.CreateWindowExW.argtypes = [
    *[wintypes.DWORD, wintypes.LPCWSTR, wintypes.LPCWSTR, wintypes.DWORD],
    *[ctypes.c_int] * 4,
    *[wintypes.HWND, wintypes.HMENU, wintypes.HINSTANCE, wintypes.LPVOID],
]
_user32.RedrawWindow.argtypes = [wintypes.HWND, wintypes.LPVOID, wintypes.HANDLE, wintypes.UINT]
_atl.AtlAxGetControl.argtypes = [wintypes.HWND, ctypes.POINTER(ctypes.POINTER(IUnknown))]


class View:
    def __init__(self, control, interface):
        _atl.AtlAxWinInit()
        place = (0, 0, scenes.WIDTH, scenes.HEIGHT)
        with zynvue.classes_known():
            frame = _user32.CreateWindowExW(0, "AtlAxWin", control, WS_POPUP_VISIBLE, *place, *[None] * 4)
        held = ctypes.POINTER(IUnknown)()
        _atl.AtlAxGetControl(frame, ctypes.byref(held))
        self.view = held.QueryInterface(interface)
        self.window = self.view.hWnd
        self.draw()

    def draw(self):
        """Returns when the window shows the frame."""
        _user32.RedrawWindow(self.window, None, None, RDW_INVALIDATE_UPDATENOW)

    def save(self, path):
        self.view.Exporter(path)


class View3D(View):
    def __init__(self):
        super().__init__("ZYNVue.ZYNVue3D", types.IZYNVue3D2)

    def look(self):
        self.view.initView(0.1)
        self.view.RotateH(30)
        self.view.RotateV(30)

    def turn(self):
        self.view.RotateH(3)

    def pick(self, x, y):
        return self.view.getSelectionUnderMouse(x, y)


class Objects(View3D):
    def build(self, data):
        self.triangles = zynvue.Triangles(data.corners).com
        for triangle, colour in zip(self.triangles, data.colours.tolist()):
            triangle.setColor(*colour, 1)
            self.view.Add(triangle, 0)

    def pick(self, x, y):
        return self.view.getPointSurface(x, y)  # triangles have no names to tell

    def change(self):
        self.triangles[len(self.triangles) // 3].setColor(1, 0, 0, 1)


class Mesh(View3D):
    def build(self, data):
        self.mesh = zynvue.Mesh(data.points, data.faces)
        self.view.Add(self.mesh.com, 0)
        self.view.AddSelection(self.mesh.com)
        self.point = data.points[0]

    def change(self):
        self.point = self.point * 1.01
        self.mesh.move([self.point])


class Path(View3D):
    def build(self, data):
        self.path = zynvue.create("ZYNVue.ZYNGLTrajet")
        self.path.setPoints(data.points.reshape(-1))
        self.view.Add(self.path, 0)
        self.view.AddSelection(self.path)
        self.view.PickSize = 5
        self.appended = data.appended.reshape(-1)

    def change(self):
        self.path.AjouterPoints(self.appended)


class Labels(View3D):
    def build(self, data):
        self.labels = [
            zynvue.Text(text, point, height=14, anchor="bottom left", name=number)
            for number, (text, point) in enumerate(zip(data.texts, data.points.tolist()))
        ]
        for label in self.labels:
            self.view.Add(label.com, 0)
            self.view.AddSelection(label.com)

    def change(self):
        self.labels[0].com.Texte = scenes.SPEECH


class Trace(View):
    def __init__(self):
        super().__init__("ZYNVue.ZYNVue2D", types.IZYNVue2D2)

    def build(self, data):
        self.graph = self.view.Graphe.QueryInterface(types.IZYNGraphe)
        self.graph.Actif = True
        self.series = zynvue.create("ZYNVue.ZYNSerie")
        self.series.setPoints(data.x, data.y)
        self.graph.Ajouter(self.series)
        self.data = data

    def look(self):
        self.axis = self.graph.Axe(0).QueryInterface(types.IZYNAxe)
        self.start = 0.0
        self.axis.setPlage(0, 1)

    def turn(self):
        self.start = (self.start + 0.02) % 0.5
        self.axis.setPlage(self.start, self.start + 0.5)

    def pick(self, x, y):
        place = self.axis.Valeur(x)
        return self.series.PlusProche(place, float(numpy.interp(place, self.data.x, self.data.y)))

    def change(self):
        self.series.AjouterPoints(self.data.more_x, self.data.more_y)
