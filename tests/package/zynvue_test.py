"""Tests of the Python package as it is installed: what its documentation shows, and what a user runs into.

python zynvue_test.py README.md    (with NumPy: all that is shown there; without: what needs none)
"""

import array
import copy
import ctypes
import doctest
import importlib.util
import math
import os
import pickle
import pkgutil
import struct
import sys
import tempfile
import threading
import unittest
import winreg

import comtypes
import comtypes.client
import zynvue

README = os.path.abspath(sys.argv.pop())
WITH_NUMPY = importlib.util.find_spec("numpy") is not None
CORNERS = [[(0, 0, 0), (8, 0, 0), (4, 6, 0)], [(0, 0, 0), (4, 6, 0), (4, 3, 5)]]
CUBE = (
    [(0, 0, 0), (2, 0, 0), (2, 2, 0), (0, 2, 0), (0, 0, 2), (2, 0, 2), (2, 2, 2), (0, 2, 2)],
    [(0, 3, 2, 1), (4, 5, 6, 7), (0, 1, 5, 4), (1, 2, 6, 5), (2, 3, 7, 6), (3, 0, 4, 7)],
)
WHITE = b"\xff\xff\xff"


def binary_stl(facets):
    rows = b"".join(struct.pack("<12fH", 0, 0, 0, *sum(map(tuple, facet), ()), 0) for facet in facets)
    return b"part".ljust(80) + struct.pack("<I", len(facets)) + rows


def text_stl(facets):
    lines = ["solid part"]
    for facet in facets:
        lines += ["facet normal 0 0 1", "outer loop"]
        lines += ["vertex " + " ".join(map(str, corner)) for corner in facet]
        lines += ["endloop", "endfacet"]
    return "\n".join([*lines, "endsolid part"]).encode()


def write(name, data):
    with open(name, "wb") as file:
        file.write(data)


def read(name):
    with open(name, "rb") as file:
        return file.read()


def shown(*objects, view="iso", **options):
    """The pixels of a scene."""
    with zynvue.Picture3D(160, 120, **options) as picture:
        picture.add(*objects)
        picture.view(view)
        return picture.pixels()


def plotted(*objects):
    with zynvue.Picture2D(160, 120) as picture:
        picture.add(*objects)
        picture.range(-1, 5, -1, 4)
        return picture.pixels()


def colours(pixels):
    return {pixels[i : i + 3] for i in range(0, len(pixels), 3)}


class Package(unittest.TestCase):
    def test_nothing_is_registered(self):
        for prog_id in ("ZYNVue.ZYN3dGLBitmapContext", "ZYNModeleGeom.Polyligne"):
            with self.assertRaises(OSError):
                winreg.OpenKey(winreg.HKEY_CLASSES_ROOT, prog_id)

    def test_all_of_its_names_are_there(self):
        for name in zynvue.__all__:
            self.assertTrue(getattr(zynvue, name).__doc__ or name.isupper(), name)

    def test_version_is_that_of_the_libraries(self):
        folder = os.path.join(zynvue.__path__[0], "bin")
        for name in ("ZYNVue.dll", "ZYNModeleGeom.dll"):
            told = f"ProductVersion\0{zynvue.__version__}.0\0".encode("utf-16-le")
            self.assertIn(told, read(os.path.join(folder, name)).replace(b"\0\0\0\0", b"\0\0"), name)

    def test_the_components_are_asked_for_no_message_boxes(self):
        found = ctypes.create_unicode_buffer(10)
        ctypes.windll.kernel32.GetEnvironmentVariableW("ZYNVUE_SILENCIEUX", found, len(found))
        self.assertEqual(found.value, "1")

    def test_a_thread_without_com_is_told(self):
        told = []

        def make():
            try:
                zynvue.Text("a", (0, 0))
            except zynvue.Error as error:
                told.append(error)

        thread = threading.Thread(target=make)
        thread.start()
        thread.join()
        self.assertEqual(told[0].code, 0x800401F0)
        self.assertIn("CoInitialize", str(told[0]))


