#include "trace/SoftWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

namespace zyn {
namespace {

/// One unit is one pixel.
constexpr WindowMapping kPixels = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}};

PixelGrid picture() {
  PixelGrid grid;
  grid.right = 200;
  grid.top = 100;
  grid.depthStep = std::numeric_limits<double>::infinity();
  grid.isSoft = true;
  return grid;
}

/// Points from the left edge to the right one.
PointSequence across(std::size_t count, const std::function<double(double)>& height) {
  std::vector<double> x(count);
  std::vector<double> y(count);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = 200.0 * static_cast<double>(i) / static_cast<double>(count - 1);
    y[i] = height(x[i]);
  }
  return {x, y};
}

PointSequence noise(std::size_t count, double size) {
  std::mt19937 random(1);
  std::normal_distribution<double> normal(0, size);
  return across(count, [&](double) { return 50 + normal(random); });
}

ReducedPath reduced(const PointSequence& points) {
  const RunBoxes boxes(points);
  return reducePath({points, boxes, kPixels, true}, picture());
}

double distanceToSegment(const PlanePoint& at, const Point& from, const Point& to) {
  const PlanePoint way{to.x - from.x, to.y - from.y};
  const PlanePoint rest{at.x - from.x, at.y - from.y};
  const double square = way.x * way.x + way.y * way.y;
  const double part =
      square > 0 ? std::clamp((rest.x * way.x + rest.y * way.y) / square, 0.0, 1.0) : 0;
  return std::hypot(rest.x - part * way.x, rest.y - part * way.y);
}

TEST(SoftWriterTest, AStraightLineIsItsEnds) {
  const ReducedPath path = reduced(across(1000, [](double x) { return 10 + x / 3; }));
  EXPECT_EQ(path.points, (std::vector<std::size_t>{0, 999}));
  EXPECT_EQ(path.starts, (std::vector<std::size_t>{0}));
  EXPECT_TRUE(path.spans.empty());
}

/// However many points there are, of which those in a column are at most as far from the line as
/// the line within it bends.
TEST(SoftWriterTest, ACurveIsMissedByLittle) {
  for (const std::size_t count : {300U, 5000U, 200000U}) {
    const PointSequence points = across(count, [](double x) { return 50 + 30 * std::sin(x / 10); });
    const ReducedPath path = reduced(points);
    EXPECT_TRUE(path.spans.empty());
    ASSERT_EQ(path.starts.size(), 1U);
    EXPECT_LT(path.points.size(), 160U);
    std::size_t segment = 1;
    double worst = 0;
    for (std::size_t i = 0; i < count; ++i) {
      while (path.points[segment] < i) ++segment;
      worst = std::max(worst, distanceToSegment({points.x(i), points.y(i)},
                                                path.places[segment - 1], path.places[segment]));
    }
    EXPECT_LT(worst, 0.2) << count;
  }
}

TEST(SoftWriterTest, NoiseIsASpanForEachColumn) {
  const PointSequence points = noise(100000, 10);
  const ReducedPath path = reduced(points);
  ASSERT_GE(path.spans.size(), 199U);
  for (const PixelSpan& span : path.spans) {
    double low = 1000;
    double high = -1000;
    for (std::size_t i = points.first(); i < points.end(); ++i) {
      if (std::floor(points.x(i)) + 0.5 == span.middle) {
        low = std::min(low, points.y(i));
        high = std::max(high, points.y(i));
      }
    }
    EXPECT_TRUE(span.isInColumn);
    EXPECT_LE(span.low, low);
    EXPECT_GE(span.high, high);
    EXPECT_GE(span.low, low - 15) << "no more than to the line that leads to the next column";
  }
}

