#include "trace/WindowMapping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>

namespace zyn {
namespace {

using Matrix = std::array<double, 16>;

constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
/// Scales by (2, 4, 8), then moves by (1, -1, 0.5).
constexpr Matrix kScaledAndMoved = {2, 0, 0, 0, 0, 4, 0, 0, 0, 0, 8, 0, 1, -1, 0.5, 1};
/// A quarter turn about z: x to y, y to -x.
constexpr Matrix kTurned = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr std::array<int, 4> kViewport = {10, 20, 200, 100};

TEST(WindowMappingTest, MapsTheUnitCubeToTheViewport) {
  const auto mapping = windowMapping(kIdentity, kIdentity, kViewport);
  ASSERT_TRUE(mapping);
  EXPECT_EQ(mapping->x.at(-1, 0, 0), 10);
  EXPECT_EQ(mapping->x.at(1, 5, 5), 210);
  EXPECT_EQ(mapping->y.at(0, -1, 0), 20);
  EXPECT_EQ(mapping->y.at(5, 1, 5), 120);
  EXPECT_EQ(mapping->depth.at(0, 0, -1), 0);
  EXPECT_EQ(mapping->depth.at(0, 0, 1), 1);
}

TEST(WindowMappingTest, TheModelViewComesBeforeTheProjection) {
  const auto mapping = windowMapping(kScaledAndMoved, kTurned, kViewport);
  // (0.25, 0.5, 0) -> (1.5, 1, 0.5) -> (-1, 1.5, 0.5)
  EXPECT_EQ(mapping->x.at(0.25, 0.5, 0), 10);
  EXPECT_EQ(mapping->y.at(0.25, 0.5, 0), 145);
  EXPECT_EQ(mapping->depth.at(0.25, 0.5, 0), 0.75);
}

TEST(WindowMappingTest, AHomogeneousScaleIsDividedOut) {
  Matrix halved = kIdentity;
  halved[15] = 2;
  EXPECT_EQ(windowMapping(halved, kIdentity, kViewport)->x.at(2, 0, 0), 210);
}

TEST(WindowMappingTest, PerspectiveIsNoAffineMapping) {
  for (const std::size_t i : {3U, 7U, 11U}) {
    Matrix perspective = kIdentity;
    perspective[i] = 0.5;
    EXPECT_FALSE(windowMapping(kIdentity, perspective, kViewport)) << i;
    EXPECT_FALSE(windowMapping(perspective, kIdentity, kViewport)) << i;
  }
}

TEST(WindowMappingTest, MatricesThatMapNothingAreRefused) {
  Matrix flat = kIdentity;
  flat[15] = 0;
  EXPECT_FALSE(windowMapping(flat, kIdentity, kViewport));
  EXPECT_FALSE(windowMapping(kIdentity, Matrix{}, kViewport));
  Matrix broken = kIdentity;
  broken[5] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(windowMapping(broken, kIdentity, kViewport));
  broken[5] = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(windowMapping(kIdentity, broken, kViewport));
}

TEST(AffineFormTest, ItsBoundsInABoxAreThoseOfItsCorners) {
  const Box3 box{-1, 2, 3, 5, -7, -4};
  for (const double x : {-2.0, 0.0, 3.0}) {
    for (const double y : {-1.0, 2.0}) {
      for (const double z : {-5.0, 0.5}) {
        const AffineForm form{x, y, z, 1.5};
        double low = std::numeric_limits<double>::infinity();
        double high = -low;
        for (const double px : {box.xMin, box.xMax}) {
          for (const double py : {box.yMin, box.yMax}) {
            for (const double pz : {box.zMin, box.zMax}) {
              low = std::min(low, form.at(px, py, pz));
              high = std::max(high, form.at(px, py, pz));
            }
          }
        }
        EXPECT_EQ(form.lowest(box), low);
        EXPECT_EQ(form.highest(box), high);
        EXPECT_EQ((-form).highest(box), -low);
      }
    }
  }
}

}  // namespace
}  // namespace zyn
