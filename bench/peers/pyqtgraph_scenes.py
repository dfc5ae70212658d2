"""pyqtgraph: PlotWidget with its fast settings in the plane, GLViewWidget in space."""

import numpy
import pyqtgraph
import pyqtgraph.opengl as gl
from OpenGL.GL import glFinish
from PyQt5.QtCore import Qt

import scenes

VERSION = f"pyqtgraph {pyqtgraph.__version__}"
_application = pyqtgraph.mkQApp()


class View:
    def __init__(self):
        self.view = gl.GLViewWidget()
        self.view.setBackgroundColor("w")
        self._open()

    def _open(self):
        self.view.setWindowFlags(Qt.FramelessWindowHint)
        self.view.resize(scenes.WIDTH, scenes.HEIGHT)
        self.view.show()
        _application.processEvents()
        self.draw()

    def look(self):
        self.view.setCameraPosition(distance=130, elevation=35, azimuth=-60)

    def turn(self):
        self.view.orbit(3, 0)

    def draw(self):
        self.view.repaint()
        _application.processEvents()
        self.view.makeCurrent()
        glFinish()
        self.view.doneCurrent()

    def pick(self, x, y):
        self.view.makeCurrent()
        return self.view.itemsAt((x - 2, y - 2, 5, 5))

    def save(self, path):
        if not self.view.grabFramebuffer().save(path):
            raise OSError(path)


class Objects(View):
    """One item, whose faces have colours: it is what can be picked."""

    def build(self, data):
        count = len(data.corners)
        self.colours = numpy.column_stack([data.colours, numpy.ones(count)])
        self.mesh = gl.MeshData(vertexes=data.corners, faceColors=self.colours)
        self.item = gl.GLMeshItem(meshdata=self.mesh, smooth=False, shader="shaded")
        self.view.addItem(self.item)

    def change(self):
        self.colours[len(self.colours) // 3] = (1, 0, 0, 1)
        self.mesh.setFaceColors(self.colours)
        self.item.meshDataChanged()


class Mesh(View):
    """Normals are calculated."""

    def build(self, data):
        self.points = data.points.copy()
        self.mesh = gl.MeshData(vertexes=self.points, faces=data.faces)
        self.item = gl.GLMeshItem(meshdata=self.mesh, smooth=True, shader="shaded", color=(0.6, 0.65, 0.7, 1))
        self.view.addItem(self.item)

    def change(self):
        self.points[0] *= 1.01
        self.mesh.setVertexes(self.points)
        self.item.meshDataChanged()


class Path(View):
    def build(self, data):
        self.points, self.appended = data.points, data.appended
        self.item = gl.GLLinePlotItem(pos=self.points, color=(0.1, 0.3, 0.85, 1), glOptions="opaque")
        self.view.addItem(self.item)

    def look(self):
        super().look()
        self.view.opts["center"] = pyqtgraph.Vector(45, 45, 30)

    def change(self):
        self.points = numpy.concatenate([self.points, self.appended])
        self.item.setData(pos=self.points)


class Labels(View):
    def build(self, data):
        font = pyqtgraph.QtGui.QFont("Liberation Sans")
        font.setPixelSize(14)
        self.labels = [
            gl.GLTextItem(pos=point, text=text, color=(0, 0, 0, 255), font=font)
            for text, point in zip(data.texts, data.points)
        ]
        for label in self.labels:
            self.view.addItem(label)

    def change(self):
        self.labels[0].setData(text=scenes.SPEECH)


class Trace(View):
    def __init__(self):
        self.view = pyqtgraph.PlotWidget(background="w")
        self._open()

    def build(self, data):
        self.x, self.y, self.data = data.x, data.y, data
        self.view.setDownsampling(auto=True, mode="peak")
        self.view.setClipToView(True)
        self.curve = self.view.plot(self.x, self.y, pen=(30, 90, 190), skipFiniteCheck=True)

    def look(self):
        self.start = 0.0
        self.view.setXRange(0, 1, padding=0)

    def turn(self):
        self.start = (self.start + 0.02) % 0.5
        self.view.setXRange(self.start, self.start + 0.5, padding=0)

    def draw(self):
        _application.processEvents()
        self.view.viewport().repaint()

    def pick(self, x, y):
        """As its example of a crosshair does: the point of the data at the mouse's x."""
        place = self.view.getViewBox().mapSceneToView(pyqtgraph.Point(x, y)).x()
        number = numpy.searchsorted(self.x, place)
        return number, self.y[number]

    def change(self):
        self.x = numpy.concatenate([self.x, self.data.more_x])
        self.y = numpy.concatenate([self.y, self.data.more_y])
        self.curve.setData(self.x, self.y)

    def save(self, path):
        if not self.view.grab().save(path):
            raise OSError(path)
