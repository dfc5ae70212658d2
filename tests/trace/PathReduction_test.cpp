#include "trace/PathReduction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// One unit is one pixel; z is the depth.
constexpr WindowMapping kPixels = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};

/// A picture of 200 x 100 pixels in which depth does not matter.
PixelGrid grid() {
  PixelGrid pixels;
  pixels.left = -2;
  pixels.right = 202;
  pixels.bottom = -2;
  pixels.top = 102;
  pixels.depthStep = kInfinity;
  return pixels;
}

ReducedPath reduced(const PointSequence& points, const PixelGrid& pixels = grid()) {
  return reducePath({points, RunBoxes(points), kPixels}, pixels);
}

using Indices = std::vector<std::size_t>;

Indices upTo(std::size_t count) {
  Indices all(count);
  for (std::size_t i = 0; i < count; ++i) {
    all[i] = i;
  }
  return all;
}

/// `count` points across the picture from left to right, 50 plus noise high.
PointSequence noise(std::size_t count, double amplitude) {
  std::mt19937 random(5);
  std::normal_distribution<double> normal;
  std::vector<double> x(count);
  std::vector<double> y(count);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = 200.0 * static_cast<double>(i) / static_cast<double>(count);
    y[i] = 50 + amplitude * normal(random);
  }
  return {x, y};
}

struct Extent {
  double low = kInfinity;
  double high = -kInfinity;
  bool operator==(const Extent&) const = default;
};

std::map<double, Extent> heightsByColumn(const PointSequence& points, const Indices& chosen) {
  std::map<double, Extent> heights;
  for (const std::size_t i : chosen) {
    Extent& extent = heights[grid().column(points.x(i)).middle];
    extent = {std::min(extent.low, points.y(i)), std::max(extent.high, points.y(i))};
  }
  return heights;
}

TEST(PathReductionTest, NothingIsLeftOfNothing) {
  EXPECT_TRUE(reduced(PointSequence()).points.empty());
  const ReducedPath gaps = reduced(PointSequence({kNaN, kNaN}, {1, kInfinity}));
  EXPECT_TRUE(gaps.points.empty());
  EXPECT_TRUE(gaps.starts.empty());
}

TEST(PathReductionTest, FewPointsStayAsTheyAre) {
  for (const std::size_t count : {1U, 2U, 16U, 17U, 500U, 4000U}) {
    const ReducedPath path = reduced(noise(count, 20));
    EXPECT_EQ(path.points, upTo(count));
    EXPECT_EQ(path.starts, Indices{0});
  }
}

TEST(PathReductionTest, ManyPointsAreReducedToWhatTheColumnsShow) {
  for (const std::size_t count : {50000U, 200000U, 800000U}) {
    const PointSequence points = noise(count, 20);
    const ReducedPath path = reduced(points);
    EXPECT_LT(path.points.size(), 200U * 50);
    EXPECT_EQ(path.points.front(), 0U);
    EXPECT_EQ(path.points.back(), count - 1);
    EXPECT_TRUE(std::is_sorted(path.points.begin(), path.points.end(), std::less_equal<>()));
    EXPECT_EQ(heightsByColumn(points, path.points), heightsByColumn(points, upTo(count)));
  }
}

PixelGrid thinGrid() {
  PixelGrid pixels = grid();
  pixels.isThin = pixels.takesSpans = true;
  return pixels;
}

std::size_t verticesOf(const ReducedPath& path) {
  return path.points.size() + 2 * path.spans.size();
}

/// Of each column, away from its edges: the rows of what is lit, as far as points tell.
std::map<double, Extent> litRows(const PointSequence& points, const Indices& chosen) {
  std::map<double, Extent> rows;
  for (const std::size_t i : chosen) {
    const PixelCell column = grid().column(points.x(i));
    const double away = std::fabs(points.x(i) - column.middle);
    if (!column.isEdge) {
      Extent& extent = rows[column.middle];
      extent = {std::min(extent.low, std::floor(points.y(i) + away)),
                std::max(extent.high, std::floor(points.y(i) - away))};
    }
  }
  return rows;
}

/// The same of what is drawn of them: where the end of a span may be lit or not, lines are drawn
/// besides.
std::map<double, Extent> litRows(const PointSequence& points, const ReducedPath& path) {
  std::map<double, Extent> rows = litRows(points, path.points);
  for (const PixelSpan& span : path.spans) {
    EXPECT_TRUE(span.isInColumn);
    Extent& extent = rows[span.middle];
    extent = {std::min(extent.low, span.low), std::max(extent.high, span.high - 1)};
  }
  return rows;
}

TEST(PathReductionTest, OfThinLinesAFewPointsAColumnAreDrawn) {
  for (const std::size_t count : {10000U, 200000U}) {
    const PointSequence points = noise(count, 20);
    const ReducedPath path = reduced(points, thinGrid());
    EXPECT_LT(verticesOf(path), 200U * 8);
    EXPECT_EQ(path.points.front(), 0U);
    EXPECT_EQ(path.points.back(), count - 1);
    EXPECT_TRUE(std::is_sorted(path.points.begin(), path.points.end()));
    EXPECT_EQ(litRows(points, path), litRows(points, upTo(count)));
  }
}

