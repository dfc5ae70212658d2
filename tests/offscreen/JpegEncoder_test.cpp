#include "offscreen/JpegEncoder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
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
    return &pixels_[std::ptrdiff_t{3} * (y * width + x)];
  }

  int width = 0;
  int height = 0;

 private:
  std::unique_ptr<stbi_uc[], void (*)(void*)> pixels_;
};

std::vector<std::uint8_t> encoded(int quality) {
  const std::vector<std::uint8_t> bytes = noise();
  return encodeJpeg({bytes.data(), kSide, kSide, 3 * kSide}, quality);
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
  const Decoded picture(encodeJpeg({bytes.data(), kSide, kSide, 3 * kSide}, 95));
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
  const Decoded picture(encodeJpeg({bytes.data(), kWidth, 8, kRowBytes}, 100));
  for (int x = 0; x < kWidth; ++x) EXPECT_NEAR(picture.at(x, 4)[1], 40, 2);
}

TEST(JpegEncoderTest, RefusesWhatTheFormatCannotHold) {
  const std::vector<std::uint8_t> row(std::size_t{3} * 65536);
  EXPECT_TRUE(encodeJpeg({row.data(), 65536, 1, 3 * 65536}, 50).empty());
  EXPECT_FALSE(encodeJpeg({row.data(), 65535, 1, 3 * 65536}, 50).empty());
}

}  // namespace
}  // namespace zyn
