#include "com/control/Extent.h"

#include <gtest/gtest.h>

#include <climits>

namespace zyn {
namespace {

TEST(Extent, AnInchIs2540Himetric) {
  EXPECT_EQ(himetricFromPixels(96, 96), 2540);
  EXPECT_EQ(pixelsFromHimetric(2540, 96), 96);
  EXPECT_EQ(pixelsFromHimetric(5080, 144), 288);
}

TEST(Extent, PixelsComeBackAtEveryResolution) {
  for (const int dpi : {72, 96, 120, 144, 168, 192, 288, 600, 2540}) {
    for (int pixels = -50; pixels < 5000; ++pixels) {
      ASSERT_EQ(pixelsFromHimetric(himetricFromPixels(pixels, dpi), dpi), pixels) << dpi;
    }
  }
}

TEST(Extent, RoundsToTheNearestAwayFromZero) {
  EXPECT_EQ(pixelsFromHimetric(13, 96), 0);  // 0.491
  EXPECT_EQ(pixelsFromHimetric(14, 96), 1);  // 0.529
  EXPECT_EQ(pixelsFromHimetric(-14, 96), -1);
  EXPECT_EQ(scaleRounded(1, 1, 2), 1);
  EXPECT_EQ(scaleRounded(-1, 1, 2), -1);
  EXPECT_EQ(scaleRounded(1, 1, 3), 0);
}

TEST(Extent, StaysWithinItsRange) {
  EXPECT_EQ(himetricFromPixels(INT_MAX, 96), INT_MAX);
  EXPECT_EQ(himetricFromPixels(INT_MIN, 96), INT_MIN);
  EXPECT_EQ(pixelsFromHimetric(INT_MAX, 96), 81164736);
}

}  // namespace
}  // namespace zyn
