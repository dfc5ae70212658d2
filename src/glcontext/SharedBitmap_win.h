#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "core/Dib.h"
#include "platform/WinHandles_win.h"

namespace zyn {

/// A bottom-up DIB section of 24 bits a pixel that can be given away and yet goes on being drawn.
///
/// Its pixels lie in a file mapping that this object owns, so they stay valid whatever becomes of a
/// bitmap that was given away; every bitmap over the mapping shows the same pixels.
class SharedBitmap {
 public:
  /// Nothing if the size satisfies no bitmap file or the memory cannot be had.
  static std::optional<SharedBitmap> make(std::int64_t width, std::int64_t height);

  int width() const { return width_; }
  int height() const { return height_; }

  /// Bytes of a row, padding included.
  std::int64_t rowBytes() const;

  /// First byte of the lowest row. The padding of the rows is 0 unless a foreign owner wrote there.
  std::uint8_t* pixels() const { return static_cast<std::uint8_t*>(view_.get()); }
  PixelView view() const { return {pixels(), width_, height_, rowBytes()}; }

  /// The DIB section over the pixels; it stays this object's. Null if it could not be replaced
  /// after it was given away.
  HBITMAP bitmap() const { return bitmap_.get(); }

  /// Gives the DIB section away and makes itself another one over the same pixels.
  UniqueBitmap giveBitmap();

 private:
  SharedBitmap(int width, int height, UniqueKernelHandle mapping, UniqueView view);
  UniqueBitmap makeBitmap() const;

  int width_;
  int height_;
  UniqueKernelHandle mapping_;
  UniqueView view_;
  UniqueBitmap bitmap_;
};

}  // namespace zyn