TEST(PathReductionTest, WhatAColumnShowsIsToldAsASpan) {
  const PointSequence points = noise(200000, 10);
  const ReducedPath path = reduced(points, thinGrid());
  const std::map<double, Extent> columns = litRows(points, upTo(points.size()));
  EXPECT_GT(path.spans.size(), 190U);
  EXPECT_LT(path.points.size(), 200U * 4);
  for (const PixelSpan& span : path.spans) {
    const Extent& column = columns.at(span.middle);
    EXPECT_GE(span.low, column.low) << span.middle;
    EXPECT_LE(span.high - 1, column.high) << span.middle;
  }
  EXPECT_EQ(litRows(points, path), columns);
}

TEST(PathReductionTest, OfThinLinesAFewPointsARowAreDrawn) {
  const PointSequence lying = noise(200000, 10);
  std::vector<double> x;
  std::vector<double> y;
  for (std::size_t i = 0; i < lying.size(); ++i) {
    x.push_back(lying.y(i));
    y.push_back(lying.x(i) / 2);
  }
  EXPECT_LT(verticesOf(reduced(PointSequence(x, y), thinGrid())), 100U * 12);
}

TEST(PathReductionTest, AThinLineGoesWhereNeighbouringColumnsHaveNothingInCommon) {
  // Up by 30 pixels from column to column, with steps at their edges.
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 3000; ++i) {
    x.push_back(20 + i * 0.001);
    y.push_back(10 + 30 * (i / 1000) + 5 * std::sin(i));
  }
  const ReducedPath path = reduced(PointSequence(x, y), thinGrid());
  EXPECT_LT(verticesOf(path), 200U);
  for (const std::size_t turn : {999U, 1000U, 1999U, 2000U}) {
    EXPECT_TRUE(std::binary_search(path.points.begin(), path.points.end(), turn)) << turn;
  }
}

/// Of each run the ends, and how far it reaches.
TEST(PathReductionTest, WhatIsMagnifiedIsDrawnByFourPointsACell) {
  PixelGrid fine = grid();
  fine.cellsPerPixel = 4;
  fine.isMagnified = true;
  const PointSequence points = noise(123457, 10);  // none on an edge between cells
  const ReducedPath path = reduced(points, fine);
  ASSERT_EQ(path.starts.size(), 1U);
  EXPECT_LE(path.points.size(), 4 * 800U);
  const auto heightsByCell = [&](const Indices& chosen) {
    std::map<double, Extent> heights;
    for (const std::size_t i : chosen) {
      Extent& extent = heights[fine.column(points.x(i)).middle];
      extent = {std::min(extent.low, points.y(i)), std::max(extent.high, points.y(i))};
    }
    return heights;
  };
  EXPECT_EQ(heightsByCell(path.points), heightsByCell(upTo(123457)));
}

TEST(PathReductionTest, ALineAlongOneRowHasTwoEnds) {
  std::vector<double> x;
  for (int i = 0; i < 100000; ++i) {
    x.push_back(i * 0.002);
  }
  const PointSequence flat(x, std::vector<double>(x.size(), 30.25));
  EXPECT_LT(reduced(flat).points.size(), 20U);
  const PointSequence upright(std::vector<double>(x.size(), 77.75), x);
  EXPECT_LT(reduced(upright).points.size(), 20U);
}

TEST(PathReductionTest, BackAndForthWithinAColumnKeepsItsEnds) {
  std::vector<double> y;
  for (int i = 0; i < 50000; ++i) {
    y.push_back(50 + 40 * std::sin(i * 0.01));
  }
  const PointSequence points(std::vector<double>(y.size(), 20.5), y);
  const ReducedPath path = reduced(points);
  EXPECT_LT(path.points.size(), 20U);
  EXPECT_EQ(heightsByColumn(points, path.points), heightsByColumn(points, upTo(points.size())));
}

TEST(PathReductionTest, WhatLiesOnOneSideOfThePictureIsCrossedAtOnce) {
  PixelGrid window = grid();
  window.left = 90;
  window.right = 110;
  const PointSequence points = noise(200000, 20);
  const ReducedPath path = reduced(points, window);
  EXPECT_LT(path.points.size(), 20U * 50);
  // The line comes in from the neighbours of the first and the last point that can be seen.
  EXPECT_EQ(path.points[0], 0U);
  EXPECT_NEAR(points.x(path.points[1]), 90, 0.002);
  EXPECT_NEAR(points.x(path.points[path.points.size() - 2]), 110, 0.002);
  EXPECT_EQ(path.points.back(), points.size() - 1);

  window.bottom = 300;
  window.top = 400;
  EXPECT_LT(reduced(points, window).points.size(), 8U);
}

