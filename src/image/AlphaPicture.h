#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/Dib.h"

namespace zyn {

/// A picture whose background is transparent, found out by drawing it on black and on white: what
/// is the same on both is opaque, what differs as they do is not there, and the rest is in between.
/// Nothing is asked of OpenGL or of the objects: a pixel format with alpha is not needed, and edges
/// that were smoothed have the colour of what they belong to.
class AlphaPicture {
 public:
  AlphaPicture(int width, int height);

  /// Takes the pixels on black, then those on white, of pictures of this size.
  void takeOnBlack(const PixelView& picture);
  void takeOnWhite(const PixelView& picture);

  int width() const { return width_; }
  int height() const { return height_; }
  std::int64_t rowBytes() const { return std::int64_t{4} * width_; }

  /// Rows from the bottom of blue, green, red, alpha; colours as they are, not multiplied by alpha.
  const std::uint8_t* row(int y) const { return bytes_.data() + rowBytes() * y; }

 private:
  int width_;
  int height_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace zyn