/// A steep slope with a little noise is a line for each column, which passes near all its points.
TEST(SoftWriterTest, ASlopeWithNoiseIsALineForEachColumn) {
  std::mt19937 random(1);
  std::normal_distribution<double> normal(0, 0.4);
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 1500; ++i) {
    x.push_back(100 + 0.01 * i);
    y.push_back(5 + 0.06 * i + normal(random));
  }
  const PointSequence points(x, y);
  const ReducedPath path = reduced(points);
  EXPECT_TRUE(path.spans.empty());
  ASSERT_EQ(path.starts.size(), 1U);
  EXPECT_LE(path.points.size(), 2 * 15U);
  for (std::size_t i = 0; i < points.size(); ++i) {
    double nearest = 100;
    for (std::size_t k = 1; k < path.places.size(); ++k) {
      nearest =
          std::min(nearest, distanceToSegment({x[i], y[i]}, path.places[k - 1], path.places[k]));
    }
    EXPECT_LT(nearest, i < 100 || i >= 1400 ? 1.5 : 0.5) << "but at the ends of the line";
  }
}

TEST(SoftWriterTest, SpansThatFollowEachOtherMeet) {
  const ReducedPath path = reduced(
      across(100000, [](double x) { return 50 + 40 * std::sin(x / 4) + std::sin(1e4 * x); }));
  ASSERT_GT(path.spans.size(), 20U);
  int meetings = 0;
  for (std::size_t i = 1; i < path.spans.size(); ++i) {
    const PixelSpan& before = path.spans[i - 1];
    const PixelSpan& after = path.spans[i];
    if (after.middle == before.middle + 1) {
      ++meetings;
      EXPECT_LE(std::max(before.low, after.low), std::min(before.high, after.high));
    }
  }
  EXPECT_GT(meetings, 10);
}

TEST(SoftWriterTest, NoiseThatGoesUpIsASpanForEachRow) {
  const PointSequence points = noise(100000, 10);
  std::vector<double> x;
  std::vector<double> y;
  for (std::size_t i = 0; i < points.size(); ++i) {
    x.push_back(points.y(i));
    y.push_back(points.x(i) / 2);
  }
  const ReducedPath path = reduced(PointSequence(x, y));
  EXPECT_GE(path.spans.size(), 99U);
  for (const PixelSpan& span : path.spans) {
    EXPECT_FALSE(span.isInColumn);
  }
}

TEST(SoftWriterTest, GapsStayOpen) {
  const PointSequence points =
      across(1001, [](double x) { return x > 80 && x < 120 ? std::nan("") : 50.0; });
  const ReducedPath path = reduced(points);
  ASSERT_EQ(path.starts.size(), 2U);
  ASSERT_EQ(path.places.size(), 4U);
  EXPECT_EQ(path.places[1].x, 80);
  EXPECT_EQ(path.places[2].x, 120);
}

/// What was appended piece by piece, and has lost its oldest points, is drawn as a new trace.
void expectDrawnAsNew(const PointSequence& all, std::size_t dropped) {
  PointSequence grown;
  RunBoxes boxes;
  std::vector<double> left;
  std::vector<double> leftY;
  for (std::size_t i = 0; i < all.size(); i += 1234) {
    std::vector<double> x;
    std::vector<double> y;
    for (std::size_t j = i; j < std::min(i + 1234, all.size()); ++j) {
      x.push_back(all.x(j));
      y.push_back(all.y(j));
    }
    grown.append(x, y);
    boxes.follow(grown);
  }
  for (std::size_t i = dropped; i < all.size(); ++i) {
    left.push_back(all.x(i));
    leftY.push_back(all.y(i));
  }
  grown.dropBefore(dropped);
  boxes.follow(grown);
  const ReducedPath path = reducePath({grown, boxes, kPixels, true}, picture());
  const ReducedPath fresh = reduced(PointSequence(left, leftY));
  EXPECT_EQ(path.starts, fresh.starts);
  ASSERT_EQ(path.points.size(), fresh.points.size());
  for (std::size_t i = 0; i < path.points.size(); ++i) {
    EXPECT_EQ(path.points[i], fresh.points[i] + dropped);
  }
  ASSERT_EQ(path.spans.size(), fresh.spans.size());
  for (std::size_t i = 0; i < path.spans.size(); ++i) {
    EXPECT_EQ(path.spans[i].middle, fresh.spans[i].middle);
    EXPECT_EQ(path.spans[i].low, fresh.spans[i].low);
    EXPECT_EQ(path.spans[i].high, fresh.spans[i].high);
  }
}