TEST(PathReductionTest, NoLineCrossesAGap) {
  std::vector<double> x;
  std::vector<double> y;
  std::mt19937 random(9);
  std::uniform_int_distribution<int> gap(0, 999);
  for (int i = 0; i < 200000; ++i) {
    x.push_back(i * 0.001);
    y.push_back(gap(random) == 0 || i / 1000 == 77 ? kNaN : 50 + 30 * std::sin(i * 0.1));
  }
  const PointSequence points(x, y);
  const ReducedPath path = reduced(points);
  const ReducedPath whole = wholePath(points);
  ASSERT_EQ(path.starts.size(), whole.starts.size());
  for (std::size_t part = 0; part < path.starts.size(); ++part) {
    EXPECT_EQ(path.points[path.starts[part]], whole.points[whole.starts[part]]);
    const bool isLast = part + 1 == path.starts.size();
    const std::size_t end = isLast ? path.points.size() : path.starts[part + 1];
    const std::size_t wholeEnd = isLast ? whole.points.size() : whole.starts[part + 1];
    EXPECT_EQ(path.points[end - 1], whole.points[wholeEnd - 1]);
  }
  EXPECT_EQ(heightsByColumn(points, path.points), heightsByColumn(points, whole.points));
}

TEST(PathReductionTest, GapsOutsideOfThePictureAreNotLookedAt) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 100000; ++i) {
    x.push_back(i * 0.002);
    y.push_back(i % 3 == 0 ? kNaN : 500.0);
  }
  // One point in the middle can be seen, and the line from its neighbour.
  y[50000] = 50;
  y[50001] = 500;
  const ReducedPath path = reduced(PointSequence(x, y));
  EXPECT_LT(path.points.size(), 40U);
  const auto seen = std::find(path.points.begin(), path.points.end(), 50000U);
  ASSERT_NE(seen, path.points.end());
  EXPECT_EQ(*(seen - 1), 49999U);
  EXPECT_EQ(*(seen + 1), 50001U);
}

TEST(PathReductionTest, PointsOfDifferentDepthsKeepTheNearest) {
  PixelGrid deep = grid();
  deep.depthStep = 1e-7;
  // Turns within one pixel.
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> z;
  for (int i = 0; i < 1000; ++i) {
    x.push_back(20.5 + 0.2 * std::cos(i));
    y.push_back(30.5 + 0.2 * std::sin(i));
    z.push_back(i == 567 ? 0.1 : 0.5);
  }
  const ReducedPath cell = reduced(PointSequence(x, y, z), deep);
  EXPECT_LT(cell.points.size(), 40U);
  EXPECT_TRUE(std::binary_search(cell.points.begin(), cell.points.end(), 567U));

  // Up and down a column, with depths: nothing can be left out.
  for (int i = 0; i < 1000; ++i) {
    y[static_cast<std::size_t>(i)] = i % 2 == 0 ? 10.5 : 90.5;
    z[static_cast<std::size_t>(i)] = i * 1e-3;
  }
  EXPECT_EQ(reduced(PointSequence(x, y, z), deep).points, upTo(1000));
  EXPECT_LT(reduced(PointSequence(x, y, z)).points.size(), 40U);
}

TEST(PathReductionTest, CoordinatesBeyondEveryPictureDoNoHarm) {
  const PointSequence points({0, 1e308, -1e308, 5}, {0, -1e308, 1e308, 5});
  WindowMapping large = kPixels;
  large.x = {1e10, 1e10, 0, 0};
  const ReducedPath path = reducePath({points, RunBoxes(points), large}, grid());
  EXPECT_EQ(path.points.front(), 0U);
  EXPECT_EQ(path.points.back(), 3U);
}

TEST(PathReductionTest, OfWhatIsNotForTheEyeAllPointsInSightAreDrawn) {
  PixelGrid window = grid();
  window.left = 90;
  window.right = 110;
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 20000; ++i) {
    x.push_back(i * 0.01);
    y.push_back(i % 100 == 7 ? kNaN : 50);
  }
  const PointSequence points(x, y);
  const RunBoxes boxes(points);
  const ReducedPath path = pathInSight({points, boxes, kPixels}, window);
  EXPECT_LT(path.points.size(), 2000U + 40);
  std::size_t seen = 0;
  for (std::size_t i = 9000; i <= 11000; ++i) {
    const bool isIn = std::binary_search(path.points.begin(), path.points.end(), i);
    EXPECT_EQ(isIn, !points.isGap(i)) << i;
    seen += isIn ? 1 : 0;
  }
  EXPECT_EQ(seen, 1981U);
  for (std::size_t i = 0; i + 1 < path.points.size(); ++i) {
    const bool goesOn = !std::binary_search(path.starts.begin(), path.starts.end(), i + 1);
    EXPECT_EQ(goesOn, path.points[i + 1] == path.points[i] + 1) << path.points[i];
  }
}

TEST(PathReductionTest, AllPointsAreTheWholePath) {
  const ReducedPath path =
      wholePath(PointSequence({0, 1, kNaN, 3, kNaN, kNaN, 6}, {0, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(path.points, (Indices{0, 1, 3, 6}));
  EXPECT_EQ(path.starts, (Indices{0, 2, 3}));
}

}  // namespace
}  // namespace zyn
