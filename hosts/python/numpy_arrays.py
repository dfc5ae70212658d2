"""NumPy arrays in and out, by comtypes: whole arrays are copied at once, whatever their length.

python numpy_arrays.py GRAPH.png
"""

import ctypes
import os
import sys

import comtypes
import numpy
from comtypes.client import CreateObject
from comtypes.safearray import safearray_as_ndarray

comtypes.npsupport.enable()  # arrays may be arguments from here on

# A million points; the trace draws about as many of them as the picture has room for.
x = numpy.linspace(0, 10, 1_000_000)
trace = CreateObject("ZYNModeleGeom.Polyligne")
trace.setPoints(x, numpy.sin(x) * numpy.exp(-x / 5))
trace.setColor(0.8, 0.2, 0.15, 1)
trace.Epaisseur = 2
print("points:", trace.Count)

graph = CreateObject("ZYNVue.ZYN2DGLBitmapContext")
graph.BackColor = numpy.array([1.0, 1.0, 0.9])
graph.CreateContexte(800, 300)
area = CreateObject("ZYNModeleGeom.Rectangle")
area.setBornes(-0.5, 10.5, -2, 2)
graph.ViewRect(area, 0)
graph.Add(trace, 0)

path = os.path.abspath(sys.argv[1])
if os.path.exists(path):
    os.remove(path)
graph.CreatePNG(path + ".tmp", path)
if not os.path.exists(path):
    raise OSError(path + " could not be written")

# Arrays come out as tuples, or, where that is asked for, as arrays.
print("a tuple:", graph.BackColor)
with safearray_as_ndarray:
    print("an array:", graph.BackColor)


class Bitmap(ctypes.Structure):
    """BITMAP of Windows: what is known of a bitmap."""

    _fields_ = [(name, ctypes.c_long) for name in ("type", "width", "height", "stride")]
    _fields_ += [
        ("planes", ctypes.c_ushort),
        ("bits_per_pixel", ctypes.c_ushort),
        ("pixels", ctypes.c_void_p),
    ]


def pixels(picture):
    """The pixels of a picture object as an array of height x width x 3 (red, green, blue)."""
    told = Bitmap()
    ctypes.windll.gdi32.GetObjectW(ctypes.c_void_p(picture.Handle), ctypes.sizeof(told), ctypes.byref(told))
    rows = numpy.ctypeslib.as_array((ctypes.c_ubyte * (told.stride * told.height)).from_address(told.pixels))
    rows = rows.reshape(told.height, told.stride)[::-1, : 3 * told.width]  # from the bottom to the top
    return rows.reshape(told.height, told.width, 3)[:, :, ::-1].copy()  # blue, green, red


image = pixels(graph.GetPictureDisp())  # one picture object a context: the last that is asked of it
print(
    "pixels:",
    image.shape,
    "the first:",
    image[0, 0],
    "of the trace:",
    numpy.count_nonzero(image[:, :, 1] < 128),
)

triangle = CreateObject("ZYNVue.ZYNGLTriangle")
print("out arguments:", triangle.getNormale(0))
try:
    triangle.setPoint(3, 0, 0, 0)
except comtypes.COMError as error:
    print("a fourth corner:", error.details[0])
print("done")
