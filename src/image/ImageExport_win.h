#pragma once

#include "core/Dib.h"
#include "image/AlphaPicture.h"
#include "image/ImageFormat.h"

namespace zyn {

/// Each of these writes a picture to `fileName`, replacing a file of that name; where it cannot,
/// which it throws, that file stays as it is and nothing else is left. `fileName` may be null.

/// Windows bitmap, 24 bits a pixel, rows from the bottom, no resolution.
void writeBitmapFile(const PixelView& picture, const wchar_t* fileName);

/// GIF of at most 256 colours.
void writeGifFile(const PixelView& picture, const wchar_t* fileName);

void writePngFile(const PixelView& picture, const wchar_t* fileName);

/// PNG with transparency.
void writePngFile(const AlphaPicture& picture, const wchar_t* fileName, Resolution resolution);

/// JPEG. `quality` is handed to the encoder as it is; it expects 0 (smallest) to 100 (best).
void writeJpegFile(const PixelView& picture, const wchar_t* fileName, int quality);

/// The same with a bitmap file `temporary`, which is written first and deleted at the end. It may
/// be `fileName`. GIF and PNG need it to be written whole; JPEG takes what it then finds there.
void writeGifFileVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName);
void writePngFileVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName);
void writeJpegFileVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName,
                      int quality);

/// In any format; `quality` as above, for JPEG; `resolution` for JPEG, PNG and TIFF.
void writeImageFile(ImageFormat format, const PixelView& picture, const wchar_t* fileName,
                    int quality, Resolution resolution);

}  // namespace zyn
