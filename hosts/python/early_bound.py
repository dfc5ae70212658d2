"""A part as a picture, early bound through pywin32: classes made of the type library, faster and with names to complete.

    python early_bound.py PICTURE.png

Members with out arguments return them. What a component says of a failure is in the exception.
"""

import os
import sys

import numpy
from pythoncom import com_error
from win32com.client import constants
from win32com.client.gencache import EnsureDispatch


def triangle(corners, colour):
    result = EnsureDispatch("ZYNVue.ZYNGLTriangle")
    edges = corners[1:] - corners[0]
    normal = numpy.cross(edges[0], edges[1])
    normal /= numpy.linalg.norm(normal)  # light needs normals that are one long
    for index, corner in enumerate(corners):
        result.setPoint(index, *corner)
        result.setNormale(index, *normal)
    # Opaque; how much of the ambient and of the diffuse light it takes; no gloss.
    result.setMaterial(*colour, 1, 0.5, 0.6, 0, 0, 0)
    return result


def label(text, place):
    result = EnsureDispatch("ZYNVue.ZYNGLTexte")
    result.Texte = text
    result.HauteurPixels = 30
    result.setPosition(*place, 9)  # 9: the place is the middle of the text
    return result


def error_text(error):
    """What the component said, of what pywin32 makes of it: (code, text, (?, source, description, ...), argument)."""
    return error.excepinfo[2]


picture = EnsureDispatch("ZYNVue.ZYN3dGLBitmapContext")  # mind the small d
picture.MultiSampleAntialiasing = True  # this and the background: before CreateContext
picture.BackColor = numpy.array([0.85, 0.92, 1.0])
picture.CreateContext(640, 480)

corners = numpy.array([[10.0, 0, 0], [0, 10, 0], [0, 0, 10], [0, 0, 0]])
sides = [
    triangle(corners[[0, 1, 2]], (0.9, 0.5, 0.2)),
    triangle(corners[[0, 3, 1]], (0.3, 0.5, 0.8)),
    triangle(corners[[1, 3, 2]], (0.3, 0.7, 0.3)),
    triangle(corners[[2, 3, 0]], (0.7, 0.3, 0.5)),
]
for side in sides:
    picture.Add(side, 0)
picture.Add(label("pywin32", (3.4, 3.4, 3.4)), 0)

# Left, up and the direction from the eye to the scene, then seven zeros: seen from the side on which all are above 0.
left = numpy.array([1.0, -1, 0]) / 2**0.5
direction = numpy.array([-1.0, -1, -1]) / 3**0.5
frame = numpy.concatenate([left, numpy.cross(left, direction), direction, numpy.zeros(7)])
picture.ViewParams(None, 0.2, frame)

path = os.path.abspath(sys.argv[1])
if os.path.exists(path):
    os.remove(path)
picture.CreatePNG("", path)
if not os.path.exists(path):
    raise OSError(path + " could not be written")

print("the second corner:", sides[0].getPoint(1))
print("the background:", numpy.array(picture.BackColor))
print("names of the type library:", constants.FontSizeUnit_POINT)
try:
    sides[0].setPoint(3, 0, 0, 0)
except com_error as error:
    print("a fourth corner:", error_text(error))
print("done")
