"""Pictures of parts and of graphs by OpenGL, from the components of ZYNVue.

>>> import zynvue
>>> with zynvue.Picture3D(800, 600) as p:
...     p.add(zynvue.Triangles([[(0, 0, 0), (8, 0, 0), (4, 6, 0)]], color=(0.9, 0.4, 0.1)))
...     data = p.png()  # or: p.save("part.png")
>>> data[:4]
b'\\x89PNG'

The components are in the package and are found without registration. In a notebook a picture shows itself. What the
classes here do not offer is in their ``com``: the published members, described in the reference of ZYNVue.

Colours are red, green, blue and, where it may be left out, opacity, from 0 to 1 each. Points are x, y and, in space, z.
A range is from and to, a box three of them.

Objects belong to the thread that made them; a thread of your own calls ``comtypes.CoInitialize()`` first.
"""

from importlib.metadata import version as _version

from ._components import Error, LoadError, SaveError, classes_known, create
from .graph import Graph
from .mesh import STYLES, Mesh
from .objects import ANCHORS, Dimension, Polyline, Sprite, Text, Triangles
from .pictures import VIEWS, Picture, Picture2D, Picture3D

__version__ = _version("zynvue")
__all__ = [
    "ANCHORS",
    "Dimension",
    "Error",
    "Graph",
    "LoadError",
    "Mesh",
    "Picture",
    "Picture2D",
    "Picture3D",
    "Polyline",
    "STYLES",
    "SaveError",
    "Sprite",
    "Text",
    "Triangles",
    "VIEWS",
    "classes_known",
    "create",
]
