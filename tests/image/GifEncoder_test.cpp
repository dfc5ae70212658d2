#include "image/GifEncoder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <vector>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_GIF
#include <stb_image.h>

namespace zyn {
namespace {

using ColourAt = std::function<Colour24(int x, int y)>;

/// A picture in memory, y from the bottom.
class Picture {
 public:
  Picture(int width, int height, const ColourAt& colour) : width_(width), height_(height) {
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const Colour24 wanted = colour(x, y);
        bytes_.insert(bytes_.end(), {wanted.blue, wanted.green, wanted.red});
      }
    }
  }
  PixelView view() const { return {bytes_.data(), width_, height_, std::int64_t{3} * width_}; }

 private:
  int width_;
  int height_;
  std::vector<std::uint8_t> bytes_;
};

std::vector<std::uint8_t> encoded(const Picture& picture) {
  std::vector<std::uint8_t> file;
  encodeGif(IndexedPicture(picture.view()), [&](std::span<const std::uint8_t> bytes) {
    file.insert(file.end(), bytes.begin(), bytes.end());
  });
  return file;
}

/// A GIF file as somebody else's decoder sees it, y from the bottom.
class Decoded {
 public:
  explicit Decoded(const std::vector<std::uint8_t>& file)
      : pixels_(stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width, &height,
                                      nullptr, 3),
                stbi_image_free) {}

  Colour24 at(int x, int y) const {
    const stbi_uc* const pixel = &pixels_[std::ptrdiff_t{3} * ((height - 1 - y) * width + x)];
    return {pixel[0], pixel[1], pixel[2]};
  }

  int width = 0;
  int height = 0;

 private:
  std::unique_ptr<stbi_uc[], void (*)(void*)> pixels_;
};

Colour24 colourOf(unsigned number) {
  return {static_cast<std::uint8_t>(number * 53), static_cast<std::uint8_t>(number * 101),
          static_cast<std::uint8_t>(number)};
}

/// Expects that so many colours, chosen pixel by pixel, come out as they went in.
void expectSame(int width, int height, const std::function<unsigned(int x, int y)>& colour) {
  const auto colourAt = [&](int x, int y) { return colourOf(colour(x, y)); };
  const Decoded decoded(encoded(Picture(width, height, colourAt)));
  ASSERT_EQ(decoded.width, width);
  ASSERT_EQ(decoded.height, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      ASSERT_EQ(decoded.at(x, y), colourAt(x, y)) << x << ", " << y;
    }
  }
}

// From a bit a pixel to eight: as long strings as there are, and hardly any, so that codes take all
// their widths and run out several times.
TEST(GifEncoderTest, AnyNumberOfColoursComesBack) {
  for (const unsigned colours : {1U, 2U, 3U, 4U, 5U, 16U, 17U, 128U, 255U, 256U}) {
    SCOPED_TRACE(colours);
    expectSame(203, 150, [&](int x, int y) { return static_cast<unsigned>(x + y) / 9 % colours; });
    std::uint32_t state = 1;
    std::vector<unsigned> noise(203 * 150);
    for (unsigned& each : noise) {
      state = state * 1664525U + 1013904223U;
      each = (state >> 16) % colours;
    }
    expectSame(203, 150,
               [&](int x, int y) { return noise[static_cast<std::size_t>(203 * y + x)]; });
  }
}

TEST(GifEncoderTest, ThinPicturesComeBack) {
  const auto colour = [](int x, int y) { return static_cast<unsigned>(x * y + x + y) % 7; };
  expectSame(1, 1, colour);
  expectSame(1, 3000, colour);
  expectSame(3000, 1, colour);
}

// The end falls on every place of the codes' widths and of the last block.
TEST(GifEncoderTest, PicturesOfAnyLengthEndWell) {
  const auto colour = [](int x, int) { return static_cast<unsigned>(x * x) % 256; };
  for (int width = 1; width < 1400; ++width) {
    ASSERT_NO_FATAL_FAILURE(expectSame(width, 1, colour)) << width;
  }
}

TEST(GifEncoderTest, WhatCannotBeWrittenIsTold) {
  const Picture picture(40, 40, [](int x, int) { return colourOf(static_cast<unsigned>(x)); });
  int pieces = 0;
  EXPECT_THROW(encodeGif(IndexedPicture(picture.view()),
                         [&](std::span<const std::uint8_t>) {
                           if (++pieces == 3) throw std::runtime_error("full");
                         }),
               std::runtime_error);
  EXPECT_EQ(pieces, 3);
}

}  // namespace
}  // namespace zyn
