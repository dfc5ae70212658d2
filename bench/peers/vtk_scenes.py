"""VTK, as its Python examples have it: a pipeline for each thing shown, arrays by vtkmodules.util.numpy_support."""

import numpy
import vtkmodules.vtkRenderingContextOpenGL2
import vtkmodules.vtkRenderingFreeType
import vtkmodules.vtkRenderingOpenGL2  # noqa: F401
from vtkmodules.util.numpy_support import numpy_to_vtk, numpy_to_vtkIdTypeArray
from vtkmodules.vtkChartsCore import vtkChart, vtkChartXY
from vtkmodules.vtkCommonCore import VTK_UNSIGNED_CHAR, vtkPoints, vtkVersion
from vtkmodules.vtkCommonDataModel import (
    vtkCellArray,
    vtkMultiBlockDataSet,
    vtkPolyData,
    vtkStaticCellLocator,
    vtkTable,
)
from vtkmodules.vtkIOImage import vtkPNGWriter
from vtkmodules.vtkRenderingCore import (
    vtkActor,
    vtkBillboardTextActor3D,
    vtkCellPicker,
    vtkCompositeDataDisplayAttributes,
    vtkCompositePolyDataMapper,
    vtkPolyDataMapper,
    vtkPropPicker,
    vtkRenderer,
    vtkRenderWindow,
    vtkWindowToImageFilter,
)
from vtkmodules.vtkViewsContext2D import vtkContextView

import scenes

VERSION = f"VTK {vtkVersion.GetVTKVersion()}"


def _points(array):
    points = vtkPoints()
    points.SetData(numpy_to_vtk(numpy.ascontiguousarray(array, "float32"), deep=True))
    return points


def _triangles(corners):
    cells = vtkCellArray()
    cells.SetData(3, numpy_to_vtkIdTypeArray(corners.reshape(-1).astype("int64"), deep=True))
    return cells


def _single_triangles(data):
    """To be kept: what Python lets go of takes a time that grows with the square of their number."""
    one, result = _triangles(numpy.arange(3)), []
    for corners in data.corners.tolist():
        points, triangle = vtkPoints(), vtkPolyData()
        for corner in corners:
            points.InsertNextPoint(corner)
        triangle.SetPoints(points)
        triangle.SetPolys(one)
        result.append(triangle)
    return result


class View:
    def __init__(self):
        self.renderer = vtkRenderer()
        self.renderer.SetBackground(1, 1, 1)
        self.window = vtkRenderWindow()
        self.window.SetMultiSamples(0)
        self._open()

    def _open(self):
        self.window.SetSize(scenes.WIDTH, scenes.HEIGHT)
        self.window.AddRenderer(self.renderer)
        self.draw()

    def look(self):
        self.renderer.ResetCamera()
        camera = self.renderer.GetActiveCamera()
        camera.Elevation(-60)
        self.renderer.ResetCameraClippingRange()

    def turn(self):
        self.renderer.GetActiveCamera().Azimuth(3)
        self.renderer.ResetCameraClippingRange()

    def draw(self):
        self.window.Render()
        self.window.WaitForCompletion()

    def pick(self, x, y):
        return self.picker.Pick(x, scenes.HEIGHT - 1 - y, 0, self.renderer)

    def save(self, path):
        image, writer = vtkWindowToImageFilter(), vtkPNGWriter()
        image.SetInput(self.window)
        image.ReadFrontBufferOff()
        writer.SetInputConnection(image.GetOutputPort())
        writer.SetFileName(path)
        writer.Write()

    def _show(self, data, tolerance=0.0005):
        """One actor, whose cells are picked by a locator."""
        self.mapper = vtkPolyDataMapper()
        self.mapper.SetInputData(data)
        actor = vtkActor()
        actor.SetMapper(self.mapper)
        self.renderer.AddActor(actor)
        self.locator = vtkStaticCellLocator()
        self.locator.SetDataSet(data)
        self.picker = vtkCellPicker()
        self.picker.SetTolerance(tolerance)
        self.picker.AddLocator(self.locator)
        return actor