class Errors(unittest.TestCase):
    def test_they_go_to_other_processes(self):
        for error in (zynvue.Error("a", -2147467259), zynvue.Error("a"), zynvue.SaveError("a")):
            other = pickle.loads(pickle.dumps(error))
            self.assertEqual((type(other), str(other)), (type(error), str(error)))
            self.assertEqual((other.text, other.code), ("a", error.code))

    def test_nothing_is_copied(self):
        made = [zynvue.Picture3D(9, 9), zynvue.Picture2D(9, 9), zynvue.Graph(9, 9), zynvue.Triangles(CORNERS)]
        made += [zynvue.Polyline([0], [0]), zynvue.Text("a", (0, 0)), zynvue.Dimension((0, 0), (1, 1))]
        made.append(zynvue.Mesh(*CUBE))
        made.append(zynvue.Sprite([[(1, 2, 3)]], (0, 0)))
        for thing in made:
            for copied in (copy.copy, copy.deepcopy, pickle.dumps):
                with self.assertRaisesRegex(TypeError, f"zynvue.{type(thing).__name__} is neither copied"):
                    copied(thing)
        with self.assertRaisesRegex(TypeError, "neither copied"):
            copy.deepcopy({"all": made})


class LiveViews(unittest.TestCase):
    def test_a_window_gets_a_view(self):
        atl, user32 = ctypes.windll.atl, ctypes.windll.user32
        user32.CreateWindowExW.restype = ctypes.c_void_p
        atl.AtlAxWinInit()
        with zynvue.classes_known():  # WS_EX_TOOLWINDOW, WS_POPUP | WS_VISIBLE
            window = user32.CreateWindowExW(
                0x80, "AtlAxWin", "ZYNVue.ZYNVue3D", 0x90000000, 0, 0, 300, 200, None, None, None, None
            )
        self.addCleanup(user32.DestroyWindow, ctypes.c_void_p(window))
        unknown = ctypes.POINTER(comtypes.IUnknown)()
        atl.AtlAxGetControl(ctypes.c_void_p(window), ctypes.byref(unknown))
        view = comtypes.client.GetBestInterface(unknown)
        for triangle in zynvue.Triangles(CORNERS).com:
            view.Add(triangle, 0)
        view.initView(0.1)
        self.assertEqual(view.Count(), 2)
        frame = view.XFormView()
        with zynvue.Picture3D(300, 200) as picture:
            picture.add(zynvue.Triangles(CORNERS))
            picture.look((1, 0, 0))
            seen = picture.pixels()
            picture.com.ViewParams(None, 0.1, frame)
            self.assertEqual(picture.pixels(), seen)

    def test_objects_have_the_further_members_of_their_class(self):
        with zynvue.Picture3D(40, 30) as picture:
            picture.pixels()
            picture.com.QualiteJPEG = 70
            self.assertEqual(picture.com.QualiteJPEG, 70)
            self.assertIsNotNone(picture.com.Camera)
        with zynvue.Graph(40, 30) as graph:
            graph.com.FondTransparent = True
            self.assertTrue(graph.com.FondTransparent)

    def test_classes_are_known_within_only(self):
        with zynvue.classes_known():
            comtypes.GUID.from_progid("ZYNVue.ZYNVue2D")
        with self.assertRaises(OSError):
            comtypes.GUID.from_progid("ZYNVue.ZYNVue2D")


