"""Images in memory: BMP from pixels and back, and picture objects of Windows."""

from __future__ import annotations

import ctypes
import os
import struct
import sys
from typing import Any

from comtypes import GUID, IUnknown
from comtypes.automation import IDispatch

FILE_HEADER = struct.Struct("<2sIHHI")
INFO_HEADER = struct.Struct("<IiiHHIIiiII")
IID_IPICTUREDISP = GUID("{7BF80981-BF32-101A-8BBB-00AA00300CAB}")

_oleaut32 = ctypes.OleDLL("oleaut32")
_shlwapi = ctypes.WinDLL("shlwapi")
_shlwapi.SHCreateMemStream.restype = ctypes.c_void_p
_shlwapi.SHCreateMemStream.argtypes = [ctypes.c_char_p, ctypes.c_uint]


def picture(image: Any) -> Any:
    """A picture object from the path of a file, from what is in one, or from an array of pixels."""
    if isinstance(image, (str, os.PathLike)):
        with open(image, "rb") as file:
            data = file.read()
    else:
        data = image if isinstance(image, bytes) else bmp(image)
    stream = ctypes.POINTER(IUnknown)()
    address = _shlwapi.SHCreateMemStream(data, len(data))
    if not address:
        raise MemoryError(f"an image of {len(data)} bytes")
    ctypes.c_void_p.from_buffer(stream).value = address
    result = ctypes.POINTER(IDispatch)()
    try:
        _oleaut32.OleLoadPicture(
            stream, len(data), False, ctypes.byref(IID_IPICTUREDISP), ctypes.byref(result)
        )
    except OSError as error:
        raise ValueError(f"no BMP, JPEG or GIF image: {error.strerror}") from None
    return result


def bmp(pixels: Any) -> bytes:
    """A BMP file of 24 bits a pixel from an array of height x width x 3 (red, green, blue)."""
    numpy = sys.modules.get("numpy")
    if numpy is not None and isinstance(pixels, numpy.ndarray):
        if pixels.shape[2:] != (3,) or not pixels.size or not 0 <= pixels.min() <= pixels.max() <= 255:
            shape = " x ".join(map(str, pixels.shape))
            raise ValueError(f"an image is height x width x 3 numbers from 0 to 255, not {shape}")
        rows = [row[:, ::-1].astype("uint8").tobytes() for row in pixels]
    else:
        rows = [bytes(value for red, green, blue in row for value in (blue, green, red)) for row in pixels]
    height, width = len(rows), len(rows[0]) // 3 if rows else 0
    if not width or any(len(row) != 3 * width for row in rows):
        raise ValueError("an image is height x width x 3 numbers")
    filled = b"".join(row + bytes(-len(row) % 4) for row in reversed(rows))
    start = FILE_HEADER.size + INFO_HEADER.size
    return (
        FILE_HEADER.pack(b"BM", start + len(filled), 0, 0, start)
        + INFO_HEADER.pack(INFO_HEADER.size, width, height, 1, 24, 0, len(filled), 0, 0, 0, 0)
        + filled
    )


def rows(data: bytes) -> tuple[int, int, bytes]:
    """Width, height and pixels (red, green, blue, from the top) of a BMP file of 24 bits a pixel.

    >>> rows(bmp([[(1, 2, 3)], [(4, 5, 6)]]))
    (1, 2, b'\\x01\\x02\\x03\\x04\\x05\\x06')
    """
    start = FILE_HEADER.unpack_from(data)[4]
    width, height = INFO_HEADER.unpack_from(data, FILE_HEADER.size)[1:3]
    stride = (3 * width + 3) // 4 * 4
    pixels = bytearray()
    for row in reversed(range(height)):
        pixels += data[start + row * stride : start + row * stride + 3 * width]
    pixels[0::3], pixels[2::3] = pixels[2::3], pixels[0::3]
    return width, height, bytes(pixels)