class Actors(View):
    """An actor each, with a mapper of its own."""

    def build(self, data):
        self.triangles, self.mappers, self.actors = _single_triangles(data), [], []
        for triangle, colour in zip(self.triangles, data.colours.tolist()):
            mapper, actor = vtkPolyDataMapper(), vtkActor()
            mapper.SetInputData(triangle)
            actor.SetMapper(mapper)
            actor.GetProperty().SetColor(colour)
            self.renderer.AddActor(actor)
            self.mappers.append(mapper)
            self.actors.append(actor)
        self.picker = vtkPropPicker()

    def change(self):
        self.actors[len(self.actors) // 3].GetProperty().SetColor(1, 0, 0)


class Blocks(View):
    """One actor, whose mapper draws a tree of data sets: each triangle is one, with a colour as an attribute."""

    def build(self, data):
        count = len(data.corners)
        blocks, self.mapper = vtkMultiBlockDataSet(), vtkCompositePolyDataMapper()
        self.attributes = vtkCompositeDataDisplayAttributes()
        blocks.SetNumberOfBlocks(count)
        self.triangles = _single_triangles(data)
        for number, (triangle, colour) in enumerate(zip(self.triangles, data.colours.tolist())):
            blocks.SetBlock(number, triangle)
            self.attributes.SetBlockColor(triangle, colour)
        self.mapper.SetInputDataObject(blocks)
        self.mapper.SetCompositeDataDisplayAttributes(self.attributes)
        actor = vtkActor()
        actor.SetMapper(self.mapper)
        self.renderer.AddActor(actor)
        self.changed = blocks.GetBlock(count // 3)
        self.picker = vtkPropPicker()

    def change(self):
        self.attributes.SetBlockColor(self.changed, (1, 0, 0))
        self.mapper.Modified()


class Cells(View):
    """One actor: a triangle is a cell of its data, with a colour of the cell."""

    def build(self, data):
        count = len(data.corners)
        self.colours = numpy_to_vtk(
            (data.colours * 255).astype("uint8"), deep=True, array_type=VTK_UNSIGNED_CHAR
        )
        triangles = vtkPolyData()
        triangles.SetPoints(_points(data.corners.reshape(-1, 3)))
        triangles.SetPolys(_triangles(numpy.arange(3 * count)))
        triangles.GetCellData().SetScalars(self.colours)
        self.changed = count // 3
        self._show(triangles)

    def change(self):
        self.colours.SetTuple3(self.changed, 255, 0, 0)
        self.colours.Modified()


class Mesh(View):
    def build(self, data):
        mesh = vtkPolyData()
        self.points = _points(data.points)
        mesh.SetPoints(self.points)
        mesh.SetPolys(_triangles(data.faces))
        mesh.GetPointData().SetNormals(numpy_to_vtk(data.normals.astype("float32"), deep=True))
        self.point = data.points[0]
        self._show(mesh)

    def change(self):
        self.point = self.point * 1.01
        self.points.SetPoint(0, self.point)
        self.points.Modified()


class Path(View):
    def build(self, data):
        self.path, self.points, self.appended = vtkPolyData(), data.points, data.appended
        self._fill()
        self._show(self.path, tolerance=0.005).GetProperty().SetColor(0.1, 0.3, 0.85)

    def _fill(self):
        """One polyline cell through all points; what grows is set anew."""
        count, line = len(self.points), vtkCellArray()
        line.SetData(count, numpy_to_vtkIdTypeArray(numpy.arange(count, dtype="int64"), deep=True))
        self.path.SetPoints(_points(self.points))
        self.path.SetLines(line)

    def change(self):
        self.points = numpy.concatenate([self.points, self.appended])
        self._fill()


class Labels(View):
    def build(self, data):
        self.labels = []
        for text, point in zip(data.texts, data.points.tolist()):
            label = vtkBillboardTextActor3D()
            label.SetInput(text)
            label.SetPosition(point)
            label.GetTextProperty().SetFontSize(14)
            label.GetTextProperty().SetColor(0, 0, 0)
            self.renderer.AddActor(label)
            self.labels.append(label)
        self.picker = vtkPropPicker()

    def change(self):
        self.labels[0].SetInput(scenes.SPEECH)


class Trace(View):
    """A chart of VTK."""

    def __init__(self):
        self.view = vtkContextView()
        self.window, self.renderer = self.view.GetRenderWindow(), self.view.GetRenderer()
        self.window.SetMultiSamples(0)
        self.renderer.SetBackground(1, 1, 1)
        self._open()

    def build(self, data):
        self.data, self.table, self.chart = data, vtkTable(), vtkChartXY()
        for name, values in (("x", data.x), ("y", data.y)):
            column = numpy_to_vtk(values, deep=True)
            column.SetName(name)
            self.table.AddColumn(column)
        self.view.GetScene().AddItem(self.chart)
        self.line = self.chart.AddPlot(vtkChart.LINE)
        self.line.SetInputData(self.table, 0, 1)
        self.line.SetColor(30, 90, 190, 255)

    def look(self):
        self.start = 0.0
        self._show_range(0, 1)

    def _show_range(self, low, high):
        axis = self.chart.GetAxis(1)  # that at the bottom
        axis.SetBehavior(1)  # fixed
        axis.SetRange(low, high)

    def turn(self):
        self.start = (self.start + 0.02) % 0.5
        self._show_range(self.start, self.start + 0.5)

    def pick(self, x, y):
        """The chart shows the point under the mouse beside it."""
        interactor = self.view.GetInteractor()
        interactor.SetEventPosition(x, scenes.HEIGHT - 1 - y)
        interactor.InvokeEvent("MouseMoveEvent")
        return self.chart.GetTooltip().GetVisible()

    def change(self):
        for number, more in enumerate((self.data.more_x, self.data.more_y)):
            column = self.table.GetColumn(number)
            for value in more.tolist():
                column.InsertNextValue(value)
        self.table.Modified()
