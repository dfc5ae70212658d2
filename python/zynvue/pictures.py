"""Pictures of scenes and of graphs, of any size, without a window."""

from __future__ import annotations

import math
import os
import tempfile
from types import TracebackType
from typing import Any, Callable, Optional, Sequence, Type, TypeVar, Union

from . import _arrays, _images
from ._components import Error, SaveError, Uncopied, create, told, told_by_success
from .objects import Colour, Point, _choice, _rgba

VIEWS = {
    "xy+": ((0, 0, 1), (0, 1, 0)),
    "xy-": ((0, 0, -1), (0, 1, 0)),
    "xz+": ((0, 1, 0), (0, 0, 1)),
    "xz-": ((0, -1, 0), (0, 0, 1)),
    "yz+": ((1, 0, 0), (0, 0, 1)),
    "yz-": ((-1, 0, 0), (0, 0, 1)),
    "turning": ((0, 1, 0), (1, 0, 0)),
    "iso": ((1, -1, 1), (0, 0, 1)),
}
"""The side on which the eye is, and what is up, by name: the plane that is shown, and from which side."""

Box = tuple[tuple[float, float], tuple[float, float], tuple[float, float]]
"""From and to along x, y and z."""

_Self = TypeVar("_Self", bound="Picture")


class Picture(Uncopied):
    """What pictures of scenes and of graphs have alike. After ``close``, or its ``with``, it holds no memory."""

    com: Any
    """The published members of the bitmap context, as comtypes has them."""

    _class: str
    _create_context: str

    def __init__(
        self, width: int, height: int, background: Colour, dpi: Optional[float], **switches: bool
    ) -> None:
        self.width, self.height = int(width), int(height)
        if max(abs(self.width), abs(self.height)) >= 2**31:  # calls would take the lower bits
            raise Error(f"There can be no picture of {self.width} x {self.height} pixels")
        if dpi is not None and not 1 <= dpi < math.inf:
            raise ValueError(f"a resolution is one dot per inch or more, not {dpi}")
        self._background, self._dpi, self._switches = _rgba(background)[:3], dpi, switches
        self._make()

    def _make(self) -> None:
        """A bitmap context, with nothing in it."""
        self._added = 0
        self.com = create(self._class)
        self._screen_dpi = self.com.DPIResolution
        with told():
            self.com.BackColor = _arrays.variant(self._background)
            if self._dpi is not None:
                self.com.DPIResolution = self._dpi
            for name, on in self._switches.items():
                setattr(self.com, name, on)
            getattr(self.com, self._create_context)(self.width, self.height)
        reason = told_by_success()
        if reason:
            raise Error(reason)

    def __enter__(self: _Self) -> _Self:
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        self.close()

    def close(self) -> None:
        """Lets go of the picture and of what was added to it."""
        self.com = None

    def _open(self) -> Any:
        if self.com is None:
            raise ValueError("the picture is closed")
        return self.com

    def add(self, *objects: Any, outline: bool = False) -> None:
        """Adds objects of this package, or any that implement ``IGLDraw``, in the order in which they are drawn."""
        com = self._open()
        with told():
            for thing in objects:
                members = getattr(thing, "com", thing)
                for member in members if isinstance(members, list) else [members]:
                    if not hasattr(member, "QueryInterface"):
                        raise TypeError(f"{thing!r} is no object that a picture shows")
                    com.Add(member, 1 if outline else 0)
                    self._added += 1

    def save(self, path: Union[str, os.PathLike[str]], quality: int = 90) -> None:
        """Writes the picture as the file's name says: .png, .jpg or .jpeg (with a quality of 0 to 100), .gif, .bmp.

        ``SaveError``, which is an ``OSError``, says why a file was not written; an older one is then as it was.
        """
        com = self._open()
        name = os.path.abspath(path)
        writers: dict[str, Callable[[], Any]] = {
            ".png": lambda: com.CreatePNG(name, name),
            ".jpg": lambda: com.CreateJPG(name, name, quality),
            ".jpeg": lambda: com.CreateJPG(name, name, quality),
            ".gif": lambda: com.CreateGIF(name, name),
            ".bmp": lambda: com.CreateBitmap(name),
        }
        write = _choice(writers, os.path.splitext(name)[1].lower(), "format")
        with told():
            write()
        reason = told_by_success()
        if reason or not os.path.exists(name):  # reasons do not come from other apartments
            raise SaveError(reason or f"{name} was not written")

    def _encoded(self, suffix: str) -> bytes:
        with tempfile.TemporaryDirectory(prefix="zynvue") as folder:
            path = os.path.join(folder, "picture" + suffix)
            self.save(path)
            with open(path, "rb") as file:
                return file.read()

    def png(self) -> bytes:
        """The picture as a PNG file in memory."""
        return self._encoded(".png")

    def pixels(self) -> bytes:
        """Red, green and blue of every pixel, by rows from the top; ``numpy.asarray(picture)`` is them as an array."""
        return _images.rows(self._encoded(".bmp"))[2]

    def __array__(self, dtype: Any = None, copy: Optional[bool] = None) -> Any:
        import numpy

        array = numpy.frombuffer(self.pixels(), "uint8").reshape(self.height, self.width, 3)
        return array.astype(dtype or "uint8")

    def _repr_png_(self) -> Optional[bytes]:
        """What a notebook shows."""
        return self.png() if self.com is not None else None

    def __repr__(self) -> str:
        state = "closed" if self.com is None else f"{self._added} object{'' if self._added == 1 else 's'}"
        return f"<zynvue.{type(self).__name__}: {self.width} x {self.height} pixels, {state}>"


