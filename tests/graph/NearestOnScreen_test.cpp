#include "graph/NearestOnScreen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::optional<NearestOnScreen> nearest(const PointSequence& points, const PlanePoint& target,
                                       const PlanePoint& pixels = {1, 1}) {
  return nearestOnScreen(points, RunBoxes(points), target, pixels);
}

TEST(NearestOnScreenTest, NothingIsNearestWithoutPointsOrToNowhere) {
  EXPECT_FALSE(nearest(PointSequence(), {0, 0}));
  EXPECT_FALSE(nearest(PointSequence({kNaN, 1}, {0, kInfinity}), {0, 0}));
  EXPECT_FALSE(nearest(PointSequence({0, 1}, {0, 0}), {kNaN, 0}));
  EXPECT_FALSE(nearest(PointSequence({0, 1}, {0, 0}), {0, -kInfinity}));
}

TEST(NearestOnScreenTest, PointsCountNotTheLinesBetweenThem) {
  const PointSequence points({0, 10}, {0, 0});
  EXPECT_EQ(nearest(points, {4, 3})->index, 0U);
  EXPECT_EQ(nearest(points, {4, 3})->distance, 5);
  EXPECT_EQ(nearest(points, {6, 0})->index, 1U);
}

TEST(NearestOnScreenTest, TheScreenTellsWhichIsNearest) {
  const PointSequence points({0, 1}, {0, 100});
  EXPECT_EQ(nearest(points, {0, 90})->index, 1U);
  const auto found = nearest(points, {0, 90}, {400, -0.1});
  EXPECT_EQ(found->index, 0U);
  EXPECT_DOUBLE_EQ(found->distance, 9);
}

TEST(NearestOnScreenTest, OfPointsThatAreAsNearTheOldestIsTaken) {
  std::vector<double> x;
  for (int i = 0; i < 5000; ++i) x.push_back(i % 2 ? 1 : -1);
  const PointSequence points(x, std::vector<double>(x.size(), 7));
  EXPECT_EQ(nearest(points, {0, 0})->index, 0U);
  EXPECT_EQ(nearest(points, {9, 7})->index, 1U);
}

TEST(NearestOnScreenTest, ValuesOfAnySizeAreMeasured) {
  const PointSequence huge({-1.7e308, 1.7e308}, {0, 0});
  EXPECT_EQ(nearest(huge, {1.6e308, 0}, {1e-306, 1})->index, 1U);
  EXPECT_NEAR(nearest(huge, {1.6e308, 0}, {1e-306, 1})->distance, 10, 1e-9);
  const PointSequence small({1e-300, 2e-300}, {0, 0});
  EXPECT_EQ(nearest(small, {1.9e-300, 0}, {1e302, 1})->index, 1U);
  const PointSequence dates({45000 + 1e-9, 45000 + 2e-9}, {0, 0});
  EXPECT_EQ(nearest(dates, {45000, 0}, {1e12, 1})->index, 0U);
}

TEST(NearestOnScreenTest, TheAnswerIsThatOfAScan) {
  std::mt19937 random(5);
  std::normal_distribution<double> normal;
  for (int round = 0; round < 40; ++round) {
    const std::size_t count = 1 + random() % 6000;
    const std::size_t dropped = random() % count;
    const bool isWhole = round % 2 == 0;  // whole numbers: many as near as each other
    std::vector<double> x(count);
    std::vector<double> y(count);
    for (std::size_t i = 0; i < count; ++i) {
      x[i] = isWhole ? std::round(20 * normal(random)) : static_cast<double>(i);
      y[i] = isWhole ? std::round(20 * normal(random)) : 50 * normal(random);
      if (random() % 30 == 0) (random() % 2 ? x : y)[i] = random() % 2 ? kNaN : kInfinity;
    }
    PointSequence points(x, y);
    points.dropBefore(dropped);
    const RunBoxes boxes(points);
    for (int i = 0; i < 30; ++i) {
      const PlanePoint target{std::round(30 * normal(random)), std::round(30 * normal(random))};
      const PlanePoint pixels{isWhole ? 2 : 0.01, isWhole ? 1.0 : 3.0};
      double best = kInfinity;
      std::size_t index = 0;
      for (std::size_t k = dropped; k < count; ++k) {
        const double distance =
            std::hypot((x[k] - target.x) * pixels.x, (y[k] - target.y) * pixels.y);
        if (distance < best) {
          best = distance;
          index = k;
        }
      }
      const auto found = nearestOnScreen(points, boxes, target, pixels);
      ASSERT_EQ(found.has_value(), best < kInfinity);
      if (found) {
        EXPECT_NEAR(found->distance, best, 1e-9);
        if (isWhole) {
          EXPECT_EQ(found->index, index);
        }
      }
    }
  }
}

}  // namespace
}  // namespace zyn
