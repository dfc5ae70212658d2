"""Meshes: whole parts, each one object."""

from __future__ import annotations

import ctypes
import os
from typing import Any, Union

from comtypes.automation import VARIANT

from . import _arrays
from ._arrays import Numbers
from ._components import Error, LoadError, SaveError, Uncopied, create, told
from .objects import Colour, _choice, _rgba

_INVALID_DATA = 0x8007000D
_INVALID_ARGUMENT = 0x80070057
_OUT_OF_MEMORY = 0x8007000E

STYLES = {"surfaces": 0, "edges": 1, "surfaces and edges": 2, "hidden lines": 3, "points": 4}
"""How a mesh is drawn."""


class Mesh(Uncopied):
    """A whole part as one object: points, n x 3 coordinates, and faces, the numbers of their points from 0.

    Faces are an array of m x 3 or, where they are polygons of any size, a sequence of sequences. Normals are those of
    smooth surfaces with sharp edges. The other arguments are those of ``Triangles``, and one of ``zynvue.STYLES``.

    >>> square = Mesh([(0, 0, 0), (2, 0, 0), (2, 2, 0), (0, 2, 0)], [(0, 1, 2, 3)])
    >>> square
    <zynvue.Mesh: 4 points, 1 face>
    >>> square.area
    4.0
    """

    def __init__(
        self,
        points: Any = (),
        faces: Any = (),
        color: Colour = (0.6, 0.65, 0.7),
        *,
        ambient: float = 0.5,
        diffuse: float = 0.6,
        specular: float = 0.0,
        shininess: float = 0.0,
        emissive: float = 0.0,
        style: str = "surfaces",
    ) -> None:
        self.com = create("ZYNVue.ZYNGLMaillage")
        """The published members."""
        coordinates = _arrays.rows(points, 3, "points")
        counts, corners = _arrays.polygons(faces)
        with told():
            self.com.setMaterial(*_rgba(color), ambient, diffuse, specular, shininess, emissive)
            self.com.setSommets(_arrays.variant(coordinates))
            if counts is None:
                self.com.setFaces(_arrays.integers(corners))
            else:
                self.com.setPolygones(_arrays.integers(counts), _arrays.integers(corners))
        self.style = style

    @classmethod
    def load(
        cls, path: Union[str, os.PathLike[str]], color: Colour = (0.6, 0.65, 0.7), **options: Any
    ) -> Mesh:
        """The model of a file, told by what is in it: STL, OBJ, PLY, OFF or 3MF. Colours of the file come first.

        ``LoadError``, a ``ValueError``, says what is wrong with a file and where; one that cannot be read is an
        ``OSError``.
        """
        mesh = cls(color=color, **options)
        try:
            with told():
                mesh.com.Charger(os.path.abspath(path))
        except Error as error:
            if error.code == _INVALID_DATA:
                raise LoadError(error.text, error.code) from None
            raise _of_the_system(error, path) from None
        return mesh

    def save(self, path: Union[str, os.PathLike[str]]) -> None:
        """Writes the mesh as the file's name says: .stl (binary), .ply, .obj or .off.

        What the format holds reads back the same to the last bit. ``SaveError``, which is an ``OSError``, says why a
        file was not written; an older one is then as it was.
        """
        try:
            with told():
                self.com.Enregistrer(os.path.abspath(path))
        except Error as error:
            raise SaveError(error.text, error.code) from None

    @property
    def points(self) -> Any:
        """Coordinates, n x 3: an array where NumPy is loaded, else a list of tuples."""
        return _arrays.table(self._got("getSommets"), 3)

    @property
    def faces(self) -> Any:
        """Numbers of points, m x 3, as ``points`` are; polygons are cut into triangles."""
        return _arrays.table(self._got("getFaces"), 3)

    @property
    def polygons(self) -> list[tuple[int, ...]]:
        """The numbers of the points of each face."""
        numbers = _arrays.numbers(self._got("getPolygones"))
        result = []
        at = 0
        while at < len(numbers):
            end = at + 1 + numbers[at]
            result.append(tuple(numbers[at + 1 : end]))
            at = end
        return result

    @property
    def style(self) -> str:
        """One of ``zynvue.STYLES``."""
        return list(STYLES)[int(self.com.StyleRendu)]

    @style.setter
    def style(self, value: str) -> None:
        self.com.StyleRendu = _choice(STYLES, value, "style")

    @property
    def area(self) -> float:
        """Of all faces."""
        return float(self.com.Aire)

    @property
    def volume(self) -> float:
        """What the mesh encloses, where it is ``closed``; negative where it is turned inside out."""
        return float(self.com.Volume)

    @property
    def closed(self) -> bool:
        """Whether every edge lies in exactly two faces, which turn alike."""
        return bool(self.com.EstFerme)

    def color_points(self, colors: Any) -> None:
        """A colour for each point, n x 3 or n x 4 numbers from 0 to 1; none for an empty sequence."""
        self._colour(self.com.setCouleursSommets, colors)

    def color_faces(self, colors: Any) -> None:
        """A colour for each face, m x 3 or m x 4 numbers from 0 to 1; none for an empty sequence."""
        self._colour(self.com.setCouleursFaces, colors)

    def color_by(self, values: Numbers) -> None:
        """Colours points by a value for each, NaN where there is none, from the least to the greatest one.

        The scale is ``com.EchelleCouleurs``.
        """
        with told():
            self.com.setValeurs(_arrays.variant(values))

    def move(self, points: Any, first: int = 0) -> None:
        """Gives the points from ``first`` on other coordinates, n x 3; all else stays."""
        coordinates = _arrays.rows(points, 3, "points")
        with told():
            self.com.setSommetsPartie(first, _arrays.variant(coordinates))

    def _colour(self, set_colours: Any, colors: Any) -> None:
        width = 4 if len(colors) and len(colors[0]) == 4 else 3
        components = _arrays.rows(colors, width, "colours")
        with told():
            set_colours(_arrays.variant(components))

    def _got(self, member: str) -> VARIANT:
        """What a member answers, as it is: comtypes would make an object of each number."""
        result = VARIANT()
        with told():
            getattr(self.com, f"_IZYNGLMaillage__com_{member}")(ctypes.byref(result))
        return result

    def __len__(self) -> int:
        return int(self.com.NbFaces)

    def __repr__(self) -> str:
        points, faces = self.com.NbSommets, len(self)
        return f"<zynvue.Mesh: {points} point{'' if points == 1 else 's'}, {faces} face{'' if faces == 1 else 's'}>"


def _of_the_system(error: Error, path: Union[str, os.PathLike[str]]) -> Exception:
    """The failure as Python has it: FileNotFoundError and so on."""
    if error.code >> 16 != 0x8007 or error.code in (_INVALID_ARGUMENT, _OUT_OF_MEMORY):
        return error
    return OSError(0, error.text, os.fspath(path), error.code & 0xFFFF)
