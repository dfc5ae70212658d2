#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "trace/NearestPoint.h"
#include "trace/PathReduction.h"

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Values {
  std::vector<double> x;
  std::vector<double> y;

  std::span<const double> part(const std::vector<double>& of, std::size_t from,
                               std::size_t to) const {
    return std::span(of).subspan(from, to - from);
  }
};

/// What a series may hold: noise, whole numbers (many points at one height), a walk that turns
/// back, a curve far outside of most views; some have gaps.
Values valuesOf(std::mt19937& random, std::size_t count) {
  std::normal_distribution<double> normal;
  std::uniform_int_distribution<int> kind(0, 3);
  std::uniform_int_distribution<int> often(1, 400);
  const int shape = kind(random);
  const int gapEvery = kind(random) == 0 ? often(random) : 0;
  const double amplitude = std::exp(2 * normal(random) + 2);
  Values values;
  double walk = 100;
  for (std::size_t i = 0; i < count; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(count);
    walk += 0.2 * normal(random);
    double x = shape == 2 ? walk : 200 * t;
    double y = 50 + amplitude * normal(random);
    if (shape == 1) y = std::round(y / 4) * 4;
    if (shape == 3) y = 50 + 300 * std::sin(20 * t) + 0.1 * normal(random);
    if (gapEvery && often(random) % gapEvery == 0) (often(random) % 2 ? x : y) = kNaN;
    if (gapEvery && often(random) == 7) y = kInfinity;
    values.x.push_back(x);
    values.y.push_back(y);
  }
  return values;
}

/// A sequence that has got its points bit by bit, and has lost its oldest, with its boxes.
struct Grown {
  PointSequence points;
  RunBoxes boxes;

  void append(const Values& values, std::size_t from, std::size_t to, std::size_t capacity) {
    points.append(values.part(values.x, from, to), values.part(values.y, from, to));
    if (capacity && points.size() > capacity) {
      points.dropBefore(points.end() - capacity);
    }
    boxes.follow(points);
  }
};

/// The same points in a sequence of their own, which begins with so many gaps.
PointSequence plain(const PointSequence& points, std::size_t gaps = 0) {
  std::vector<double> x(gaps, kNaN);
  std::vector<double> y(gaps, 0);
  for (std::size_t i = points.first(); i < points.end(); ++i) {
    x.push_back(points.x(i));
    y.push_back(points.y(i));
  }
  return {x, y};
}

RunBox scanned(const PointSequence& points, std::size_t first, std::size_t last) {
  RunBox run{{kInfinity, -kInfinity, kInfinity, -kInfinity, kInfinity, -kInfinity}, true, true};
  for (std::size_t i = first; i <= last; ++i) {
    if (points.isGap(i)) {
      run.whole = false;
    } else {
      run.rises = run.rises && (i == first || !(points.x(i) < points.x(i - 1)));
      run.box.unite({points.x(i), points.x(i), points.y(i), points.y(i), 0, 0});
    }
  }
  return run;
}

void expectBoxesOf(const PointSequence& points, const RunBoxes& boxes) {
  const std::size_t top = boxes.levels() - 1;
  ASSERT_EQ(boxes.endRun(top) - boxes.firstRun(top), 1U);
  for (std::size_t level = 0; level <= top; ++level) {
    const std::size_t length = RunBoxes::length(level);
    ASSERT_LE(boxes.firstRun(level) * length, points.first());
    ASSERT_GE(boxes.endRun(level) * length, points.end() - 1);
    for (std::size_t i = boxes.firstRun(level); i < boxes.endRun(level); ++i) {
      const RunBox expected = scanned(points, std::max(i * length, points.first()),
                                      std::min((i + 1) * length, points.end() - 1));
      ASSERT_EQ(boxes.run(level, i).box, expected.box) << level << ", " << i;
      ASSERT_EQ(boxes.run(level, i).whole, expected.whole) << level << ", " << i;
      ASSERT_TRUE(!expected.whole || boxes.run(level, i).rises == expected.rises)
          << level << ", " << i;
    }
  }
}

