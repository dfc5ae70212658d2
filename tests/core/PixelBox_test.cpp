#include "core/PixelBox.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zyn::test {
namespace {

constexpr zyn::PixelBox kBox{10, 30, 5, 9};

TEST(PixelBoxTest, HasASize) {
  EXPECT_EQ(kBox.width(), 20);
  EXPECT_EQ(kBox.height(), 4);
  EXPECT_EQ(kBox.shrunk(1), (zyn::PixelBox{11, 29, 6, 8}));
}

TEST(PixelBoxTest, IsEmptyWithoutPixels) {
  EXPECT_FALSE(kBox.isEmpty());
  EXPECT_TRUE(zyn::PixelBox{}.isEmpty());
  EXPECT_TRUE(kBox.shrunk(2).isEmpty());
  EXPECT_TRUE((zyn::PixelBox{0, 1, 0, std::nan("")}.isEmpty()));
}

TEST(PixelBoxTest, HoldsPointsOnItsEdgesAndNoneIfEmpty) {
  EXPECT_TRUE(kBox.holds(10, 5));
  EXPECT_TRUE(kBox.holds(30, 9));
  EXPECT_FALSE(kBox.holds(30.5, 9));
  EXPECT_FALSE(kBox.holds(10, 4.5));
  EXPECT_FALSE(zyn::PixelBox{}.holds(0, 0));
}

TEST(PixelBoxTest, HoldsAndOverlapsOthers) {
  EXPECT_TRUE(kBox.holds(kBox));
  EXPECT_TRUE(kBox.holds(zyn::PixelBox{11, 12, 5, 6}));
  EXPECT_FALSE(kBox.holds(zyn::PixelBox{11, 31, 5, 6}));
  EXPECT_TRUE(kBox.overlaps(zyn::PixelBox{29, 40, 0, 6}));
  EXPECT_FALSE(kBox.overlaps(zyn::PixelBox{30, 40, 0, 6}));
  EXPECT_FALSE(kBox.overlaps(zyn::PixelBox{29, 40, 9, 12}));
}

}  // namespace
}  // namespace zyn::test
