#include "trace/NearestPoint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::optional<TracePoint> nearest(const PointSequence& points, const Point& target) {
  return nearestPoint(points, RunBoxes(points), target);
}

struct Answer {
  std::size_t segment = 0;
  long double distance = std::numeric_limits<long double>::infinity();  ///< squared
};

using Wide = long double;

Wide squared(Wide dx, Wide dy, Wide dz) { return dx * dx + dy * dy + dz * dz; }

Wide distanceToSegment(const Point& a, const Point& b, const Point& p) {
  const Wide dx = Wide(b.x) - a.x;
  const Wide dy = Wide(b.y) - a.y;
  const Wide dz = Wide(b.z) - a.z;
  const Wide length = squared(dx, dy, dz);
  Wide t = length > 0
               ? ((Wide(p.x) - a.x) * dx + (Wide(p.y) - a.y) * dy + (Wide(p.z) - a.z) * dz) / length
               : 0;
  t = std::clamp<Wide>(t, 0, 1);
  return squared(a.x + t * dx - p.x, a.y + t * dy - p.y, a.z + t * dz - p.z);
}

/// Every segment and every point on its own, one after the other, in wider arithmetic.
Answer scan(const PointSequence& points, const Point& p) {
  Answer best;
  const auto consider = [&](std::size_t i, Wide distance) {
    if (distance < best.distance) {
      best = {i, distance};
    }
  };
  const auto isPoint = [&](std::size_t i) { return i < points.size() && !points.isGap(i); };
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (isPoint(i) && isPoint(i + 1)) {
      consider(i, distanceToSegment(points.at(i), points.at(i + 1), p));
    } else if (isPoint(i) && (i == 0 || !isPoint(i - 1))) {
      consider(i, distanceToSegment(points.at(i), points.at(i), p));
    }
  }
  return best;
}

Wide distanceOf(const TracePoint& found, const Point& p) {
  return squared(Wide(found.position.x) - p.x, Wide(found.position.y) - p.y,
                 Wide(found.position.z) - p.z);
}

TEST(NearestPointTest, NothingIsNearestWithoutPoints) {
  EXPECT_FALSE(nearest(PointSequence(), {0, 0, 0}));
  EXPECT_FALSE(nearest(PointSequence({kNaN, kInfinity}, {0, 0}), {0, 0, 0}));
}

TEST(NearestPointTest, NothingIsNearestToNowhere) {
  const PointSequence points({0, 1}, {0, 0});
  EXPECT_FALSE(nearest(points, {kNaN, 0, 0}));
  EXPECT_FALSE(nearest(points, {0, kInfinity, 0}));
  EXPECT_FALSE(nearest(points, {0, 0, -kInfinity}));
}

TEST(NearestPointTest, ASinglePointHasNoDirection) {
  const auto found = nearest(PointSequence({3}, {4}), {0, 0, 0});
  ASSERT_TRUE(found);
  EXPECT_EQ(found->parameter(), 0);
  EXPECT_EQ(found->position, Point(3, 4, 0));
  EXPECT_EQ(found->direction.norm(), 0);
}

TEST(NearestPointTest, TellsSegmentFractionAndDirection) {
  const PointSequence points({0, 4, 4}, {0, 0, 10}, {0, 0, 0});
  const auto onFirst = nearest(points, {1, -5, 7});
  EXPECT_EQ(onFirst->parameter(), 0.25);
  EXPECT_EQ(onFirst->position, Point(1, 0, 0));
  EXPECT_EQ(onFirst->direction.x, 1);
  const auto onSecond = nearest(points, {9, 7.5, 0});
  EXPECT_EQ(onSecond->parameter(), 1.75);
  EXPECT_EQ(onSecond->position, Point(4, 7.5, 0));
  EXPECT_EQ(onSecond->direction.y, 1);
  EXPECT_EQ(nearest(points, {4, 100, 0})->parameter(), 2);
  EXPECT_EQ(nearest(points, {4, 100, 0})->position, Point(4, 10, 0));
}