TEST(GrowingTraceTest, BoxesKeepUpWithWhatIsAppendedAndDropped) {
  std::mt19937 random(3);
  std::uniform_int_distribution<std::size_t> size(0, 700);
  for (const std::size_t capacity : {0U, 1U, 2U, 15U, 16U, 17U, 33U, 256U, 300U, 5000U}) {
    const Values values = valuesOf(random, 6000);
    Grown grown;
    for (std::size_t from = 0, to = 0; from < values.x.size(); from = to) {
      to = std::min(from + (random() % 2 ? size(random) : size(random) % 20), values.x.size());
      grown.append(values, from, to, capacity);
      if (to > 0) {
        expectBoxesOf(grown.points, grown.boxes);
        ASSERT_EQ(grown.points.size(), capacity ? std::min(capacity, to) : to);
      }
    }
  }
}

TEST(GrowingTraceTest, HeightsAreThoseOfThePoints) {
  std::mt19937 random(4);
  std::normal_distribution<double> normal;
  Values values;
  for (int i = 0; i < 20000; ++i) {
    values.x.push_back(i);
    values.y.push_back(normal(random));
  }
  Grown grown;
  grown.append(values, 0, 777, 0);
  grown.append(values, 777, 20000, 15000);
  for (int round = 0; round < 2000; ++round) {
    const std::size_t first = 5000 + random() % 15000;
    const std::size_t last =
        first + random() % std::min<std::size_t>(20000 - first, round % 2 ? 15000 : 40);
    const auto [low, high] = grown.boxes.heights(grown.points, first, last);
    const auto y = values.part(values.y, first, last + 1);
    ASSERT_EQ(low, *std::min_element(y.begin(), y.end())) << first << ' ' << last;
    ASSERT_EQ(high, *std::max_element(y.begin(), y.end())) << first << ' ' << last;
  }
}

TEST(GrowingTraceTest, WhatHasBeenDroppedWhollyBeginsAnew) {
  const std::vector<double> some{1, 2, 3};
  Grown grown;
  grown.points.append(some, some);
  grown.boxes.follow(grown.points);
  grown.points.dropBefore(3);
  grown.boxes.follow(grown.points);
  EXPECT_TRUE(grown.boxes.all().isEmpty());
  EXPECT_EQ(grown.boxes.levels(), 0U);
  for (int i = 0; i < 100; ++i) {
    grown.points.append(some, some);
    grown.points.dropBefore(grown.points.end() - 2);
    grown.boxes.follow(grown.points);
    expectBoxesOf(grown.points, grown.boxes);
  }
}

/// A picture of 200 x 100 pixels, and lines of every kind.
PixelGrid gridOf(std::mt19937& random) {
  PixelGrid grid;
  grid.left = -2;
  grid.right = 202;
  grid.bottom = -2;
  grid.top = 102;
  grid.depthStep = kInfinity;
  const auto kind = random() % 4;
  constexpr std::array kCells{1.0, 8.0, 1.0, 4.0};
  grid.cellsPerPixel = kCells[kind];
  grid.isThin = kind == 0;
  grid.isSoft = kind == 2;
  grid.isMagnified = kind == 3;
  grid.takesSpans = grid.isThin && random() % 2;
  return grid;
}

WindowMapping mappingOf(std::mt19937& random) {
  std::normal_distribution<double> normal;
  const double zoom = std::exp(2 * normal(random));
  return {{zoom, 0, 0, 100 - 100 * zoom + 30 * normal(random)},
          {0, std::exp(normal(random)), 0, 20 * normal(random)},
          {}};
}

struct Drawn {
  std::vector<std::pair<std::size_t, std::size_t>> lines;
  std::vector<std::array<double, 5>> spans;
  bool operator==(const Drawn&) const = default;
};

