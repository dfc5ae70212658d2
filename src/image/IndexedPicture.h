#pragma once

#include <cstdint>
#include <vector>

#include "core/Dib.h"
#include "image/Palette.h"

namespace zyn {

/// A picture in at most 256 colours. One that has no more keeps its very colours; any other gets a
/// palette of its own, and the error of each pixel is spread over its neighbours (Floyd, Steinberg
/// 1976), so that gradients show no bands. The same picture always gives the same result.
class IndexedPicture {
 public:
  explicit IndexedPicture(const PixelView& picture);

  const Palette& palette() const { return palette_; }

  int width() const { return width_; }
  int height() const { return height_; }
  /// Bytes from one row to the next, a multiple of four.
  std::int64_t rowBytes() const { return rowBytes_; }
  /// Places in the palette, a byte a pixel; rows as those of the picture.
  const std::uint8_t* row(int y) const { return indices_.data() + rowBytes_ * y; }

 private:
  void mapExactly(const PixelView& picture);
  void mapSpreadingErrors(const PixelView& picture);
  std::uint8_t* row(int y) { return indices_.data() + rowBytes_ * y; }

  int width_;
  int height_;
  std::int64_t rowBytes_;
  Palette palette_;
  std::vector<std::uint8_t> indices_;
};

}  // namespace zyn
