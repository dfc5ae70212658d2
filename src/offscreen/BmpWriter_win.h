#pragma once

#include "glcontext/SharedBitmap_win.h"

namespace zyn {

/// How writing a bitmap file ended.
enum class BmpOutcome {
  kWritten = 0,
  kFileNotOpened = -4,
  kFileHeaderNotWritten = -5,
  kInfoHeaderNotWritten = -6,
  kPixelsNotWritten = -7,
  kFileNotClosed = -8,
};

/// Writes a bitmap file of 24 bits a pixel; where that fails, part of it may be left.
BmpOutcome writeBmp(const SharedBitmap& picture, const wchar_t* fileName);

}  // namespace zyn
