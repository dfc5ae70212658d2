#pragma once

#include "glcontext/OffscreenSurface_win.h"

namespace zyn {

/// Each of these writes what the surface shows to `fileName`, replacing a file of that name, and
/// tells whether it succeeded; where it did not, no file of that name is left if it can be helped.
/// `fileName` may be null. Nothing is drawn: render before.

/// Windows bitmap, 24 bits a pixel, rows from the bottom, no resolution.
bool writeBitmapFile(const OffscreenSurface& surface, const wchar_t* fileName);

/// GIF of at most 256 colours.
bool writeGifFile(const OffscreenSurface& surface, const wchar_t* fileName);

bool writePngFile(const OffscreenSurface& surface, const wchar_t* fileName);

/// JPEG. `quality` is handed to the encoder as it is; it expects 0 (smallest) to 100 (best).
bool writeJpegFile(const OffscreenSurface& surface, const wchar_t* fileName, int quality);

/// The same by way of a bitmap file `temporary`, which is written first and deleted at the end. GIF
/// and PNG need it to be written whole; JPEG takes what it then finds there.
bool writeGifFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                     const wchar_t* fileName);
bool writePngFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                     const wchar_t* fileName);
bool writeJpegFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                      const wchar_t* fileName, int quality);

}  // namespace zyn
