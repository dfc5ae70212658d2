"""Open CASCADE Technology, by OCP: interactive objects (AIS) in a viewer, in a window of Qt as CAD programs have it."""

import ctypes
from importlib.metadata import version

import numpy
from OCP.AIS import AIS_InteractiveContext, AIS_Shape, AIS_TextLabel
from OCP.Aspect import Aspect_DisplayConnection
from OCP.BRep import BRep_Builder
from OCP.gp import gp_Pnt
from OCP.OpenGl import OpenGl_GraphicDriver
from OCP.Poly import Poly_Polygon3D, Poly_Triangle, Poly_Triangulation
from OCP.Quantity import Quantity_Color, Quantity_TOC_sRGB
from OCP.TCollection import TCollection_ExtendedString
from OCP.TopoDS import TopoDS_Edge, TopoDS_Face
from OCP.V3d import V3d_Viewer
from OCP.WNT import WNT_Window
from PyQt5.QtCore import Qt
from PyQt5.QtWidgets import QApplication, QWidget

import scenes

VERSION = f"OCCT by cadquery-ocp {version('cadquery-ocp')}"
SHADED, WIREFRAME = 1, 0
_gl = ctypes.WinDLL("opengl32")
_application = QApplication([])


def _triangulation(points, faces):
    """Number by number: OCP takes no arrays."""
    result = Poly_Triangulation(len(points), len(faces), False)
    for number, (x, y, z) in enumerate(points.tolist(), 1):
        result.SetNode(number, gp_Pnt(x, y, z))
    for number, (a, b, c) in enumerate(faces.tolist(), 1):
        result.SetTriangle(number, Poly_Triangle(a + 1, b + 1, c + 1))
    return result


def _face(triangulation):
    face = TopoDS_Face()
    BRep_Builder().MakeFace(face, triangulation)
    return face


def _colour(red, green, blue):
    return Quantity_Color(red, green, blue, Quantity_TOC_sRGB)


class View:
    def __init__(self):
        self.widget = QWidget()
        for attribute in (Qt.WA_NativeWindow, Qt.WA_PaintOnScreen, Qt.WA_NoSystemBackground):
            self.widget.setAttribute(attribute)
        self.widget.setWindowFlags(Qt.FramelessWindowHint)
        self.widget.resize(scenes.WIDTH, scenes.HEIGHT)
        self.widget.show()
        _application.processEvents()
        self.driver = OpenGl_GraphicDriver(Aspect_DisplayConnection())
        self.viewer = V3d_Viewer(self.driver)
        self.viewer.SetDefaultLights()
        self.viewer.SetLightOn()
        self.view = self.viewer.CreateView()
        self.view.SetWindow(WNT_Window(self.widget.winId().ascapsule()))
        self.view.SetBackgroundColor(_colour(1, 1, 1))
        self.context = AIS_InteractiveContext(self.viewer)
        self.draw()

    def look(self):
        self.view.FitAll(0.1, False)

    def turn(self):
        self.view.Rotate(0.05, 0.0, 0.0, True)

    def draw(self):
        self.view.Redraw()
        _gl.glFinish()

    def pick(self, x, y):
        self.context.MoveTo(x, y, self.view, False)
        return self.context.HasDetected()

    def save(self, path):
        if not self.view.Dump(path):
            raise OSError(path)


class Objects(View):
    """A face each, as a part has it."""

    def build(self, data):
        self.shapes, numbers = [], numpy.arange(3).reshape(1, 3)
        for corners, colour in zip(data.corners, data.colours.tolist()):
            shape = AIS_Shape(_face(_triangulation(corners, numbers)))
            shape.SetColor(_colour(*colour))
            self.context.Display(shape, SHADED, 0, False)
            self.shapes.append(shape)

    def change(self):
        self.context.SetColor(self.shapes[len(self.shapes) // 3], _colour(1, 0, 0), False)


class Mesh(View):
    def build(self, data):
        self.triangles = _triangulation(data.points, data.faces)
        self.triangles.ComputeNormals()
        self.mesh = AIS_Shape(_face(self.triangles))  # AIS_Triangulation cannot be picked
        self.context.Display(self.mesh, SHADED, 0, False)
        self.point = data.points[0]

    def change(self):
        self.point = self.point * 1.01
        self.triangles.SetNode(1, gp_Pnt(*self.point.tolist()))
        self.context.Redisplay(self.mesh, False)


class Path(View):
    """An edge that is a polygon."""

    def build(self, data):
        self.points = data.points.tolist()
        self.appended = data.appended.tolist()
        self.shape = AIS_Shape(self._edge())
        self.context.Display(self.shape, WIREFRAME, 0, False)

    def _edge(self):
        polygon = Poly_Polygon3D(len(self.points), False)
        nodes = polygon.ChangeNodes()
        for number, (x, y, z) in enumerate(self.points, 1):
            nodes.SetValue(number, gp_Pnt(x, y, z))
        edge = TopoDS_Edge()
        BRep_Builder().MakeEdge(edge, polygon)
        return edge

    def change(self):
        self.points += self.appended
        self.shape.SetShape(self._edge())
        self.context.Redisplay(self.shape, False)


class Labels(View):
    def build(self, data):
        self.labels = []
        for text, point in zip(data.texts, data.points.tolist()):
            label = AIS_TextLabel()
            label.SetText(TCollection_ExtendedString(text))
            label.SetPosition(gp_Pnt(*point))
            label.SetHeight(14)
            label.SetFont("Liberation Sans")
            label.SetColor(_colour(0, 0, 0))
            self.context.Display(label, 0, 0, False)
            self.labels.append(label)

    def change(self):
        self.labels[0].SetText(TCollection_ExtendedString(scenes.SPEECH))
        self.context.Redisplay(self.labels[0], False)
