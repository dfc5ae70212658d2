#include "graph/SeriesShapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// One unit is one pixel.
constexpr WindowMapping kPixels = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}};

/// A picture of 200 x 100 pixels.
PixelGrid picture() {
  PixelGrid grid;
  grid.right = 200;
  grid.top = 100;
  grid.depthStep = kInfinity;
  grid.isThin = true;
  return grid;
}

struct Values {
  std::vector<double> x;
  std::vector<double> y;
  PointSequence points() const { return {x, y}; }
};

enum class Shape { kNoise, kFlat, kSlow, kBack, kGaps };

Values valuesOf(Shape shape, std::size_t count) {
  std::mt19937 random(2);
  std::normal_distribution<double> normal;
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(count);
    double x = 220 * t - 10;
    double y = 50 + 15 * normal(random);
    if (shape == Shape::kFlat) y = 30.25;
    if (shape == Shape::kSlow) y = 50 + 60 * std::sin(20 * t);
    if (shape == Shape::kBack) x = 100 + 90 * std::sin(30 * t);
    if (shape == Shape::kGaps && random() % 50 == 0) y = random() % 2 ? kNaN : kInfinity;
    values.x.push_back(x);
    values.y.push_back(y);
  }
  return values;
}

constexpr Shape kShapes[] = {Shape::kNoise, Shape::kFlat, Shape::kSlow, Shape::kBack, Shape::kGaps};
constexpr std::size_t kCounts[] = {1, 2, 100, 3000, 100000};

using Columns = std::map<double, Range>;

void unite(Columns& columns, double column, double low, double high) {
  const auto [at, isNew] = columns.try_emplace(column, Range{low, high});
  if (!isNew) at->second = {std::min(at->second.low, low), std::max(at->second.high, high)};
}

/// What lines that are level or upright cover of each column, as far as it can be seen.
Columns coveredBy(const std::vector<PlanePoint>& points, const std::vector<std::size_t>& starts) {
  Columns columns;
  for (std::size_t line = 0; line < starts.size(); ++line) {
    const std::size_t end = line + 1 < starts.size() ? starts[line + 1] : points.size();
    for (std::size_t i = starts[line]; i + 1 < end; ++i) {
      const auto [left, right] = std::minmax(points[i].x, points[i + 1].x);
      const auto [low, high] = std::minmax(points[i].y, points[i + 1].y);
      EXPECT_TRUE(left == right || low == high);
      for (double x = std::max(std::floor(left), 1.0); x <= std::min(right, 198.0); ++x) {
        unite(columns, x, std::clamp(low, 0.0, 100.0), std::clamp(high, 0.0, 100.0));
      }
    }
  }
  return columns;
}

TEST(SeriesShapesTest, StepsHoldTheLeftValue) {
  const PointSequence points({10, 20, 30, kNaN, 50}, {5, 8, 2, 0, 7});
  const RunBoxes boxes(points);
  const PixelLines steps = stepsOf(reducePath({points, boxes, kPixels, true}, picture()), kPixels);
  const std::vector<PlanePoint> expected = {{10, 5}, {20, 5}, {20, 8}, {30, 8}, {30, 2}, {50, 7}};
  ASSERT_EQ(steps.points.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(steps.points[i].x, expected[i].x);
    EXPECT_EQ(steps.points[i].y, expected[i].y);
  }
  EXPECT_EQ(steps.starts, (std::vector<std::size_t>{0, 5}));
}

TEST(SeriesShapesTest, StepsCoverWhatStepsThroughAllPointsDo) {
  for (const Shape shape : kShapes) {
    for (const std::size_t count : kCounts) {
      const PointSequence points = valuesOf(shape, count).points();
      const RunBoxes boxes(points);
      const PixelLines all = stepsOf(wholePath(points), kPixels);
      const PixelLines few =
          stepsOf(reducePath({points, boxes, kPixels, true}, picture()), kPixels);
      if (count == 100000 && shape != Shape::kGaps) {
        EXPECT_LT(few.points.size(), all.points.size() / 4);
      }
      const Columns expected = coveredBy(all.points, all.starts);
      const Columns found = coveredBy(few.points, few.starts);
      ASSERT_EQ(found.size(), expected.size());
      for (const auto& [column, range] : expected) {  // to one row: all points of a run lie in it
        EXPECT_NEAR(found.at(column).low, range.low, 1) << column;
        EXPECT_NEAR(found.at(column).high, range.high, 1) << column;
      }
    }
  }
}