class Picture3D(Picture):
    """A picture of a scene in space.

    >>> from zynvue import Text, Triangles
    >>> with Picture3D(320, 240) as picture:
    ...     picture.add(Triangles([[(0, 0, 0), (8, 0, 0), (4, 6, 0)]]), Text("A", (4, 2, 0)))
    ...     picture.view("xy+", margin=0.2)
    ...     picture
    ...     picture.png()[:4]
    <zynvue.Picture3D: 320 x 240 pixels, 2 objects>
    b'\\x89PNG'
    >>> picture
    <zynvue.Picture3D: 320 x 240 pixels, closed>

    The background fades upwards to ``gradient`` where that is given; ``dpi`` is the resolution for texts and line
    widths, that of the screen where it is left out; ``smooth`` asks for multisampling.
    """

    _class = "ZYNVue.ZYN3dGLBitmapContext"
    _create_context = "CreateContext"

    def __init__(
        self,
        width: int,
        height: int,
        *,
        background: Colour = (1, 1, 1),
        gradient: Optional[Colour] = None,
        dpi: Optional[float] = None,
        smooth: bool = True,
    ) -> None:
        super().__init__(
            width, height, background, dpi, MultiSampleAntialiasing=smooth, LineAntialiasing=smooth
        )
        if gradient is not None:
            self.com.setGradientColor(*_rgba(gradient)[:3])
            self.com.GradientBackground = True
        self.view("iso")

    def view(self, name: str = "iso", *, margin: float = 0.1, box: Optional[Box] = None) -> None:
        """Looks at the scene as one of ``zynvue.VIEWS`` says, with a margin as a fraction of its size.

        >>> Picture3D(10, 10).view("top")
        Traceback (most recent call last):
        ValueError: 'top' is no view: xy+, xy-, xz+, xz-, yz+, yz-, turning, iso
        """
        eye, up = _choice(VIEWS, name, "view")
        self.look(eye, up, margin=margin, box=box)

    def look(
        self, eye: Point, up: Point = (0, 0, 1), *, margin: float = 0.1, box: Optional[Box] = None
    ) -> None:
        """Looks at the scene, or at a box of it, from the side on which ``eye`` is."""
        direction = _unit((-eye[0], -eye[1], -eye[2]))
        left = _unit(_cross(up, direction))
        frame = [*left, *_cross(direction, left), *direction, *[0.0] * 7]
        with told():
            self._open().ViewParams(_box(box) if box else None, margin, _arrays.variant(frame))

    def ambient_light(self, color: Colour = (1, 1, 1), intensity: float = 0.7, on: bool = True) -> None:
        """Sets the light that comes from everywhere."""
        self._open().AmbientLightProperty = _arrays.variant([on, *_rgba(color)[:3], intensity])

    def light(
        self,
        number: int,
        azimuth: float = 0.0,
        elevation: float = 0.0,
        *,
        color: Colour = (1, 1, 1),
        ambient: float = 0.2,
        diffuse: float = 0.45,
        specular: float = 0.69,
        on: bool = True,
    ) -> None:
        """Sets light 1 or 2, which come from the eye, turned to the right and upwards by degrees. 2 is off at first."""
        turns = math.radians(azimuth), math.radians(elevation)
        values = [on, *_rgba(color)[:3], ambient, diffuse, specular, *turns]
        if number not in (1, 2):
            raise ValueError(f"there are lights 1 and 2, not {number}")
        setattr(self._open(), f"DirectionLight{number}Property", _arrays.variant(values))


class PlanePicture(Picture):
    """What pictures of the plane and graphs have alike."""

    _class = "ZYNVue.ZYN2DGLBitmapContext"
    _create_context = "CreateContexte"

    def __init__(
        self, width: int, height: int, *, background: Colour = (1, 1, 1), dpi: Optional[float] = None
    ) -> None:
        super().__init__(width, height, background, dpi)

    def _show(self, x_min: float, x_max: float, y_min: float, y_max: float) -> None:
        rectangle = create("ZYNModeleGeom.Rectangle")
        rectangle.setBornes(x_min, x_max, y_min, y_max)
        with told():
            self.com.ViewRect(rectangle, 0)


class Picture2D(PlanePicture):
    """A picture of the plane: traces, texts, dimensions. x and y have one scale; ``Graph`` has scales of their own.

    >>> from zynvue import Polyline
    >>> with Picture2D(400, 300) as picture:
    ...     picture.add(Polyline([0, 4, 4, 0], [0, 0, 3, 0]))
    ...     picture.range(-1, 5, -1, 4)
    ...     len(picture.pixels())
    360000
    """

    def range(self, x_min: float, x_max: float, y_min: float, y_max: float) -> None:
        """Shows this part of the plane, and what the shape of the picture leaves beside it."""
        self._open()
        self._show(x_min, x_max, y_min, y_max)


def _box(box: Box) -> Any:
    result = create("ZYNModeleGeom.Box3D")
    for axis, (low, high) in zip("XYZ", box):
        setattr(result, axis + "Min", low)
        setattr(result, axis + "Max", high)
    return result


def _cross(a: Sequence[float], b: Sequence[float]) -> tuple[float, float, float]:
    return a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]


def _unit(vector: Sequence[float]) -> tuple[float, float, float]:
    length = math.hypot(*vector)
    if not length:
        raise ValueError("eye and up must not be null, or in one direction")
    return vector[0] / length, vector[1] / length, vector[2] / length