TEST(NearestPointTest, MeasuresInSpace) {
  const PointSequence points({0, 1, 1}, {0, 0, 0}, {0, 0, 8});
  const auto found = nearest(points, {1.5, 0, 6});
  EXPECT_EQ(found->parameter(), 1.75);
  EXPECT_EQ(found->position, Point(1, 0, 6));
  EXPECT_EQ(found->direction.z, 1);
}

TEST(NearestPointTest, AtACornerTheFirstSegmentAnswers) {
  const PointSequence points({0, 1, 2}, {0, 1, 0});
  const auto found = nearest(points, {1, 3, 0});
  EXPECT_EQ(found->segment, 0U);
  EXPECT_EQ(found->fraction, 1);
  EXPECT_EQ(found->parameter(), 1);
  EXPECT_GT(found->direction.y, 0);
}

TEST(NearestPointTest, OfSeveralEquallyNearPointsTheFirstIsTaken) {
  // The corners of a square again and again, all as near to its middle.
  const std::size_t count = 4000;
  std::vector<double> x(count);
  std::vector<double> y(count);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = i % 4 == 1 || i % 4 == 2 ? 1 : -1;
    y[i] = i % 4 >= 2 ? 1 : -1;
  }
  EXPECT_EQ(nearest(PointSequence(x, y), {0, 0, 0})->parameter(), 0.5);
  // The right side is first met by the second segment.
  EXPECT_EQ(nearest(PointSequence(x, y), {5, 0, 0})->parameter(), 1.5);
}

TEST(NearestPointTest, NothingConnectsTheSidesOfAGap) {
  const PointSequence points({0, 1, kNaN, 9, 10}, {0, 0, 0, 0, 0});
  EXPECT_EQ(nearest(points, {4, 0, 0})->position, Point(1, 0, 0));
  EXPECT_EQ(nearest(points, {4, 0, 0})->parameter(), 1);
  EXPECT_EQ(nearest(points, {6, 0, 0})->position, Point(9, 0, 0));
  EXPECT_EQ(nearest(points, {6, 0, 0})->parameter(), 3);
  EXPECT_EQ(nearest(points, {6, 0, 0})->direction.x, 1);
}

TEST(NearestPointTest, PointsBetweenGapsCount) {
  const PointSequence points({0, kNaN, 5, kNaN, 9}, {0, 0, 0, 0, 0});
  for (const std::size_t i : {0U, 2U, 4U}) {
    const auto found = nearest(points, {points.x(i) + 0.25, 1, 0});
    EXPECT_EQ(found->parameter(), static_cast<double>(i));
    EXPECT_EQ(found->direction.norm(), 0);
  }
}

TEST(NearestPointTest, InfinitePointsAreGaps) {
  const PointSequence points({0, 1, 2, 3}, {0, kInfinity, 0, 0});
  EXPECT_EQ(nearest(points, {1, 5, 0})->position, Point(0, 0, 0));
  EXPECT_EQ(nearest(points, {1.5, 5, 0})->parameter(), 2);
}

TEST(NearestPointTest, RepeatedPointsTakeTheDirectionOfTheirNeighbours) {
  const PointSequence points({0, 2, 2, 2, 5}, {0, 0, 0, 0, 0});
  const PointSequence end({0, 0, 0, 2, 2}, {0, 3, 3, 3, 3});
  const PointSequence same({1, 1, 1}, {1, 1, 1});
  EXPECT_EQ(nearest(points, {2, 1, 0})->direction.x, 1);
  EXPECT_EQ(nearest(PointSequence({2, 2, 2, 5}, {0, 0, 0, 0}), {0, 0, 0})->direction.x, 1);
  EXPECT_EQ(nearest(PointSequence({kNaN, 2, 2, 2, kNaN, 5}, {0, 0, 0, 0, 0, 0}), {2, 0, 0})
                ->direction.norm(),
            0);
  EXPECT_EQ(nearest(end, {9, 3, 0})->direction.x, 1);
  EXPECT_EQ(nearest(same, {0, 0, 0})->direction.norm(), 0);
}

