#include "offscreen/JpegEncoder.h"

#include <algorithm>
#include <cstddef>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>

namespace zyn {
namespace {

constexpr int kLargestSide = 65535;

/// The pixels as the encoder takes them: red, green, blue from the top without padding.
std::vector<std::uint8_t> fromTheTop(const PixelView& picture) {
  std::vector<std::uint8_t> pixels(std::size_t{3} * static_cast<std::size_t>(picture.width) *
                                   static_cast<std::size_t>(picture.height));
  std::uint8_t* to = pixels.data();
  for (int y = picture.height - 1; y >= 0; --y) {
    for (int x = 0; x < picture.width; ++x, to += 3) {
      const Colour24 colour = colourAt(picture.row(y), x);
      to[0] = colour.red;
      to[1] = colour.green;
      to[2] = colour.blue;
    }
  }
  return pixels;
}

void append(void* file, void* data, int size) {
  const auto* const bytes = static_cast<const std::uint8_t*>(data);
  auto& written = *static_cast<std::vector<std::uint8_t>*>(file);
  written.insert(written.end(), bytes, bytes + size);
}

}  // namespace

std::vector<std::uint8_t> encodeJpeg(const PixelView& picture, int quality) {
  if (picture.width > kLargestSide || picture.height > kLargestSide) return {};
  std::vector<std::uint8_t> file;
  const std::vector<std::uint8_t> pixels = fromTheTop(picture);
  if (stbi_write_jpg_to_func(append, &file, picture.width, picture.height, 3, pixels.data(),
                             std::clamp(quality, 1, 100)) == 0) {
    return {};
  }
  return file;
}

}  // namespace zyn
