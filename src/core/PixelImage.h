#pragma once

#include <cstdint>
#include <vector>

namespace zyn {

/// A picture as OpenGL draws it: 4 bytes a pixel (red, green, blue, alpha), rows from the bottom
/// up, without gaps. Empty: no picture.
struct PixelImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  bool isEmpty() const { return pixels.empty(); }
};

/// A colour that a picture shows as fully transparent.
struct ColourKey {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
};

}  // namespace zyn
