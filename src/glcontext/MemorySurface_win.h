#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "platform/WinHandles_win.h"

namespace zyn {

/// A memory device context with a DIB section of its own selected into it.
class MemorySurface {
 public:
  /// Nothing if the device context or the DIB section cannot be made. Sizes are in pixels; the rows
  /// go from the bottom up, those of a negative height from the top down.
  static std::optional<MemorySurface> make(int width, int height, int bitsPerPixel);

  int width() const { return width_; }
  HDC dc() const { return dc_.get(); }
  /// First byte of the first row; rows are padded to four bytes.
  const void* pixels() const { return pixels_; }

 private:
  MemorySurface(int width, UniqueBitmap bitmap, UniqueDC dc, const void* pixels);

  int width_;
  // The device context goes first, so that the bitmap is selected nowhere when it is freed.
  UniqueBitmap bitmap_;
  UniqueDC dc_;
  const void* pixels_;
};

/// Header of an uncompressed DIB, bottom-up or, with a negative height, top-down; every field not
/// asked for is 0.
BITMAPINFO dibInfo(int width, int height, int bitsPerPixel);

}  // namespace zyn