class Scenes(unittest.TestCase):
    def test_every_view_shows_another_side(self):
        box = [[(x, 0, 0), (0, 2 * x, 0), (0, 0, 3 * x)] for x in (1, -1)]
        pictures = [
            shown(zynvue.Triangles(box), zynvue.Text("A", (1, 0, 0)), view=view) for view in zynvue.VIEWS
        ]
        self.assertEqual(len(set(pictures)), len(zynvue.VIEWS))

    def test_the_direction_is_told_by_the_eye(self):
        with zynvue.Picture3D(160, 120) as picture:
            picture.add(zynvue.Triangles(CORNERS))
            picture.look((0, 0, 5), (0, 2, 0))
            self.assertEqual(picture.pixels(), shown(zynvue.Triangles(CORNERS), view="xy+"))
            with self.assertRaisesRegex(ValueError, "one direction"):
                picture.look((0, 0, 1), (0, 0, 1))

    def test_a_box_is_shown_in_place_of_the_scene(self):
        with zynvue.Picture3D(160, 120) as picture:
            picture.add(zynvue.Triangles(CORNERS))
            picture.view("xy+", box=((3, 5), (1, 2), (0, 1)))
            self.assertNotIn(WHITE, colours(picture.pixels()))
            picture.view("xy+", box=((300, 500), (1, 2), (0, 1)))
            self.assertEqual(colours(picture.pixels()), {WHITE})

    def test_background_and_gradient(self):
        self.assertEqual(colours(shown(background=(1, 0.6, 0.2))), {b"\xff\x99\x33"})
        pixels = shown(gradient=(0, 0, 1))
        self.assertLess(pixels[0], 32)
        self.assertGreater(pixels[-3], 224)

    def test_lights(self):
        def brightest(change):
            with zynvue.Picture3D(160, 120, background=(0, 0, 0)) as picture:
                picture.add(zynvue.Triangles(CORNERS, (1, 1, 1)))
                picture.view("xy+")
                change(picture)
                return max(picture.pixels())

        lit = brightest(lambda picture: None)
        self.assertLess(brightest(lambda picture: picture.light(1, on=False)), lit)
        self.assertLess(brightest(lambda picture: picture.ambient_light(intensity=0.1)), lit)
        self.assertLess(brightest(lambda picture: picture.light(1, azimuth=75)), lit)
        with self.assertRaisesRegex(ValueError, "lights 1 and 2"):
            brightest(lambda picture: picture.light(3))

    def test_what_is_no_object_is_refused(self):
        with zynvue.Picture3D(160, 120) as picture:
            for wrong in (None, "part.stl", [zynvue.Text("a", (0, 0))]):
                with self.assertRaisesRegex(TypeError, "no object that a picture shows"):
                    picture.add(wrong)

    def test_outline_is_a_mode_of_each_addition(self):
        with zynvue.Picture3D(160, 120) as picture:
            picture.add(zynvue.Triangles(CORNERS), outline=True)
            picture.view("iso")
            self.assertNotEqual(picture.pixels(), shown(zynvue.Triangles(CORNERS)))

    def test_triangles_from_files(self):
        expected = shown(zynvue.Triangles(CORNERS))
        for name, data in (("binary.stl", binary_stl(CORNERS)), ("text.stl", text_stl(CORNERS))):
            write(name, data)
            self.assertEqual(shown(zynvue.Triangles.load(name)), expected, name)
        write("solid.stl", b"solid" + binary_stl(CORNERS)[5:])  # binary files may begin so
        self.assertEqual(len(zynvue.Triangles.load("solid.stl")), 2)

    def test_what_is_no_file_of_triangles(self):
        for data, text in (
            (binary_stl(CORNERS)[:-1], "no STL"),
            (b"", "no STL"),
            (text_stl(CORNERS).replace(b"vertex 8 0 0", b"vertex 8 0"), "line 5: no corner"),
            (text_stl(CORNERS).replace(b"vertex 8 0 0", b""), "three corners"),
        ):
            write("bad.stl", data)
            with self.assertRaisesRegex(ValueError, "bad.stl.*" + text):
                zynvue.Triangles.load("bad.stl")
        with self.assertRaises(FileNotFoundError):
            zynvue.Triangles.load("none.stl")

    def test_meshes(self):
        mesh = zynvue.Mesh(*CUBE)
        self.assertEqual(repr(mesh), "<zynvue.Mesh: 8 points, 6 faces>")
        self.assertEqual((len(mesh), mesh.area, mesh.volume, mesh.closed), (6, 24, 8, True))
        self.assertEqual([tuple(point) for point in mesh.points], CUBE[0])
        self.assertEqual(mesh.polygons, CUBE[1])
        self.assertEqual(len(mesh.faces), 12)
        plain = shown(mesh)
        self.assertGreater(len(colours(plain)), 1)
        mesh.move([(1, 1, 3)], first=6)
        self.assertEqual(tuple(mesh.points[6]), (1, 1, 3))
        self.assertNotEqual(shown(mesh), plain)
        self.assertEqual(repr(zynvue.Mesh()), "<zynvue.Mesh: 0 points, 0 faces>")
        self.assertEqual((list(zynvue.Mesh().points), zynvue.Mesh().polygons), ([], []))

    def test_meshes_look_as_they_are_told_to(self):
        mesh = zynvue.Mesh(*CUBE, (0.9, 0.4, 0.1), style="surfaces and edges")
        self.assertEqual(mesh.style, "surfaces and edges")
        self.assertNotEqual(shown(mesh), shown(zynvue.Mesh(*CUBE, (0.9, 0.4, 0.1))))
        mesh.style = "surfaces"
        self.assertEqual(shown(mesh), shown(zynvue.Mesh(*CUBE, (0.9, 0.4, 0.1))))
        pictures = [shown(mesh)]
        mesh.color_faces([(1, 0, 0)] * 6)
        pictures.append(shown(mesh))
        mesh.color_points([(0, 0, 1, 1)] * 8)
        pictures.append(shown(mesh))
        mesh.color_by([z for x, y, z in CUBE[0]])
        pictures.append(shown(mesh))
        self.assertEqual(len(set(pictures)), 4)
        mesh.color_by([])
        mesh.color_points([])
        mesh.color_faces([])
        self.assertEqual(shown(mesh), pictures[0])

    def test_meshes_from_and_to_files(self):
        mesh = zynvue.Mesh(*CUBE)
        for name in ("cube.stl", "cube.ply", "cube.obj", "cube.OFF"):
            mesh.save(name)
            other = zynvue.Mesh.load(name, style="edges")
            self.assertEqual(
                (other.area, other.volume, other.closed, other.style), (24, 8, True, "edges"), name
            )
        self.assertEqual([tuple(point) for point in other.points], CUBE[0])
        self.assertEqual(other.polygons, CUBE[1])
        write("text.stl", text_stl(CORNERS))
        self.assertEqual(repr(zynvue.Mesh.load("text.stl")), "<zynvue.Mesh: 4 points, 2 faces>")

    def test_files_that_are_no_meshes(self):
        write("bad.stl", text_stl(CORNERS).replace(b"vertex 8 0 0", b"vertex 8 0"))
        for kind in (ValueError, zynvue.LoadError):
            with self.assertRaisesRegex(kind, "bad.stl.*line 5"):
                zynvue.Mesh.load("bad.stl")
        with self.assertRaisesRegex(FileNotFoundError, "none.stl"):
            zynvue.Mesh.load("none.stl")
        mesh = zynvue.Mesh(*CUBE)
        with self.assertRaises(zynvue.SaveError):
            mesh.save("cube.txt")
        with self.assertRaises(OSError):
            mesh.save(os.path.join("none", "cube.stl"))

    def test_wrong_meshes_are_refused(self):
        points, faces = CUBE
        for wrong in ([(0, 0)], [(0, 0, 0, 0)]):
            with self.assertRaisesRegex(ValueError, "points are n x 3"):
                zynvue.Mesh(wrong)
        for wrong in ([(0, 1, 8)], [(0, 1)], [(0, 1, -1)]):
            with self.assertRaises(zynvue.Error):
                zynvue.Mesh(points, wrong)
        with self.assertRaisesRegex(ValueError, "'wire' is no style"):
            zynvue.Mesh(points, faces, style="wire")
        with self.assertRaises(zynvue.Error):
            zynvue.Mesh(points, faces).color_by([1, 2])

    def test_wrong_shapes_are_refused(self):
        for wrong in ([(0, 0, 0)], [[(0, 0, 0), (1, 0, 0)]], [[(0, 0), (1, 0), (0, 1)]]):
            with self.assertRaises((ValueError, TypeError)):
                zynvue.Triangles(wrong)
        for wrong in ((1, 1), "red"):
            with self.assertRaisesRegex(ValueError, "a colour is"):
                zynvue.Triangles(CORNERS, wrong)

    def test_sprites(self):
        red = [[(255, 0, 0)] * 20] * 10
        sprite = zynvue.Sprite(red, (0, 0, 0))
        self.assertEqual((sprite.com.largeur, sprite.com.hauteur), (20, 10))
        pixels = shown(zynvue.Triangles(CORNERS), sprite)
        self.assertIn(b"\xff\0\0", colours(pixels))
        with zynvue.Picture2D(30, 20, background=(0, 1, 0)) as picture:
            picture.save("green.bmp")
        for image in ("green.bmp", read("green.bmp")):
            self.assertEqual(zynvue.Sprite(image, (0, 0)).com.largeur, 30)
        left_out = zynvue.Sprite(red, (0, 0, 0), transparent=(255, 0, 0))
        self.assertEqual(shown(zynvue.Triangles(CORNERS), left_out), shown(zynvue.Triangles(CORNERS)))
        for wrong in (b"nothing", [], [[(1, 2, 3)], []]):
            with self.assertRaises(ValueError):
                zynvue.Sprite(wrong, (0, 0))
        with self.assertRaisesRegex(FileNotFoundError, "none.bmp"):
            zynvue.Sprite("none.bmp", (0, 0))


