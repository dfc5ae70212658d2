#include "image/JpegEncoder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_JPEG
#include <stb_image.h>

namespace zyn {
namespace {

constexpr int kSide = 64;

/// A noisy picture, which the qualities compress very differently.
std::vector<std::uint8_t> noise() {
  std::vector<std::uint8_t> bytes(std::size_t{3} * kSide * kSide);
  std::uint32_t state = 1;
  for (std::uint8_t& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  return bytes;
}

/// A JPEG file as somebody else's decoder sees it: rows from the top, red, green, blue.
class Decoded {
 public:
  explicit Decoded(const std::vector<std::uint8_t>& file)
      : pixels_(stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width, &height,
                                      nullptr, 3),
                stbi_image_free) {}

  const std::uint8_t* at(int x, int y) const {
    return pixels_.get() + std::ptrdiff_t{3} * (y * width + x);
  }

  int width = 0;
  int height = 0;

 private:
  std::unique_ptr<stbi_uc[], void (*)(void*)> pixels_;
};

std::vector<std::uint8_t> encoded(const PixelView& picture, int quality) {
  std::vector<std::uint8_t> file;
  encodeJpeg(picture, quality, {}, [&](std::span<const std::uint8_t> bytes) {
    file.insert(file.end(), bytes.begin(), bytes.end());
  });
  return file;
}

std::vector<std::uint8_t> encoded(int quality) {
  const std::vector<std::uint8_t> bytes = noise();
  return encoded({bytes.data(), kSide, kSide, 3 * kSide}, quality);
}

TEST(JpegEncoderTest, QualityDecidesTheSize) {
  EXPECT_GT(encoded(100).size(), 3 * encoded(10).size());
}

TEST(JpegEncoderTest, QualityIsHeldWithinItsRange) {
  EXPECT_EQ(encoded(150), encoded(100));
  EXPECT_EQ(encoded(0), encoded(1));
  EXPECT_EQ(encoded(-5), encoded(1));
}

TEST(JpegEncoderTest, ColoursAndRowsComeBackInPlace) {
  // In blue, green, red order from the bottom: the lower half red, the upper half blue.
  std::vector<std::uint8_t> bytes(std::size_t{3} * kSide * kSide);
  for (std::size_t i = 0; i < bytes.size(); i += 3) bytes[i < bytes.size() / 2 ? i + 2 : i] = 255;
  const Decoded picture(encoded({bytes.data(), kSide, kSide, 3 * kSide}, 95));
  ASSERT_EQ(picture.width, kSide);
  ASSERT_EQ(picture.height, kSide);
  EXPECT_GT(picture.at(5, 5)[2], 240) << "blue above";
  EXPECT_LT(picture.at(5, 5)[0], 15);
  EXPECT_GT(picture.at(60, 60)[0], 240) << "red below";
  EXPECT_LT(picture.at(60, 60)[2], 15);
}

TEST(JpegEncoderTest, PaddedRowsAreReadByTheirLength) {
  constexpr int kWidth = 33;
  constexpr int kRowBytes = 100;
  std::vector<std::uint8_t> bytes(kRowBytes * 8, 0xFF);
  for (int y = 0; y < 8; ++y) {
    for (int i = 0; i < 3 * kWidth; ++i) bytes[static_cast<std::size_t>(kRowBytes * y + i)] = 40;
  }
  const Decoded picture(encoded({bytes.data(), kWidth, 8, kRowBytes}, 100));
  for (int x = 0; x < kWidth; ++x) EXPECT_NEAR(picture.at(x, 4)[1], 40, 2);
}

TEST(JpegEncoderTest, ThePictureMayBeAsWideAsTheFormatAllows) {
  const std::vector<std::uint8_t> row(std::size_t{3} * 65536);
  EXPECT_EQ(Decoded(encoded({row.data(), 65535, 1, 3 * 65536}, 50)).width, 65535);
}

// Strips are compressed one by one: none is out of place or of another colour, however many there
// are, whole or not.
TEST(JpegEncoderTest, StripsJoinWithoutATrace) {
  for (const auto& [width, height] : {std::pair{1, 1}, {17, 16}, {40, 17}, {33, 200}, {64, 328}}) {
    const auto rowBytes = static_cast<std::size_t>((3 * width + 3) / 4 * 4);
    std::vector<std::uint8_t> bytes(rowBytes * static_cast<std::size_t>(height));
    const auto colour = [&](int x, int y) { return std::array{2 * x, y / 2, 255 - y / 2}; };
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const auto [red, green, blue] = colour(x, height - 1 - y);
        std::uint8_t* const pixel = &bytes[rowBytes * static_cast<std::size_t>(y) +
                                           std::size_t{3} * static_cast<std::size_t>(x)];
        pixel[0] = static_cast<std::uint8_t>(blue);
        pixel[1] = static_cast<std::uint8_t>(green);
        pixel[2] = static_cast<std::uint8_t>(red);
      }
    }
    for (const int quality : {90, 95}) {  // with colours at half the size, and at full size
      const PixelView picture{bytes.data(), width, height, static_cast<std::int64_t>(rowBytes)};
      const Decoded shown(encoded(picture, quality));
      ASSERT_EQ(shown.width, width);
      ASSERT_EQ(shown.height, height);
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_NEAR(shown.at(x, y)[c], colour(x, y)[c], 12)
                << x << ", " << y << " of " << width << " x " << height << ", " << quality;
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace zyn
