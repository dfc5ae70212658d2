#include "viewer/Icon.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(IconTest, AnAreaFillsWhatItsPathSurrounds) {
  const auto pixels = drawIcon("white M 0 0 L 10 0 L 10 20 L 0 20 Z", 4);
  for (std::size_t row = 0; row < 4; ++row) {
    EXPECT_EQ(pixels[4 * row], 0xFFFFFFFF);
    EXPECT_EQ(pixels[4 * row + 1], 0xFFFFFFFF);
    EXPECT_EQ(pixels[4 * row + 2], 0U);
    EXPECT_EQ(pixels[4 * row + 3], 0U);
  }
}

TEST(IconTest, EdgesAreCoveredInPart) {
  const auto pixels = drawIcon("white M 0 0 L 5 0 L 5 20 L 0 20 Z", 2);
  EXPECT_EQ(pixels[0] >> 24, 0x80U);
  EXPECT_EQ(pixels[0] & 0xFFFFFF, 0xFFFFFFU) << "colours are not premultiplied";
  EXPECT_EQ(pixels[1], 0U);
}

TEST(IconTest, ALineIsOnePixelWideAtLeast) {
  const auto pixels = drawIcon("line M 0 10 L 20 10", 5);
  for (std::size_t column = 0; column < 5; ++column) {
    EXPECT_EQ(pixels[2 * 5 + column] >> 24, 0xFFU);
    EXPECT_EQ(pixels[column] >> 24, 0U);
  }
}

TEST(IconTest, AnArcBeginsAPathThatLinesContinue) {
  const auto pixels = drawIcon("line A 10 10 10 -90 90", 21);
  const auto opacity = [&](std::size_t x, std::size_t y) { return pixels[21 * y + x] >> 24; };
  EXPECT_GT(opacity(20, 10), 100U);
  EXPECT_GT(opacity(10, 0), 100U);
  EXPECT_EQ(opacity(0, 10), 0U);
  EXPECT_EQ(opacity(10, 10), 0U);
}

TEST(IconTest, LayersCoverThoseBeforeThem) {
  const auto pixels =
      drawIcon("white M 0 0 L 20 0 L 20 20 L 0 20 Z deep M 0 0 L 20 0 L 20 20 L 0 20 Z", 3);
  EXPECT_EQ(pixels[4] >> 24, 0xFFU);
  EXPECT_NE(pixels[4] & 0xFFFFFF, 0xFFFFFFU);
}

}  // namespace
}  // namespace zyn::viewer
