"""Numbers on their way to the components: whole arrays are copied at once."""

from __future__ import annotations

import array
import ctypes
import sys
from typing import Any, Iterable, Sequence, Union

from comtypes.automation import VARIANT, VT_ARRAY, VT_R8

Numbers = Union[Sequence[float], Iterable[float], Any]
"""A list, a tuple, anything with a buffer of numbers: an array of NumPy, a column of pandas, ``array.array``."""

_oleaut32 = ctypes.WinDLL("oleaut32")
_oleaut32.SafeArrayCreateVector.restype = ctypes.c_void_p
_oleaut32.SafeArrayAccessData.argtypes = [ctypes.c_void_p, ctypes.POINTER(ctypes.c_void_p)]
_oleaut32.SafeArrayUnaccessData.argtypes = [ctypes.c_void_p]


def buffer(values: Numbers) -> memoryview:
    """The values as doubles that lie one after the other; their own memory where they do already.

    >>> buffer([1, 2.5]).tolist()
    [1.0, 2.5]
    >>> doubles = array.array("d", [1, 2])
    >>> buffer(doubles).obj is doubles
    True
    """
    if isinstance(values, array.array) and values.typecode == "d":
        return memoryview(values)
    numpy = sys.modules.get("numpy")  # who has not loaded it has no arrays of it
    if numpy is not None and hasattr(values, "__array__"):
        if isinstance(values, numpy.ma.MaskedArray):
            values = values.astype("float64").filled(numpy.nan)
        doubles = numpy.ascontiguousarray(values, "float64")
        if doubles.ndim != 1:
            raise ValueError(f"numbers come in one row, not as {' x '.join(map(str, doubles.shape))}")
        return memoryview(doubles)
    return memoryview(array.array("d", values))


def copied(values: Numbers) -> memoryview:
    """The values as they are now."""
    copy = array.array("d")
    copy.frombytes(buffer(values).tobytes())
    return memoryview(copy)


def variant(values: Numbers) -> VARIANT:
    """The values as an array for a component.

    >>> variant(range(3)).value
    (0.0, 1.0, 2.0)
    """
    numbers = buffer(values)
    result = VARIANT()
    result.vt = VT_ARRAY | VT_R8
    safe_array = _oleaut32.SafeArrayCreateVector(VT_R8, 0, len(numbers))
    if not safe_array:
        raise MemoryError(f"{len(numbers)} numbers")
    ctypes.c_void_p.from_buffer(result._).value = safe_array
    place = ctypes.c_void_p()
    _oleaut32.SafeArrayAccessData(safe_array, ctypes.byref(place))
    ctypes.memmove(place, _address(numbers), numbers.nbytes)
    _oleaut32.SafeArrayUnaccessData(safe_array)
    return result


def _address(numbers: memoryview) -> Any:
    """Where the numbers are, for ctypes, whether they may be written or not."""
    if numbers.readonly:
        return numbers.tobytes()
    return (ctypes.c_char * numbers.nbytes).from_buffer(numbers) if numbers.nbytes else None


def facets(values: Any) -> list[list[float]]:
    """Triangles, n x 3 corners x 3 coordinates, as lists of nine numbers.

    >>> facets([[(0, 0, 0), (1, 0, 0), (0, 1, 0)]])
    [[0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0]]
    """
    numpy = sys.modules.get("numpy")
    if numpy is not None and isinstance(values, numpy.ndarray):
        if values.shape[1:] != (3, 3):
            raise ValueError(f"triangles are n x 3 x 3 numbers, not {' x '.join(map(str, values.shape))}")
        return list(values.astype("float64").reshape(-1, 9).tolist())
    result = [[float(number) for corner in facet for number in corner] for facet in values]
    if any(len(facet) != 9 for facet in result):
        raise ValueError("triangles are n x 3 corners x 3 coordinates")
    return result