class Graphs(unittest.TestCase):
    def test_sequences_of_every_kind_draw_alike(self):
        x, y = [0, 1, 2, 3], [0, 1, 4, 2]
        expected = plotted(zynvue.Polyline(x, y))
        self.assertGreater(len(colours(expected)), 1)
        doubles = array.array("d", y)
        for other in (tuple(y), array.array("l", y), doubles, memoryview(doubles).toreadonly(), range(0)):
            if other:
                self.assertEqual(plotted(zynvue.Polyline(x, other)), expected)
        self.assertEqual(len(zynvue.Polyline([], range(0))), 0)
        self.assertEqual(plotted(zynvue.Polyline(x, (value for value in y))), expected)
        for wrong in ([y, y, y, y], "abcd", 5, None):
            with self.assertRaises(TypeError):
                zynvue.Polyline(x, wrong)

    def test_a_gap_is_not_drawn(self):
        self.assertNotEqual(
            plotted(zynvue.Polyline([0, 1, 2], [0, 1, 2])),
            plotted(zynvue.Polyline([0, math.nan, 2], [0, 1, 2])),
        )

    def test_lines_in_space(self):
        self.assertGreater(len(colours(shown(zynvue.Polyline([0, 1], [0, 2], [0, 3], width=5)))), 1)

    def test_points_can_be_replaced(self):
        trace = zynvue.Polyline([0, 1], [0, 1])
        trace.set([0, 3], [2, 2])
        self.assertEqual(plotted(trace), plotted(zynvue.Polyline([0, 3], [2, 2])))

    def test_dimensions_of_every_kind(self):
        kinds = zynvue.Dimension.KINDS
        pictures = [plotted(zynvue.Dimension((0, 0), (3, 2), 0.5, kind=kind)) for kind in kinds]
        self.assertEqual(len(set(pictures)), len(kinds))
        self.assertEqual(
            repr(zynvue.Dimension((0, 0), (3, 2), kind="horizontal")), "<zynvue.Dimension: 'horizontal', '3'>"
        )
        with self.assertRaisesRegex(ValueError, "'round' is no kind: vertical"):
            zynvue.Dimension((0, 0), (1, 1), kind="round")

    def test_anchors(self):
        pictures = {plotted(zynvue.Text("Ay", (2, 2), anchor=anchor)) for anchor in zynvue.ANCHORS}
        self.assertEqual(len(pictures), len(zynvue.ANCHORS))


