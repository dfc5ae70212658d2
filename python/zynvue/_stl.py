"""Files of triangles: STL, binary or text."""

from __future__ import annotations

import os
import struct
from typing import Union

HEADER = 80 + 4  # a comment and the number of facets
FACET = struct.Struct("<12fH")  # the normal, three corners, two bytes for nobody


def read(path: Union[str, os.PathLike[str]]) -> list[list[float]]:
    """The facets of a file, nine coordinates each. ``ValueError`` for what is no STL."""
    with open(path, "rb") as file:
        data = file.read()
    if len(data) >= HEADER and len(data) == HEADER + FACET.size * int.from_bytes(data[80:84], "little"):
        return [list(facet[3:12]) for facet in FACET.iter_unpack(data[HEADER:])]
    if data.lstrip()[:5].lower() == b"solid":
        return _read_text(data.decode("ascii", "replace"), path)
    raise ValueError(f"{os.fspath(path)}: no STL")


def _read_text(text: str, path: Union[str, os.PathLike[str]]) -> list[list[float]]:
    numbers: list[float] = []
    for number, line in enumerate(text.splitlines(), 1):
        words = line.split()
        if words and words[0].lower() == "vertex":
            try:
                x, y, z = map(float, words[1:])
            except ValueError:
                raise ValueError(f"{os.fspath(path)}, line {number}: no corner") from None
            numbers += x, y, z
    if len(numbers) % 9:
        raise ValueError(f"{os.fspath(path)}: a facet without three corners")
    return [numbers[i : i + 9] for i in range(0, len(numbers), 9)]
