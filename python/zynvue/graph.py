"""Graphs: traces over axes with scales of their own."""

from __future__ import annotations

import math
import sys
from typing import Any, Iterator, Optional

from . import _arrays
from ._arrays import Numbers
from .objects import Colour, Polyline, Text
from .pictures import PlanePicture

Range = tuple[float, float]

COLOURS = (
    (0.12, 0.35, 0.75),
    (0.84, 0.19, 0.15),
    (0.15, 0.55, 0.25),
    (0.9, 0.5, 0.1),
    (0.5, 0.25, 0.6),
    (0.3, 0.3, 0.3),
)
"""Those of the traces, one after the other."""
INK, FAINT = (0.2, 0.22, 0.25), (0.87, 0.88, 0.9)

# Pixels of a screen: around the traces, and of what is written there.
LEFT, RIGHT, BOTTOM, TOP = 80, 24, 62, 40
TEXT, TITLE = 16, 20
GAP = 8
X_TICKS, Y_TICKS = 90, 45  # at least as far from each other

LEAST_SPAN = 1e-300  # of an axis


class Graph(PlanePicture):
    """Traces over axes. Ranges that are not given are those of the traces; points outside of a range are left out.

    >>> with Graph(800, 400, x="t / s", y="U / mV") as graph:
    ...     graph.plot([0, 1, 2, 3], [0, 100, 400, 900], label="measured")
    ...     graph
    ...     graph.png()[:4]
    <zynvue.Graph: 800 x 400 pixels, 1 trace>
    b'\\x89PNG'
    """

    def __init__(
        self,
        width: int,
        height: int,
        *,
        title: str = "",
        x: str = "",
        y: str = "",
        x_range: Optional[Range] = None,
        y_range: Optional[Range] = None,
        background: Colour = (1, 1, 1),
        dpi: Optional[float] = None,
    ) -> None:
        super().__init__(width, height, background=background, dpi=dpi)
        self.title, self.x, self.y = title, x, y
        self.x_range, self.y_range = x_range, y_range
        self._traces: list[tuple[memoryview, memoryview, Colour, float, str]] = []
        self._objects: list[tuple[Any, bool]] = []
        self._drawn = False

    def plot(
        self, x: Numbers, y: Numbers, *, color: Optional[Colour] = None, width: float = 2, label: str = ""
    ) -> None:
        """Adds a trace; its label stands in its colour in the upper right corner."""
        xs, ys = _arrays.copied(x), _arrays.copied(y)
        if len(xs) != len(ys):
            raise ValueError(f"x has {len(xs)} numbers, y {len(ys)}")
        self._traces.append((xs, ys, color or COLOURS[len(self._traces) % len(COLOURS)], width, label))
        self._drawn = False

    def add(self, *objects: Any, outline: bool = False) -> None:
        """Adds objects over the graph, in pixels of a screen from its lower left corner."""
        self._objects += [(thing, outline) for thing in objects]
        self._drawn = False

    def _open(self) -> Any:
        com = super()._open()
        if self._drawn:
            return com
        if self._added:  # nothing can be taken out of a bitmap context: another one
            self._make()
        self._drawn = True
        try:
            self._draw()
        except BaseException:
            self._drawn = False  # another attempt fails as well, and writes no half of a graph
            raise
        return self.com

    def _draw(self) -> None:
        # The plane is in pixels of a screen, whatever the resolution of the picture.
        fineness = self.com.DPIResolution / self._screen_dpi
        width, height = self.width / fineness, self.height / fineness
        self._show(0, width, 0, height)
        x = _Scale(self.x_range or _extent(trace[0] for trace in self._traces), LEFT, width - RIGHT)
        y = _Scale(self.y_range or _extent(trace[1] for trace in self._traces), BOTTOM, height - TOP)
        super().add(*_axes(x, y), *self._names(x, y))
        for xs, ys, color, line_width, _ in self._traces:
            super().add(Polyline(x.places(xs), y.places(ys), color=color, width=line_width))
        labels = [(trace[4], trace[2]) for trace in self._traces if trace[4]]
        for row, (label, color) in enumerate(labels):
            place = (x.end - GAP, y.end - GAP - row * (TEXT + GAP))
            super().add(Text(label, place, height=TEXT, color=color, anchor="top right"))
        for thing, outline in self._objects:
            super().add(thing, outline=outline)

    def _names(self, x: _Scale, y: _Scale) -> Iterator[Text]:
        if self.x:
            yield Text(self.x, (x.end, BOTTOM - 2 * GAP - TEXT), height=TEXT, color=INK, anchor="top right")
        if self.y:
            yield Text(self.y, (GAP, y.end + GAP), height=TEXT, color=INK, anchor="bottom left")
        if self.title:
            yield Text(
                self.title, ((x.start + x.end) / 2, y.end + GAP), height=TITLE, color=INK, anchor="bottom"
            )

    def __repr__(self) -> str:
        count = len(self._traces)
        state = "closed" if self.com is None else f"{count} trace{'' if count == 1 else 's'}"
        return f"<zynvue.Graph: {self.width} x {self.height} pixels, {state}>"


