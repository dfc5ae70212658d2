"""What pictures show. Each object has its published members in ``com``, as comtypes has them."""

from __future__ import annotations

import math
import os
from typing import Any, Optional, Sequence, Union

from . import _arrays, _images, _stl
from ._arrays import Numbers
from ._components import Uncopied, create, create_many, told

Point = Sequence[float]
"""x, y and, in space, z."""
Colour = Sequence[float]
"""Red, green, blue, 0 to 1; and opacity, 1 where it is left out."""

ANCHORS = {
    "bottom left": 1,
    "bottom right": 2,
    "top right": 3,
    "top left": 4,
    "bottom": 5,
    "right": 6,
    "top": 7,
    "left": 8,
    "centre": 9,
    "baseline": 0,
}
"""The points of a text that can lie at its position."""


def _choice(choices: dict[str, Any], value: str, what: str) -> Any:
    try:
        return choices[value]
    except KeyError:
        raise ValueError(f"{value!r} is no {what}: {', '.join(choices)}") from None


def _rgba(colour: Colour) -> tuple[float, ...]:
    if isinstance(colour, str) or len(colour) not in (3, 4):
        raise ValueError(f"a colour is 3 or 4 numbers, not {colour!r}")
    return (*colour, 1.0)[:4]


def _xyz(point: Point) -> tuple[float, ...]:
    if len(point) not in (2, 3):
        raise ValueError(f"a point is 2 or 3 numbers, not {len(point)}")
    return (*point, 0.0)[:3]


class Triangles(Uncopied):
    """Shaded triangles: n x 3 corners x 3 coordinates, as an array of NumPy or as sequences.

    Each has the normal of its plane. The other arguments are how much of the ambient and the diffuse light they take,
    their gloss and its shininess, and how much they shine by themselves, 0 to 1 each.

    >>> Triangles([[(0, 0, 0), (8, 0, 0), (4, 6, 0)]], color=(0.9, 0.4, 0.1))
    <zynvue.Triangles: 1 triangle>
    """

    def __init__(
        self,
        corners: Any,
        color: Colour = (0.6, 0.65, 0.7),
        *,
        ambient: float = 0.5,
        diffuse: float = 0.6,
        specular: float = 0.0,
        shininess: float = 0.0,
        emissive: float = 0.0,
    ) -> None:
        facets = _arrays.facets(corners)
        material = (*_rgba(color), ambient, diffuse, specular, shininess, emissive)
        self.com = create_many("ZYNVue.ZYNGLTriangle", len(facets))
        """The published members of each triangle."""
        with told():
            for triangle, facet in zip(self.com, facets):
                _fill(triangle, facet, material)

    @classmethod
    def load(
        cls, path: Union[str, os.PathLike[str]], color: Colour = (0.6, 0.65, 0.7), **material: float
    ) -> Triangles:
        """The triangles of an STL file, binary or text."""
        facets = _stl.read(path)
        return cls([(facet[0:3], facet[3:6], facet[6:9]) for facet in facets], color, **material)

    def __len__(self) -> int:
        return len(self.com)

    def __repr__(self) -> str:
        return f"<zynvue.Triangles: {len(self)} triangle{'' if len(self) == 1 else 's'}>"


def _fill(triangle: Any, facet: Sequence[float], material: tuple[float, ...]) -> None:
    ax, ay, az, bx, by, bz, cx, cy, cz = facet
    ux, uy, uz, vx, vy, vz = bx - ax, by - ay, bz - az, cx - ax, cy - ay, cz - az
    nx, ny, nz = uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx
    length = math.sqrt(nx * nx + ny * ny + nz * nz) or 1.0
    nx, ny, nz = nx / length, ny / length, nz / length
    for corner in range(3):
        triangle.setPoint(corner, *facet[3 * corner : 3 * corner + 3])
        triangle.setNormale(corner, nx, ny, nz)
    triangle.setMaterial(*material)