TEST(NearestPointTest, CoordinatesNearTheLimitsOfDoublesAreMeasured) {
  const PointSequence huge({-1e308, 1e308}, {1e308, 1e308});
  const auto far = nearest(huge, {0, -1e308, 0});
  EXPECT_DOUBLE_EQ(far->parameter(), 0.5);
  EXPECT_EQ(far->position.y, 1e308);
  EXPECT_EQ(far->direction.x, 1);

  const PointSequence tiny({0, 4e-300, 4e-300}, {0, 0, 9e-300});
  const auto near = nearest(tiny, {1e-300, 1e-300, 0});
  EXPECT_DOUBLE_EQ(near->parameter(), 0.25);
  EXPECT_DOUBLE_EQ(near->position.x, 1e-300);
  EXPECT_EQ(nearest(tiny, {5e-300, 3e-300, 0})->segment, 1U);

  const PointSequence zero({0, 0}, {0, 0});
  EXPECT_EQ(nearest(zero, {0, 0, 0})->parameter(), 0);
  EXPECT_EQ(nearest(zero, {5e-324, 0, 0})->position, Point(0, 0, 0));
}

TEST(NearestPointTest, OnAGridTheAnswerIsThatOfAScan) {
  // Steps of whole numbers along one axis: no rounding, and many points at the same distance.
  std::mt19937 random(7);
  std::uniform_int_distribution<int> axis(0, 2);
  std::uniform_int_distribution<int> step(-1, 1);
  std::uniform_int_distribution<int> gap(0, 9);
  for (const bool withGaps : {false, true}) {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> z;
    int at[3] = {};
    for (int i = 0; i < 3000; ++i) {
      at[axis(random)] += step(random);
      x.push_back(withGaps && gap(random) < 2 ? kNaN : 16 * at[0]);
      y.push_back(16 * at[1]);
      z.push_back(withGaps && gap(random) == 9 ? kInfinity : 16 * at[2]);
    }
    const PointSequence points(x, y, z);
    const RunBoxes boxes(points);
    std::uniform_int_distribution<int> anywhere(-60, 60);
    for (int i = 0; i < 100; ++i) {
      const Point target(16 * anywhere(random), 16 * anywhere(random), 16 * anywhere(random));
      const auto found = nearestPoint(points, boxes, target);
      const Answer expected = scan(points, target);
      EXPECT_EQ(found->segment, expected.segment);
      EXPECT_EQ(distanceOf(*found, target), expected.distance);
    }
  }
}

TEST(NearestPointTest, NoPointOfATraceIsNearerThanTheAnswer) {
  std::mt19937 random(11);
  std::normal_distribution<double> normal;
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 8000; ++i) {
    x.push_back(i * 1e-3);
    y.push_back(i % 397 == 0 ? kNaN : std::sin(i * 2e-3) + 0.05 * normal(random));
  }
  const PointSequence points(x, y);
  const RunBoxes boxes(points);
  for (const double spread : {0.1, 3.0, 1e4}) {
    for (int i = 0; i < 30; ++i) {
      const Point target(10 + spread * normal(random), spread * normal(random), 0);
      const auto found = nearestPoint(points, boxes, target);
      const Answer expected = scan(points, target);
      const Wide distance = distanceOf(*found, target);
      EXPECT_NEAR(static_cast<double>(distance / expected.distance), 1, 1e-9);
    }
  }
}

TEST(NearestPointTest, FewBoxesAreLookedInto) {
  // Half a million points, a thousand questions: far too slow if each looked at all points.
  constexpr std::size_t kCount = 500000;
  std::vector<double> x(kCount);
  std::vector<double> y(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    const double t = static_cast<double>(i) * 2e-6;
    x[i] = t;
    y[i] = std::sin(2 * std::numbers::pi * t);
  }
  const PointSequence points(x, y);
  const RunBoxes boxes(points);
  for (int i = 0; i < 1000; ++i) {
    const double t = (i + 0.5) * 1e-3;
    const auto found =
        nearestPoint(points, boxes, {t, std::sin(2 * std::numbers::pi * t) + 1e-9, 0});
    EXPECT_NEAR(found->parameter(), t * 5e5, 1);
  }
}

}  // namespace
}  // namespace zyn