/// What can be seen of a path: not its lines beyond one side of the picture.
Drawn drawnOf(const TraceInWindow& trace, const PixelGrid& grid, std::size_t zero) {
  const ReducedPath path = reducePath(trace, grid);
  const auto isSeen = [&](std::size_t i, std::size_t k) {
    const auto [xLow, xHigh] = std::minmax({trace.windowX(i), trace.windowX(k)});
    const auto [yLow, yHigh] = std::minmax({trace.windowY(i), trace.windowY(k)});
    return !grid.isOutside({xLow, xHigh}, {yLow, yHigh});
  };
  Drawn drawn;
  for (std::size_t part = 0; part < path.starts.size(); ++part) {
    const std::size_t first = path.starts[part];
    const std::size_t end =
        part + 1 < path.starts.size() ? path.starts[part + 1] : path.points.size();
    for (std::size_t i = first; i + 1 < std::max(end, first + 2); ++i) {
      const std::size_t from = path.points[i];
      const std::size_t to = i + 1 < end ? path.points[i + 1] : from;
      if (isSeen(from, to)) drawn.lines.emplace_back(from - zero, to - zero);
    }
  }
  for (const PixelSpan& span : path.spans) {
    drawn.spans.push_back({span.isInColumn ? 1.0 : 0.0, span.middle, span.low, span.high,
                           static_cast<double>(span.point - zero)});
  }
  return drawn;
}

TEST(GrowingTraceTest, TheReducedPathIsThatOfOneSequenceOfTheSamePoints) {
  std::mt19937 random(5);
  std::uniform_int_distribution<std::size_t> size(1, 3000);
  for (unsigned round = 0; round < 150; ++round) {
    const Values values = valuesOf(random, 1000 + size(random) * (round % 4));
    const std::size_t capacity = random() % 3 ? 1 + random() % values.x.size() : 0;
    Grown grown;
    for (std::size_t from = 0, to = 0; from < values.x.size(); from = to) {
      to = std::min(from + size(random), values.x.size());
      grown.append(values, from, to, capacity);
    }
    const PointSequence points = plain(grown.points);
    const RunBoxes boxes(points);
    const std::size_t gaps = random() % 300;
    const PointSequence moved = plain(grown.points, gaps);
    const RunBoxes movedBoxes(moved);
    for (int view = 0; view < 4; ++view) {
      const WindowMapping mapping = mappingOf(random);
      const PixelGrid grid = gridOf(random);
      const Drawn drawn =
          drawnOf({grown.points, grown.boxes, mapping, true}, grid, grown.points.first());
      ASSERT_EQ(drawn, drawnOf({points, boxes, mapping, true}, grid, 0)) << round;
      ASSERT_EQ(drawn, drawnOf({moved, movedBoxes, mapping, true}, grid, gaps)) << round;
    }
  }
}

TEST(GrowingTraceTest, TheNearestPointIsThatOfOneSequenceOfTheSamePoints) {
  std::mt19937 random(7);
  std::normal_distribution<double> normal;
  for (int round = 0; round < 50; ++round) {
    const Values values = valuesOf(random, 3000);
    Grown grown;
    const std::size_t step = 1 + random() % 500;
    for (std::size_t from = 0; from < 3000; from += step) {
      grown.append(values, from, std::min<std::size_t>(from + step, 3000), 1 + random() % 2000);
    }
    const PointSequence points = plain(grown.points);
    const RunBoxes boxes(points);
    for (int i = 0; i < 20; ++i) {
      const Point target(100 + 80 * normal(random), 50 + 40 * normal(random), 0);
      const auto found = nearestPoint(grown.points, grown.boxes, target);
      const auto expected = nearestPoint(points, boxes, target);
      ASSERT_EQ(found.has_value(), expected.has_value());
      if (found) {
        EXPECT_EQ(found->segment - grown.points.first(), expected->segment);
        EXPECT_EQ(found->fraction, expected->fraction);
        EXPECT_EQ(found->position, expected->position);
      }
    }
  }
}

}  // namespace
}  // namespace zyn