class Polyline(Uncopied):
    """A line through points, in graphs (x, y) or in space (x, y, z); a coordinate that is not a number is a gap.

    The width is in pixels of a screen. A million points are no problem: what is drawn depends on the picture's size.

    >>> Polyline([0, 1, 2, 3], [0, 1, 4, 9], color=(0.8, 0.2, 0.15), width=2)
    <zynvue.Polyline: 4 points>
    """

    def __init__(
        self,
        x: Numbers,
        y: Numbers,
        z: Optional[Numbers] = None,
        *,
        color: Colour = (0.1, 0.3, 0.8),
        width: float = 1.5,
        number: int = -1,
    ) -> None:
        self.com = create("ZYNModeleGeom.Polyligne")
        self.com.setColor(*_rgba(color))
        self.com.Epaisseur = width
        self.com.Numero = number
        self.set(x, y, z)

    def set(self, x: Numbers, y: Numbers, z: Optional[Numbers] = None) -> None:
        """Replaces the points."""
        with told():
            if z is None:
                self.com.setPoints(_arrays.variant(x), _arrays.variant(y))
            else:
                self.com.setPoints3D(_arrays.variant(x), _arrays.variant(y), _arrays.variant(z))

    def __len__(self) -> int:
        return int(self.com.Count)

    def __repr__(self) -> str:
        return f"<zynvue.Polyline: {len(self)} point{'' if len(self) == 1 else 's'}>"


class Text(Uncopied):
    """A text of a fixed height, in pixels of a screen, at a point; ``anchor`` is the point of the text that lies there:
    one of ``zynvue.ANCHORS``.

    >>> Text("right angle", (0, 0), anchor="top left")
    <zynvue.Text: 'right angle'>
    """

    def __init__(
        self,
        text: str,
        position: Point,
        *,
        height: int = 20,
        color: Colour = (0, 0, 0),
        anchor: str = "centre",
        name: int = 0,
    ) -> None:
        self.com = create("ZYNVue.ZYNGLTexte")
        self.com.Texte = text
        self.com.HauteurPixels = height
        self.com.setColor(*_rgba(color))
        self.com.setPosition(*_xyz(position), _choice(ANCHORS, anchor, "anchor"))
        self.com.NomSelection = name

    def __repr__(self) -> str:
        return f"<zynvue.Text: {self.com.Texte!r}>"


class Dimension(Uncopied):
    """A dimension between two points of a graph: ``kind`` is "aligned" with them, or "vertical" or "horizontal".

    ``offset`` is how far from the points its line is drawn, in model units; the text is the distance unless it is
    given.

    >>> Dimension((0, 0), (3, 4), 1)
    <zynvue.Dimension: 'aligned', '5'>
    """

    KINDS = {"vertical": 1, "horizontal": 2, "aligned": 3}

    def __init__(
        self,
        start: Point,
        end: Point,
        offset: float = 0.0,
        text: Optional[str] = None,
        *,
        kind: str = "aligned",
        height: int = 20,
        color: Colour = (0, 0, 0),
    ) -> None:
        self.kind = kind
        self.com = create("ZYNVue.ZYNGLTexte")
        self.com.TypeCotation = _choice(self.KINDS, kind, "kind")
        a, b = _xyz(start), _xyz(end)
        measured = {"vertical": abs(b[1] - a[1]), "horizontal": abs(b[0] - a[0])}.get(kind, math.dist(a, b))
        self.com.Texte = f"{measured:g}" if text is None else text
        self.com.HauteurPixels = height
        self.com.setColor(*_rgba(color))
        self.com.setPointsCotation(*a, *b)
        self.com.DecalageCotation = offset

    def __repr__(self) -> str:
        return f"<zynvue.Dimension: {self.kind!r}, {self.com.Texte!r}>"


class Sprite(Uncopied):
    """A picture at a point, in its own size in pixels.

    ``image`` is the path of a BMP, JPEG or GIF file, the bytes of one, or an array of height x width x 3 (red, green,
    blue, 0 to 255). ``origin`` is the pixel that lies at the point, from the lower left corner; ``transparent`` a colour
    (0 to 255) that is left out.

    >>> Sprite([[(255, 0, 0), (0, 0, 255)]], (1, 2, 3))
    <zynvue.Sprite: 2 x 1 pixels>
    """

    def __init__(
        self,
        image: Any,
        position: Point,
        *,
        origin: Sequence[float] = (0, 0),
        transparent: Optional[Sequence[int]] = None,
    ) -> None:
        self.com = create("ZYNVue.ZYNGLBitmap")
        picture = _images.picture(image)
        with told():
            self.com.Picture = picture
            self.com.setPosition(*_xyz(position))
            self.com.setOrigine(*origin)
            if transparent is not None:
                self.com.setTransparentColor(*transparent)
                self.com.Transparent = True

    def __repr__(self) -> str:
        return f"<zynvue.Sprite: {self.com.largeur} x {self.com.hauteur} pixels>"
