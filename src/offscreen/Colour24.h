#pragma once

#include <cstddef>
#include <cstdint>

namespace zyn {

/// A colour of 8 bits a component.
struct Colour24 {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Colour24&) const = default;
};

/// Pixels as in a DIB section of 24 bits: rows of blue, green, red bytes, `rowBytes` apart.
struct PixelView {
  const std::uint8_t* bytes;
  int width;
  int height;
  std::int64_t rowBytes;

  const std::uint8_t* row(int y) const { return bytes + rowBytes * y; }
};

inline Colour24 colourAt(const std::uint8_t* row, int x) {
  const std::uint8_t* const pixel = row + std::ptrdiff_t{3} * x;
  return {pixel[2], pixel[1], pixel[0]};
}

}  // namespace zyn
