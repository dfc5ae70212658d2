"""Numbers on their way to the components: whole arrays are copied at once."""

from __future__ import annotations

import array
import ctypes
import sys
from typing import Any, Iterable, Optional, Sequence, Union

from comtypes.automation import VARIANT, VT_ARRAY, VT_I4, VT_R8

Numbers = Union[Sequence[float], Iterable[float], Any]
"""A list, a tuple, anything with a buffer of numbers: an array of NumPy, a column of pandas, ``array.array``."""

_oleaut32 = ctypes.WinDLL("oleaut32")
_oleaut32.SafeArrayCreateVector.restype = ctypes.c_void_p
_oleaut32.SafeArrayAccessData.argtypes = [ctypes.c_void_p, ctypes.POINTER(ctypes.c_void_p)]
_oleaut32.SafeArrayUnaccessData.argtypes = [ctypes.c_void_p]
_oleaut32.SafeArrayGetUBound.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.POINTER(ctypes.c_long)]


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
    return _variant(buffer(values), VT_R8)


def integers(values: Any) -> VARIANT:
    """Whole numbers as an array for a component.

    >>> integers(range(3)).value
    (0, 1, 2)
    """
    numpy = sys.modules.get("numpy")
    if numpy is not None and isinstance(values, numpy.ndarray):
        whole = numpy.ascontiguousarray(values, "int32")
        if not numpy.array_equal(whole, values):
            raise ValueError("whole numbers of 32 bits are wanted")
        return _variant(memoryview(whole), VT_I4)
    return _variant(memoryview(array.array("i", values)), VT_I4)


def _variant(numbers: memoryview, kind: int) -> VARIANT:
    result = VARIANT()
    result.vt = VT_ARRAY | kind
    safe_array = _oleaut32.SafeArrayCreateVector(kind, 0, len(numbers))
    if not safe_array:
        raise MemoryError(f"{len(numbers)} numbers")
    ctypes.c_void_p.from_buffer(result._).value = safe_array
    place = ctypes.c_void_p()
    _oleaut32.SafeArrayAccessData(safe_array, ctypes.byref(place))
    ctypes.memmove(place, _address(numbers), numbers.nbytes)
    _oleaut32.SafeArrayUnaccessData(safe_array)
    return result


def numbers(answer: VARIANT) -> Any:
    """The numbers of an array that a component has answered; none for an empty answer.

    >>> numbers(variant([1, 2]))
    array('d', [1.0, 2.0])
    >>> numbers(VARIANT())
    array('d')
    """
    result = array.array("i" if answer.vt == VT_ARRAY | VT_I4 else "d")
    if not answer.vt & VT_ARRAY:
        return result
    safe_array = ctypes.c_void_p.from_buffer(answer._).value
    last, place = ctypes.c_long(), ctypes.c_void_p()
    _oleaut32.SafeArrayGetUBound(safe_array, 1, ctypes.byref(last))
    _oleaut32.SafeArrayAccessData(safe_array, ctypes.byref(place))
    result.frombytes(ctypes.string_at(place, (last.value + 1) * result.itemsize))
    _oleaut32.SafeArrayUnaccessData(safe_array)
    return result


def table(answer: VARIANT, width: int) -> Any:
    """The numbers of an answer in rows: an array where NumPy is loaded, else a list of tuples."""
    values = numbers(answer)
    numpy = sys.modules.get("numpy")
    if numpy is not None:
        return numpy.frombuffer(values, values.typecode).reshape(-1, width)
    return list(zip(*[iter(values)] * width))


def rows(values: Any, width: int, what: str) -> memoryview:
    """Rows of as many numbers each, one after the other.

    >>> rows([(1, 2, 3), (4, 5, 6)], 3, "points").tolist()
    [1.0, 2.0, 3.0, 4.0, 5.0, 6.0]
    """
    numpy = sys.modules.get("numpy")
    if numpy is not None and hasattr(values, "__array__"):
        doubles = numpy.ascontiguousarray(values, "float64")
        if doubles.ndim != 2 or doubles.shape[1] != width:
            raise ValueError(f"{what} are n x {width} numbers, not {' x '.join(map(str, doubles.shape))}")
        return memoryview(doubles.reshape(-1))
    result = array.array("d")
    for row in values:
        if len(row) != width:
            raise ValueError(f"{what} are n x {width} numbers, not {len(row)}")
        result.extend(row)
    return memoryview(result)


def polygons(values: Any) -> tuple[Optional[array.array[int]], Any]:
    """Faces as the numbers of their corners, None where all have three, and their points one after the other.

    >>> polygons([(0, 1, 2), (3, 4, 5)])
    (None, array('i', [0, 1, 2, 3, 4, 5]))
    >>> polygons([(0, 1, 2), (0, 1, 2, 3)])
    (array('i', [3, 4]), array('i', [0, 1, 2, 0, 1, 2, 3]))
    """
    numpy = sys.modules.get("numpy")
    if numpy is not None and isinstance(values, numpy.ndarray) and values.ndim == 2:
        counts = array.array("i", [values.shape[1]] * (len(values) if values.shape[1] != 3 else 0))
        return counts or None, values.reshape(-1)
    counts, corners = array.array("i"), array.array("i")
    for face in values:
        counts.append(len(face))
        corners.extend(face)
    return (None if all(count == 3 for count in counts) else counts), corners


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
