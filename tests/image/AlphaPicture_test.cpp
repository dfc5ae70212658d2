#include "image/AlphaPicture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace zyn::test {
namespace {

/// What drawing a colour with this opacity leaves on a background.
std::vector<std::uint8_t> blended(const std::array<int, 3>& colour, double alpha, int background) {
  std::vector<std::uint8_t> bytes;
  for (const int component : colour) {
    bytes.push_back(
        static_cast<std::uint8_t>(std::lround(alpha * component + (1 - alpha) * background)));
  }
  return bytes;
}

AlphaPicture pictureOf(const std::vector<std::uint8_t>& onBlack,
                       const std::vector<std::uint8_t>& onWhite) {
  AlphaPicture picture(1, 1);
  picture.takeOnBlack({onBlack.data(), 1, 1, 4});
  picture.takeOnWhite({onWhite.data(), 1, 1, 4});
  return picture;
}

TEST(AlphaPictureTest, BackgroundIsTransparentAndTheRestOpaque) {
  const AlphaPicture nothing = pictureOf({0, 0, 0}, {255, 255, 255});
  EXPECT_EQ(nothing.row(0)[3], 0);
  const AlphaPicture opaque = pictureOf({10, 20, 30}, {10, 20, 30});
  EXPECT_EQ(opaque.row(0)[0], 10);
  EXPECT_EQ(opaque.row(0)[1], 20);
  EXPECT_EQ(opaque.row(0)[2], 30);
  EXPECT_EQ(opaque.row(0)[3], 255);
}

TEST(AlphaPictureTest, WhatIsInBetweenHasItsOwnColour) {
  const std::array<int, 3> colour = {200, 100, 0};
  for (const double alpha : {0.05, 0.25, 0.5, 0.9}) {
    const AlphaPicture picture = pictureOf(blended(colour, alpha, 0), blended(colour, alpha, 255));
    EXPECT_NEAR(picture.row(0)[3], 255 * alpha, 1.01);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(picture.row(0)[i], colour.at(i), 1 + 1 / alpha) << alpha;
    }
  }
}

// Shown on any background, it is what drawing there would have given.
TEST(AlphaPictureTest, OnABackgroundItIsWhatWouldHaveBeenDrawn) {
  const std::array<int, 3> colour = {250, 3, 77};
  for (int step = 0; step <= 50; ++step) {
    const double alpha = step / 50.0;
    const AlphaPicture picture = pictureOf(blended(colour, alpha, 0), blended(colour, alpha, 255));
    const double found = picture.row(0)[3] / 255.0;
    for (const int background : {0, 90, 255}) {
      const auto expected = blended(colour, alpha, background);
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(found * picture.row(0)[i] + (1 - found) * background, expected[i], 1.6);
      }
    }
  }
}

TEST(AlphaPictureTest, RowsMayBePadded) {
  const std::vector<std::uint8_t> black = {1, 2, 3, 0, 4, 5, 6, 0};
  AlphaPicture picture(1, 2);
  picture.takeOnBlack({black.data(), 1, 2, 4});
  picture.takeOnWhite({black.data(), 1, 2, 4});
  EXPECT_EQ(picture.row(0)[2], 3);
  EXPECT_EQ(picture.row(1)[0], 4);
  EXPECT_EQ(picture.rowBytes(), 4);
}

}  // namespace
}  // namespace zyn::test