TEST(SeriesShapesTest, AnAreaHasAPointWhereItCrossesItsBase) {
  const PixelLines lines{{{0, 10}, {10, 30}, {20, 20}, {30, 0}, {40, 5}}, {0, 4}};
  const PixelLines area = areaOf(lines, 20);
  ASSERT_EQ(area.points.size(), 6U);
  EXPECT_EQ(area.points[1].x, 5);
  EXPECT_EQ(area.points[1].y, 20);
  EXPECT_EQ(area.starts, (std::vector<std::size_t>{0, 5}));
}

TEST(SeriesShapesTest, EachPieceOfAnAreaLiesOnOneSideOfItsBaseAndOnItsLine) {
  for (const Shape shape : kShapes) {
    const PointSequence points = valuesOf(shape, 3000).points();
    const RunBoxes boxes(points);
    const PixelLines lines =
        linesOf(reducePath({points, boxes, kPixels, true}, picture()), kPixels);
    const PixelLines area = areaOf(lines, 48);
    std::size_t line = 0;
    for (std::size_t i = 0; i < area.points.size(); ++i) {
      const bool begins = std::find(area.starts.begin(), area.starts.end(), i) != area.starts.end();
      if (i > 0 && !begins) {
        EXPECT_GE((area.points[i - 1].y - 48) * (area.points[i].y - 48), 0);
      }
      if (line < lines.points.size() && area.points[i].x == lines.points[line].x &&
          area.points[i].y == lines.points[line].y) {
        ++line;
      } else {
        EXPECT_EQ(area.points[i].y, 48);
      }
    }
    EXPECT_EQ(line, lines.points.size());
  }
}

/// What bars cover of each column of pixels whose middle they hold.
Columns coveredBy(const std::vector<PixelBar>& bars) {
  Columns columns;
  for (const PixelBar& bar : bars) {
    for (double x = std::max(std::ceil(bar.left - 0.5), 0.0); x + 0.5 < bar.right && x < 200; ++x) {
      unite(columns, x, bar.low, bar.high);
    }
  }
  return columns;
}

TEST(SeriesShapesTest, BarsStandAroundTheirPointsOnTheBase) {
  const PointSequence points({10, 30, 50, kNaN, 900}, {5, 40, 20, 1, 9});
  const std::vector<PixelBar> bars =
      barsOf({points, RunBoxes(points), kPixels}, picture(), {.width = 8, .shift = 2, .base = 20});
  ASSERT_EQ(bars.size(), 3U);
  EXPECT_EQ(bars[0].left, 8);
  EXPECT_EQ(bars[0].right, 16);
  EXPECT_EQ(bars[0].low, 5);
  EXPECT_EQ(bars[0].high, 20);
  EXPECT_EQ(bars[1].low, 20);
  EXPECT_EQ(bars[1].high, 40);
}

TEST(SeriesShapesTest, ABarIsAtLeastOnePixelWide) {
  const PointSequence points({10.25}, {5});
  const auto bars = barsOf({points, RunBoxes(points), kPixels}, picture(), {.width = 1e-9});
  ASSERT_EQ(bars.size(), 1U);
  EXPECT_EQ(bars[0].right - bars[0].left, 1);
  EXPECT_EQ(bars[0].left + bars[0].right, 20.5);
}

TEST(SeriesShapesTest, ManyBarsAreOneAColumnThatCoversThemAll) {
  for (const Shape shape : kShapes) {
    const Values values = valuesOf(shape, 100000);
    const PointSequence points = values.points();
    const RunBoxes boxes(points);
    for (const double width : {0.0, 1.0, 7.0}) {
      const auto bars = barsOf({points, boxes, kPixels}, picture(), {.width = width, .base = 40});
      EXPECT_LT(bars.size(), 220U);
      std::vector<PixelBar> all;
      const double half = std::max(width, 1.0) / 2;
      for (std::size_t i = 0; i < values.x.size(); ++i) {
        if (!points.isGap(i) && values.x[i] >= -half && values.x[i] <= 200 + half) {
          const double middle = std::floor(values.x[i]) + 0.5;
          const double y = std::clamp(values.y[i], 0.0, 100.0);
          all.push_back({middle - half, middle + half, std::min(40.0, y), std::max(40.0, y)});
        }
      }
      const Columns expected = coveredBy(all);
      const Columns found = coveredBy(bars);
      ASSERT_EQ(found.size(), expected.size());
      for (const auto& [column, range] : expected) {
        EXPECT_EQ(found.at(column).low, range.low) << column;
        EXPECT_EQ(found.at(column).high, range.high) << column;
      }
    }
  }
}