class Axes(unittest.TestCase):
    def drawn(self, *traces, **options):
        with zynvue.Graph(300, 200, **options) as graph:
            for x, y in traces:
                graph.plot(x, y, label="a")
            return graph.pixels()

    def test_the_range_is_that_of_the_traces(self):
        trace = ([0, 1, 2], [5, math.nan, 7])
        self.assertEqual(self.drawn(trace), self.drawn(trace, x_range=(0, 2), y_range=(5, 7)))
        self.assertNotEqual(self.drawn(trace), self.drawn(trace, x_range=(0, 2), y_range=(5, 8)))
        self.assertEqual(self.drawn(), self.drawn(x_range=(0, 1), y_range=(0, 1)))
        self.assertEqual(
            self.drawn(([1], [1])), self.drawn(([1], [1]), x_range=(0.5, 1.5), y_range=(0.5, 1.5))
        )

    def test_points_outside_are_left_out(self):
        limits = {"x_range": (0, 2), "y_range": (0, 2)}
        self.assertEqual(self.drawn(([0, 1, 2], [0, 1, 9]), **limits), self.drawn(([0, 1], [0, 1]), **limits))
        with self.assertRaisesRegex(ValueError, "from less to more"):
            self.drawn(([0, 1], [0, 1]), x_range=(1, 1))

    def test_numbers_of_any_size(self):
        for value in (0, -7, 1e9, -1e20, 1e307):
            self.assertGreater(len(colours(self.drawn(([0, 1], [value, value])))), 1, value)
        self.assertEqual(self.drawn(([0, 1], [0, 5e-324])), self.drawn(([0, 1], [0, 0])))
        for y_range in ((0, math.inf), (-1e308, 1e308), (0, 5e-324), (0, math.nan)):
            with self.assertRaisesRegex(ValueError, "range|axis"):
                self.drawn(y_range=y_range)

    def test_a_graph_that_failed_fails_again(self):
        with zynvue.Graph(300, 200, x_range=(2, 1)) as graph:
            graph.plot([0, 1], [0, 1], label="a")
            for _ in range(2):
                with self.assertRaisesRegex(ValueError, "from less to more"):
                    graph.png()
            graph.x_range = None
            self.assertEqual(graph.pixels(), self.drawn(([0, 1], [0, 1])))

    def test_what_is_plotted_later_is_shown(self):
        with zynvue.Graph(300, 200) as graph:
            graph.plot([0, 1], [0, 1], label="a")
            first = graph.pixels()
            self.assertEqual(graph.pixels(), first)
            graph.plot([0, 5], [3, 0], label="a")
            self.assertEqual(graph.pixels(), self.drawn(([0, 1], [0, 1]), ([0, 5], [3, 0])))
        with self.assertRaisesRegex(ValueError, "closed"):
            graph.png()

    def test_traces_are_those_of_the_moment(self):
        values = array.array("d", [0, 1])
        with zynvue.Graph(300, 200) as graph:
            graph.plot(values, values, label="a")
            values[1] = 5
            values.append(2)  # nothing holds it
            self.assertEqual(graph.pixels(), self.drawn(([0, 1], [0, 1])))

    def test_objects_lie_over_the_graph(self):
        with zynvue.Graph(300, 200) as graph:
            graph.add(zynvue.Sprite([[(255, 0, 0)] * 10] * 10, (0, 0)))
            graph.plot([0, 1], [0, 1])
            row = graph.pixels()[-900:]
        self.assertEqual(row[3:27], b"\xff\0\0" * 8)

    def test_names_are_written(self):
        plain = self.drawn()
        for name in ("title", "x", "y"):
            self.assertNotEqual(self.drawn(**{name: "abc"}), plain, name)

    def test_a_finer_picture_shows_the_same(self):
        with zynvue.Graph(300, 200) as graph:
            dpi = graph.com.DPIResolution
        with zynvue.Graph(600, 400, dpi=2 * dpi) as fine:
            fine.plot([0, 1], [0, 1])
            pixels = fine.pixels()
        corners = {pixels[3 * (600 * y + x) :][:3] for x in (8, 590) for y in (8, 390)}
        self.assertEqual(corners, {WHITE})  # nothing is pushed to the edge or shown at half its size
        ink = [i // 3 % 600 for i in range(0, len(pixels), 3) if pixels[i : i + 3] != WHITE]
        self.assertGreater(max(ink), 540)

    def test_lengths_must_agree(self):
        with self.assertRaisesRegex(ValueError, "x has 2 numbers, y 1"):
            self.drawn(([0, 1], [0]))


class Files(unittest.TestCase):
    STARTS = {"png": b"\x89PNG", "jpg": b"\xff\xd8", "jpeg": b"\xff\xd8", "gif": b"GIF8", "bmp": b"BM"}

    def test_formats(self):
        for picture in (zynvue.Picture3D(40, 30), zynvue.Picture2D(40, 30)):
            for suffix, start in self.STARTS.items():
                picture.save("picture." + suffix)
                self.assertTrue(read("picture." + suffix).startswith(start), suffix)
            with self.assertRaisesRegex(ValueError, "'.tif' is no format: .png"):
                picture.save("picture.tif")
            self.assertEqual(picture.png(), picture._repr_png_())
            self.assertEqual(struct.unpack(">II", picture.png()[16:24]), (40, 30))

    def test_quality(self):
        with zynvue.Picture3D(160, 120) as picture:
            picture.add(zynvue.Triangles(CORNERS))
            picture.save("best.jpg", quality=100)
            picture.save("least.jpg", quality=5)
        self.assertLess(os.path.getsize("least.jpg"), os.path.getsize("best.jpg"))

    def test_what_cannot_be_written_is_told(self):
        for picture in (zynvue.Picture3D(40, 30), zynvue.Picture2D(40, 30)):
            for suffix in self.STARTS:
                with self.assertRaises(OSError) as told:
                    picture.save(os.path.join("no folder", "picture." + suffix))
                self.assertIsInstance(told.exception, zynvue.SaveError)
                self.assertIn("picture." + suffix, str(told.exception))

    def test_impossible_sizes_are_told(self):
        for kind in (zynvue.Picture3D, zynvue.Picture2D):
            for size in ((-3, 10), (2**31, 1), (2**32 + 10, 10), (10, 2**40)):
                with self.assertRaisesRegex(zynvue.Error, f"no picture of {size[0]} x {size[1]}"):
                    kind(*size)

    def test_impossible_resolutions_and_colours_are_told(self):
        for kind in (zynvue.Picture3D, zynvue.Picture2D, zynvue.Graph):
            for dpi in (0, -96, 1e-300, math.inf, math.nan):
                with self.assertRaisesRegex(ValueError, "resolution"):
                    kind(40, 30, dpi=dpi)
            with self.assertRaisesRegex(ValueError, "a colour is"):
                kind(40, 30, background=(1, 1))
        with zynvue.Picture3D(40, 30) as picture:
            for change in (picture.ambient_light, lambda color: picture.light(1, color=color)):
                with self.assertRaisesRegex(ValueError, "a colour is"):
                    change(color=(1, 1))

    # Proxies: Wine registers a type library for them, for good, and finds none in a folder of any name.
    @unittest.skipUnless(os.environ.get("ZYNVUE_APARTMENTS"), "ZYNVUE_APARTMENTS is not set")
    def test_other_apartments_are_told_that_nothing_was_written(self):
        told = []

        def save():
            comtypes.CoInitializeEx(comtypes.COINIT_MULTITHREADED)
            with zynvue.Picture3D(40, 30) as picture:
                picture.save("apartment.png")
                try:
                    picture.save(os.path.join("no folder", "apartment.png"))
                except zynvue.SaveError as error:
                    told.append(str(error))
            comtypes.CoUninitialize()

        thread = threading.Thread(target=save)
        thread.start()
        thread.join()
        self.assertTrue(read("apartment.png").startswith(self.STARTS["png"]))
        self.assertRegex(told[0], "no folder.apartment.png.* was not written")

    def test_closed_pictures(self):
        with zynvue.Picture2D(40, 30) as picture:
            pass
        for use in (
            picture.png,
            picture.pixels,
            picture.add,
            lambda: picture.range(0, 1, 0, 1),
            lambda: picture.save("a.png"),
        ):
            with self.assertRaisesRegex(ValueError, "closed"):
                use()
        self.assertIsNone(picture._repr_png_())


@unittest.skipUnless(WITH_NUMPY, "NumPy is not here")
class Arrays(unittest.TestCase):
    def setUp(self):
        import numpy

        self.numpy = numpy

    def test_arrays_draw_what_sequences_draw(self):
        numpy = self.numpy
        expected = plotted(zynvue.Polyline([0, 1, 2], [1, 3, 2]))
        for y in (
            numpy.array([1.0, 3, 2]),
            numpy.array([1, 3, 2], "float32"),
            numpy.array([1, 3, 2], "int16"),
            numpy.array([[1.0, 9], [3, 9], [2, 9]])[:, 0],
            numpy.array([2.0, 3, 1])[::-1],
            [1, 3, 2],
        ):
            self.assertEqual(plotted(zynvue.Polyline(numpy.arange(3), y)), expected)
        for kind in ("float64", "float32", "int32"):
            self.assertEqual(
                shown(zynvue.Triangles(numpy.array(CORNERS, kind))), shown(zynvue.Triangles(CORNERS))
            )
        for kind in ("float64", "float32", "int32"):
            points = numpy.array(CUBE[0], kind)
            for faces in (numpy.array(CUBE[1]), numpy.array(CUBE[1], "uint8"), CUBE[1]):
                self.assertEqual(shown(zynvue.Mesh(points, faces)), shown(zynvue.Mesh(*CUBE)))
        for kind in ("float64", "float32", "int32"):
            with zynvue.Graph(300, 200) as graph, zynvue.Graph(300, 200) as other:
                graph.plot(numpy.array([0, 1, 2], kind), numpy.array([0, 10, 5], kind))
                other.plot([0, 1, 2], [0, 10, 5])
                self.assertEqual(graph.pixels(), other.pixels())
        with self.assertRaisesRegex(ValueError, "not 2 x 9"):
            zynvue.Triangles(numpy.zeros((2, 9)))

    def test_meshes_give_arrays(self):
        numpy = self.numpy
        mesh = zynvue.Mesh(numpy.array(CUBE[0]), numpy.array(CUBE[1]))
        self.assertTrue(numpy.array_equal(mesh.points, CUBE[0]))
        self.assertEqual((mesh.points.dtype, mesh.points.shape), (numpy.float64, (8, 3)))
        self.assertEqual((mesh.faces.dtype, mesh.faces.shape), (numpy.int32, (12, 3)))
        again = zynvue.Mesh(mesh.points, mesh.faces)
        self.assertEqual((again.volume, len(again)), (8, 12))
        again.color_points(mesh.points / 2)
        again.color_by(mesh.points[:, 2])
        for points, faces in (
            (numpy.zeros((3, 4)), ()),
            (numpy.zeros(3), ()),
            (mesh.points, numpy.array([[0.5, 1, 2]])),
        ):
            with self.assertRaises(ValueError):
                zynvue.Mesh(points, faces)

    def test_wrong_shapes_are_refused(self):
        numpy = self.numpy
        with self.assertRaisesRegex(ValueError, "one row, not as 3 x 2"):
            zynvue.Polyline(numpy.zeros((3, 2)), numpy.zeros((3, 2)))
        for shape in ((6, 3, 4), (6, 8), (6, 6, 1), (0, 6, 3), (1, 6, 8, 3)):
            with self.assertRaisesRegex(ValueError, "height x width x 3"):
                zynvue.Sprite(numpy.zeros(shape, "uint8"), (0, 0))
        for value in (-1, 256, math.nan):
            with self.assertRaisesRegex(ValueError, "0 to 255"):
                zynvue.Sprite(numpy.full((2, 2, 3), value), (0, 0))

    def test_what_is_masked_is_a_gap(self):
        y = self.numpy.ma.masked_equal([0, 3, 1, 2], 3)
        gap = plotted(zynvue.Polyline([0, 1, 2, 3], [0, math.nan, 1, 2]))
        self.assertEqual(plotted(zynvue.Polyline([0, 1, 2, 3], y)), gap)

    def test_doubles_are_not_converted(self):
        from zynvue._arrays import buffer

        values = self.numpy.arange(4.0)
        self.assertTrue(self.numpy.shares_memory(self.numpy.asarray(buffer(values)), values))
        values.flags.writeable = False
        self.assertEqual(len(zynvue.Polyline(values, values)), 4)

    def test_pictures_are_arrays(self):
        with zynvue.Picture2D(41, 30, background=(0, 0, 1)) as picture:
            pixels = self.numpy.asarray(picture)
        self.assertEqual((pixels.shape, pixels.dtype.name), ((30, 41, 3), "uint8"))
        self.assertTrue((pixels == (0, 0, 255)).all())
        self.assertEqual(repr(zynvue.Sprite(pixels, (0, 0))), "<zynvue.Sprite: 41 x 30 pixels>")


def load_tests(loader, tests, pattern):
    for module in pkgutil.iter_modules(zynvue.__path__, "zynvue."):
        found = doctest.DocTestSuite(module.name)
        tests.addTests(found)
    tests.addTests(doctest.DocTestSuite("zynvue"))
    if WITH_NUMPY:
        setup = lambda test: write("part.stl", binary_stl(CORNERS))
        tests.addTests(doctest.DocFileSuite(README, module_relative=False, encoding="utf-8", setUp=setup))
    return tests


def main():
    before = os.getcwd()
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        try:
            return unittest.main(verbosity=2, exit=False).result.wasSuccessful()
        finally:
            os.chdir(before)


if __name__ == "__main__":
    sys.exit(0 if main() else 1)