TEST(SoftWriterTest, DoesNotDependOnWhereBoxesBegin) { expectDrawnAsNew(noise(60000, 3), 12345); }

/// Boxes that are not seen, with gaps among their points, tell nothing of where lines begin.
TEST(SoftWriterTest, DoesNotDependOnGapsThatAreNotSeen) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> step(0, 40);
    std::bernoulli_distribution isGap(0.05);
    std::vector<double> x;
    std::vector<double> y;
    double at = 50;
    for (int i = 0; i < 3000; ++i) {
      at = 0.98 * (at - 50) + 50 + step(random);
      x.push_back(100 + 0.2 * (i - 1500));
      y.push_back(isGap(random) ? std::nan("") : at);
    }
    expectDrawnAsNew(PointSequence(x, y), 701 + seed);
  }
}

/// In a view that shows some of it, the points outside are hardly looked at.
TEST(SoftWriterTest, TakesWhatThePixelsTake) {
  const PointSequence points = noise(1000000, 10);
  const RunBoxes boxes(points);
  PointSequence::reads = 0;
  const ReducedPath path = reducePath({points, boxes, kPixels, true}, picture());
  EXPECT_LT(PointSequence::reads, 100000U);
  EXPECT_LT(path.points.size(), 100U);
}

/// Of points in order, only those about the ends of columns.
TEST(SoftWriterTest, FindsTheEndsOfColumns) {
  for (const double direction : {1.0, -1.0}) {
    const PointSequence points = noise(1000000, 10);
    const RunBoxes boxes(points);
    const WindowMapping mapping{{direction, 0, 0, 100 - 100 * direction}, kPixels.y, {}};
    PointSequence::reads = 0;
    const ReducedPath path = reducePath({points, boxes, mapping, true}, picture());
    EXPECT_LT(PointSequence::reads, 200 * 60U);
    EXPECT_GE(path.spans.size(), 199U);
  }
}

/// Where it is steep, noise is lines, at its turns spans: these reach to where the lines end,
/// without more of them from one to the other.
TEST(SoftWriterTest, SpansReachToTheLinesBesideThem) {
  std::mt19937 random(1);
  std::normal_distribution<double> normal(0, 1);
  const PointSequence points =
      across(20000, [&](double x) { return 50 + 45 * std::sin(x / 5) + normal(random); });
  const ReducedPath path = reduced(points);
  ASSERT_GT(path.spans.size(), 20U);
  ASSERT_GT(path.starts.size(), 10U);
  const auto spanAt = [&](double column) {
    return std::find_if(path.spans.begin(), path.spans.end(),
                        [&](const PixelSpan& span) { return span.middle == column + 0.5; });
  };
  const auto expectReached = [&](const Point& end, double column) {
    const auto span = spanAt(column);
    ASSERT_NE(span, path.spans.end()) << end.x;
    EXPECT_LE(span->low, end.y) << end.x;
    EXPECT_GE(span->high, end.y) << end.x;
  };
  for (std::size_t i = 0; i < path.starts.size(); ++i) {
    const std::size_t first = path.starts[i];
    const std::size_t end = i + 1 < path.starts.size() ? path.starts[i + 1] : path.places.size();
    ASSERT_GE(end - first, 2U);
    const Point& from = path.places[first];
    const Point& to = path.places[end - 1];
    EXPECT_EQ(spanAt(std::floor(from.x)), path.spans.end()) << from.x;
    EXPECT_EQ(spanAt(std::floor(to.x)), path.spans.end()) << to.x;
    if (first > 0) expectReached(from, std::floor(from.x) - 1);
    if (to.x < 199) expectReached(to, std::floor(to.x) + 1);
  }
}

}  // namespace
}  // namespace zyn