TEST(SeriesShapesTest, OfMarkersInOnePixelTheFirstIsDrawn) {
  for (const Shape shape : kShapes) {
    for (const std::size_t count : kCounts) {
      const PointSequence points = valuesOf(shape, count).points();
      std::set<std::pair<double, double>> pixels;
      std::vector<std::size_t> expected;
      for (std::size_t i = 0; i < count; ++i) {
        const double x = std::floor(points.x(i));
        const double y = std::floor(points.y(i));
        const bool isSeen = x >= 0 && x <= 200 && y >= 0 && y <= 100;
        if (isSeen && pixels.insert({x, y}).second) expected.push_back(i);
      }
      EXPECT_EQ(markersOf({points, RunBoxes(points), kPixels}, picture()), expected);
    }
  }
}

TEST(SeriesShapesTest, BarsAndMarkersOfManyPointsLookAtFew) {
  const Values values = valuesOf(Shape::kNoise, 1000000);
  const PointSequence points = values.points();
  const RunBoxes boxes(points);
  PointSequence::reads = 0;
  barsOf({points, boxes, kPixels}, picture(), {.width = 0.1});
  EXPECT_LT(PointSequence::reads, points.size() / 20);
  PointSequence::reads = 0;
  markersOf({points, boxes, kPixels}, picture());
  EXPECT_LT(PointSequence::reads, points.size());  // several times each
}

TEST(SeriesShapesTest, PointsVeryFarAwayAreBeyondThePicture) {
  const PointSequence points({-1e308, 50, 1e308}, {1e308, 30, -1e308});
  const RunBoxes boxes(points);
  const WindowMapping mapping = {{1e5, 0, 0, -4999900}, {0, 1, 0, 0}, {0, 0, 0, 0}};
  EXPECT_EQ(markersOf({points, boxes, mapping}, picture()), (std::vector<std::size_t>{1}));
  EXPECT_EQ(barsOf({points, boxes, mapping}, picture(), {.width = 1e-5}).size(), 1U);
}

TEST(SeriesShapesTest, HeldLinesAreTheSameWithinTheBox) {
  const PixelBox box{0, 100, 0, 50};
  const PixelLines held =
      heldIn({{{10, 10}, {20, 40}, {150, 105}, {200, 10}, {50, 10}}, {0, 2}}, box);
  EXPECT_EQ(held.starts, (std::vector<std::size_t>{0, 2}));
  for (const PlanePoint& point : held.points) {
    EXPECT_TRUE(box.holds(point.x, point.y));
  }
  EXPECT_EQ(held.points.front().x, 10);
  EXPECT_EQ(held.points[1].y, 40);
  EXPECT_EQ(held.points.back().x, 50);
}

/// Where they leave it and come back they do so where they did.
TEST(SeriesShapesTest, HeldLinesCrossTheEdgesWhereTheyDid) {
  const PixelBox box{0, 100, 0, 50};
  const PixelLines held = heldIn({{{-100, -50}, {300, 150}}, {0}}, box);
  ASSERT_EQ(held.points.size(), 6U);
  EXPECT_EQ(held.points[1].x, 0);
  EXPECT_EQ(held.points[1].y, 0);
  EXPECT_EQ(held.points[4].x, 100);
  EXPECT_EQ(held.points[4].y, 50);
  const double infinity = std::numeric_limits<double>::infinity();
  for (const PlanePoint& point : heldIn({{{-infinity, 1}, {infinity, 1e308}}, {0}}, box).points) {
    EXPECT_TRUE(box.holds(point.x, point.y));
  }
}

}  // namespace
}  // namespace zyn
