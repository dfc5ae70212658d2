#include "trace/PathCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {
namespace {

PointSequence wave() {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 100000; ++i) {
    x.push_back(i * 0.02 - 500);
    y.push_back(50 + 40 * std::sin(i * 0.7) * std::sin(i * 0.0003));
  }
  return {x, y};
}

class PathCacheTest : public testing::Test {
 protected:
  /// A view of 200 x 100 pixels that has been moved.
  const PathCache::Entry& reduced(double moveX, double moveY = 0, double scale = 1) {
    const WindowMapping mapping = {{scale, 0, 0, moveX}, {0, scale, 0, moveY}, {0, 0, 0, 0}};
    return cache.reduced({points, boxes, mapping}, grid());
  }

  static PixelGrid grid() {
    PixelGrid pixels;
    pixels.right = 200;
    pixels.top = 100;
    pixels.depthStep = std::numeric_limits<double>::infinity();
    return pixels;
  }

  /// Of the entry for which the cache has the path of such a view.
  double placeOf(double moveX, double moveY = 0) {
    return reduced(moveX, moveY).mapping.x.constant;
  }

  PointSequence points = wave();
  RunBoxes boxes{points};
  PathCache cache;
};

TEST_F(PathCacheTest, TheSameViewIsReducedOnce) {
  const PathCache::Entry* first = &reduced(10.25);
  EXPECT_FALSE(first->path.points.empty());
  EXPECT_EQ(&reduced(10.25), first);
}

TEST_F(PathCacheTest, AfterAMovementWhatLiesAroundTheViewIsKnown) {
  placeOf(0);
  EXPECT_EQ(placeOf(10), 10);
  for (const double near : {1.0, 11.0, -100.0, 260.0, -246.0}) {
    EXPECT_EQ(placeOf(near), 10) << near;
  }
  EXPECT_EQ(placeOf(20, 256), 10);
  EXPECT_EQ(placeOf(20, 257), 20);
}

TEST_F(PathCacheTest, WhatComesIntoSightIsInThePath) {
  placeOf(0);
  placeOf(10);
  const PathCache::Entry& entry = reduced(200);
  ASSERT_EQ(entry.mapping.x.constant, 10);
  for (int column = -200; column < 0; ++column) {
    EXPECT_TRUE(std::any_of(entry.path.points.begin(), entry.path.points.end(), [&](std::size_t i) {
      return std::floor(points.x(i)) == column;
    })) << column;
  }
}

TEST_F(PathCacheTest, FractionsOfPixelsAreReducedAnew) {
  placeOf(0);
  placeOf(10);
  EXPECT_EQ(placeOf(10.5), 10.5);
  EXPECT_EQ(placeOf(10.01), 10.01);
  EXPECT_EQ(placeOf(11.0001), 10);
}

TEST_F(PathCacheTest, AnotherScaleOrPictureIsReducedAnew) {
  const PathCache::Entry* first = &reduced(0);
  EXPECT_NE(&reduced(0, 0, 2), first);
  PixelGrid wide = grid();
  wide.right = 300;
  const WindowMapping mapping = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}};
  EXPECT_NE(&cache.reduced({points, boxes, mapping}, wide), first);
  EXPECT_EQ(&reduced(0), first);
}

TEST_F(PathCacheTest, TheViewsUsedLastAreRemembered) {
  const PathCache::Entry* first = &reduced(0, 0, 1);
  const PathCache::Entry* second = &reduced(0, 0, 2);
  reduced(0, 0, 3);
  reduced(0, 0, 4);
  EXPECT_EQ(&reduced(0, 0, 1), first);
  EXPECT_EQ(&reduced(0, 0, 5), second);
  EXPECT_EQ(&reduced(0, 0, 1), first);
}

TEST_F(PathCacheTest, NothingIsLeftOnceCleared) {
  reduced(0);
  cache.clear();
  points = PointSequence({1, 2}, {3, 4});
  boxes = RunBoxes(points);
  EXPECT_EQ(reduced(0).path.points.size(), 2U);
}

}  // namespace
}  // namespace zyn