class _Scale:
    """Puts a range of numbers between two places."""

    def __init__(self, numbers: Range, start: float, end: float) -> None:
        self.low, self.high = map(float, numbers)
        if not self.low < self.high:
            raise ValueError(f"a range goes from less to more, not from {numbers[0]} to {numbers[1]}")
        if not LEAST_SPAN <= self.high - self.low < math.inf:
            raise ValueError(f"no axis goes from {numbers[0]} to {numbers[1]}")
        self.start, self.end = start, end
        self.factor = (end - start) / (self.high - self.low)

    def place(self, value: float) -> float:
        return self.start + (value - self.low) * self.factor

    def places(self, values: memoryview) -> Any:
        numpy = sys.modules.get("numpy")
        if numpy is not None:
            array = numpy.asarray(values)
            inside = (array >= self.low) & (array <= self.high)
            return numpy.where(inside, self.start + (array - self.low) * self.factor, math.nan)
        return [self.place(value) if self.low <= value <= self.high else math.nan for value in values]

    def ticks(self, distance: float) -> list[float]:
        """Round numbers, as many as there is room for.

        >>> _Scale((0, 10), 0, 500).ticks(90)
        [0.0, 2.0, 4.0, 6.0, 8.0, 10.0]
        >>> _Scale((-0.3, 0.1), 0, 200).ticks(90)
        [-0.2, 0.0]
        """
        wanted = (self.high - self.low) / max((self.end - self.start) / distance, 1)
        power = 10 ** math.floor(math.log10(wanted))
        step = next(factor * power for factor in (1, 2, 5, 10) if factor * power >= wanted * 0.999)
        digits = max(0, -math.floor(math.log10(step)))
        first, last = math.ceil(self.low / step - 1e-9), math.floor(self.high / step + 1e-9)
        return [round(number * step, digits) + 0.0 for number in range(first, last + 1)]


def _extent(arrays: Iterator[memoryview]) -> Range:
    """From the least to the greatest number of all; those that are not finite do not count."""
    low, high = math.inf, -math.inf
    numpy = sys.modules.get("numpy")
    finite: Any
    for values in arrays:
        if numpy is not None:
            array = numpy.asarray(values)
            finite = array[numpy.isfinite(array)]
            ends = [float(finite.min()), float(finite.max())] if len(finite) else []
        else:
            finite = [value for value in values if math.isfinite(value)]
            ends = [min(finite), max(finite)] if finite else []
        low, high = min([low, *ends]), max([high, *ends])
    if low > high:
        return 0.0, 1.0
    around = 0.0 if high - low >= LEAST_SPAN else max(0.5, abs(low) / 10_000)
    return low - around, high + around


def _axes(x: _Scale, y: _Scale) -> Iterator[Any]:
    """A faint grid, the axes, and their numbers."""
    for tick in x.ticks(X_TICKS):
        yield Polyline([x.place(tick)] * 2, [y.start, y.end], color=FAINT, width=1)
        yield Text(f"{tick:g}", (x.place(tick), y.start - GAP), height=TEXT, color=INK, anchor="top")
    for tick in y.ticks(Y_TICKS):
        yield Polyline([x.start, x.end], [y.place(tick)] * 2, color=FAINT, width=1)
        yield Text(f"{tick:g}", (x.start - GAP, y.place(tick)), height=TEXT, color=INK, anchor="right")
    yield Polyline([x.start, x.start, x.end], [y.end, y.start, y.start], color=INK, width=1.5)
