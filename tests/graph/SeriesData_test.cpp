#include "graph/SeriesData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "graph/NearestOnScreen.h"
#include "trace/PathReduction.h"

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr AxisLogs kLinear{};
constexpr AxisLogs kAllLogs[] = {{false, false}, {true, false}, {false, true}, {true, true}};

using Values = std::vector<double>;
using Wide = long double;

std::span<const double> part(const Values& values, std::size_t from, std::size_t to) {
  return std::span(values).subspan(from, to - from);
}

/// Noise over six decades, with signs, gaps and infinities.
Values noisy(std::mt19937& random, std::size_t count) {
  std::normal_distribution<double> normal;
  Values values(count);
  for (double& value : values) {
    value = std::exp(5 * normal(random)) * (random() % 5 ? 1 : -1);
    if (random() % 20 == 0) value = random() % 2 ? kNaN : kInfinity;
    if (random() % 50 == 0) value = 0;
  }
  return values;
}

Values rising(std::mt19937& random, std::size_t count) {
  Values values(count);
  double x = -10;
  for (double& value : values) {
    value = x += static_cast<double>(random() % 100) / 64;
  }
  return values;
}

/// The points that a series has, as a host would read them.
struct Kept {
  Values x;
  Values y;

  explicit Kept(const SeriesData& series) {
    const PointSequence& points = series.points();
    for (std::size_t i = points.first(); i < points.end(); ++i) {
      x.push_back(points.x(i));
      y.push_back(points.y(i));
    }
  }
};

bool isAlike(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

double onAxis(double value, bool isLog) { return isLog ? std::log10(value) : value; }

std::optional<Box3> scannedExtent(const Kept& kept, const AxisLogs& logs) {
  std::optional<Box3> box;
  for (std::size_t i = 0; i < kept.x.size(); ++i) {
    const double x = onAxis(kept.x[i], logs.x);
    const double y = onAxis(kept.y[i], logs.y);
    if (std::isfinite(x) && std::isfinite(y)) {
      if (!box) box = Box3{x, x, y, y, 0, 0};
      box->unite({x, x, y, y, 0, 0});
    }
  }
  return box;
}

/// Two passes in wider arithmetic.
SeriesStatistics scannedStatistics(const Values& values) {
  SeriesStatistics found;
  Wide sum = 0;
  found.min = kInfinity;
  found.max = -kInfinity;
  for (const double y : values) {
    if (std::isfinite(y)) {
      sum += y;
      ++found.count;
      found.min = std::min(found.min, y);
      found.max = std::max(found.max, y);
    }
  }
  const Wide mean = sum / static_cast<Wide>(found.count);
  Wide squares = 0;
  for (const double y : values) {
    if (std::isfinite(y)) squares += (y - mean) * (y - mean);
  }
  found.mean = static_cast<double>(mean);
  found.deviation = static_cast<double>(std::sqrt(squares / static_cast<Wide>(found.count - 1)));
  return found;
}

void expectLike(const SeriesStatistics& found, const SeriesStatistics& expected) {
  ASSERT_EQ(found.count, expected.count);
  if (found.count > 0) {
    EXPECT_EQ(found.min, expected.min);
    EXPECT_EQ(found.max, expected.max);
    EXPECT_NEAR(found.mean, expected.mean, 1e-12 * expected.deviation);
    EXPECT_NEAR(found.deviation, expected.deviation, 1e-12 * expected.deviation);
  }
}

double scannedGap(Values values) {
  std::sort(values.begin(), values.end());
  double smallest = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double gap = values[i] - values[i - 1];
    if (gap > 0 && (smallest == 0 || gap < smallest)) smallest = gap;
  }
  return smallest;
}

TEST(SeriesDataTest, AnythingAppendedIsLikeOneSetOfThePointsThatAreLeft) {
  std::mt19937 random(1);
  for (int round = 0; round < 60; ++round) {
    const std::size_t count = 1 + random() % 12000;
    const Values x = random() % 2 ? rising(random, count) : noisy(random, count);
    const Values y = noisy(random, count);
    SeriesData series;
    std::size_t capacity = random() % 3 ? 1 + random() % count : 0;
    series.setCapacity(capacity);
    for (std::size_t from = 0, to = 0; from < count; from = to) {
      to = std::min(from + 1 + random() % (random() % 2 ? 5000 : 50), count);
      series.append(part(x, from, to), part(y, from, to));
      if (random() % 4 == 0) {  // asked for now and then
        series.extent(kAllLogs[random() % 4]);
        series.statistics();
        series.smallestGap(kLinear);
      }
      if (capacity && random() % 40 == 0) {
        capacity = 1 + random() % (2 * capacity);
        series.setCapacity(capacity);
      }
      ASSERT_TRUE(!capacity || series.points().size() <= capacity);
    }
    const Kept kept(series);
    ASSERT_TRUE(std::equal(kept.x.rbegin(), kept.x.rend(), x.rbegin(), isAlike));
    ASSERT_TRUE(std::equal(kept.y.rbegin(), kept.y.rend(), y.rbegin(), isAlike));
    SeriesData whole;
    whole.setPoints(kept.x, kept.y);
    for (const AxisLogs& logs : kAllLogs) {
      EXPECT_EQ(series.extent(logs), scannedExtent(kept, logs));
      EXPECT_EQ(series.smallestGap(logs), whole.smallestGap(logs));
      const SeriesData::Plotted plotted = series.plotted(logs);
      ASSERT_EQ(plotted.points.size(), kept.x.size());
      for (std::size_t i = 0; i < kept.x.size(); i += 1 + random() % 100) {
        const double shown = plotted.points.y(plotted.points.first() + i);
        const double expected = logs.y && kept.y[i] <= 0 ? kNaN : onAxis(kept.y[i], logs.y);
        ASSERT_TRUE(isAlike(shown, expected)) << shown << ", " << expected;
      }
    }
    if (kept.x.size() > 1) expectLike(series.statistics(), scannedStatistics(kept.y));
  }
}

TEST(SeriesDataTest, ARingKeepsTheNewest) {
  SeriesData series;
  series.setCapacity(3);
  series.setPoints({1, 2, 3, 4, 5}, {10, 20, 30, 40, 50});
  EXPECT_EQ(Kept(series).x, (Values{3, 4, 5}));
  series.append(Values{6, 7}, Values{60, 70});
  EXPECT_EQ(Kept(series).y, (Values{50, 60, 70}));
  series.append(Values{1, 2, 3, 4, 5, 6, 7, 8}, Values{1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(Kept(series).x, (Values{6, 7, 8}));
  series.setCapacity(2);
  EXPECT_EQ(Kept(series).x, (Values{7, 8}));
  series.setCapacity(0);
  series.append(Values{9}, Values{9});
  EXPECT_EQ(Kept(series).x, (Values{7, 8, 9}));
}

TEST(SeriesDataTest, EveryChangeIsAnotherRevision) {
  SeriesData series;
  std::uint64_t last = series.revision();
  const auto expectChanged = [&] {
    EXPECT_NE(series.revision(), last);
    last = series.revision();
  };
  series.setPoints({1, 2}, {3, 4});
  expectChanged();
  series.append(Values{3}, Values{5});
  expectChanged();
  series.setErrorsY(Values{1, 1, 1}, Values{1, 1, 1});
  expectChanged();
  series.removeErrorsY();
  expectChanged();
  series.setCapacity(1);
  expectChanged();
  series.statistics();
  series.extent(kLinear);
  EXPECT_EQ(series.revision(), last);
}

TEST(SeriesDataTest, StatisticsAreOfTheFiniteYWhateverX) {
  SeriesData series;
  EXPECT_EQ(series.statistics().count, 0U);
  EXPECT_TRUE(std::isnan(series.statistics().mean));
  series.setPoints({kNaN, 1, 2, 3}, {4, kNaN, 8, kInfinity});
  EXPECT_EQ(series.statistics().count, 2U);
  EXPECT_EQ(series.statistics().mean, 6);
  EXPECT_DOUBLE_EQ(series.statistics().deviation, std::sqrt(8.0));
  series.setPoints({1}, {5});
  EXPECT_EQ(series.statistics().min, 5);
  EXPECT_EQ(series.statistics().max, 5);
  EXPECT_TRUE(std::isnan(series.statistics().deviation));
}

TEST(SeriesDataTest, StatisticsAreStable) {
  for (const double offset : {0.0, 1e9, 1e12}) {
    SeriesData series;
    series.setCapacity(30000);
    series.append(Values(5000, 1e300), Values(5000, 1e300));  // goes again
    for (int i = 0; i < 100; ++i) {
      Values y(1000);
      for (std::size_t k = 0; k < y.size(); ++k) y[k] = offset + (k % 2 ? 1 : -1);
      series.append(y, y);
    }
    EXPECT_EQ(series.statistics().count, 30000U);
    EXPECT_DOUBLE_EQ(series.statistics().mean, offset);
    EXPECT_NEAR(series.statistics().deviation, std::sqrt(30000.0 / 29999), 1e-12);
  }
  for (const double size : {1e308, 1e-300}) {
    SeriesData series;
    series.setPoints({1, 2, 3, 4}, {size, -size, size, -size});
    EXPECT_EQ(series.statistics().mean, 0);
    EXPECT_NEAR(series.statistics().deviation / size, std::sqrt(4.0 / 3), 1e-12);
  }
}

TEST(SeriesDataTest, TheSmallestGapIsThatOfNeighboursOnTheAxis) {
  std::mt19937 random(3);
  std::uniform_int_distribution<int> anywhere(1, 1000000);
  for (const std::size_t count : {1U, 2U, 3U, 100U, 4096U, 10000U}) {
    Values x(count);
    std::generate(x.begin(), x.end(), [&] { return anywhere(random); });
    for (const bool isSorted : {false, true}) {
      if (isSorted) std::sort(x.begin(), x.end());
      SeriesData series;
      series.setPoints(x, Values(count, 1));
      EXPECT_EQ(series.smallestGap(kLinear), scannedGap(x));
      Values logs = x;
      for (double& value : logs) value = std::log10(value);
      EXPECT_EQ(series.smallestGap({true, false}), scannedGap(logs));
      std::reverse(x.begin(), x.end());
      series.setPoints(x, Values(count, 1));
      EXPECT_EQ(series.smallestGap(kLinear), scannedGap(x));
      std::reverse(x.begin(), x.end());
    }
  }
  SeriesData series;
  series.setPoints({1, 1, kNaN, 4, 9}, {1, 1, 1, 1, 1});
  EXPECT_EQ(series.smallestGap(kLinear), 3);
  series.setPoints({2, 2}, {1, 1});
  EXPECT_EQ(series.smallestGap(kLinear), 0);
  series.setPoints({1, 2, 3, 7}, {0, 4, kNaN, 2});
  EXPECT_EQ(series.smallestGap({false, true}), 1) << "whatever y is";
  EXPECT_EQ(series.smallestGap(kLinear), 1);
}

TEST(SeriesDataTest, ErrorBarsCountAsFarAsTheyCanBeShown) {
  SeriesData series;
  series.setPoints({10, 20, kNaN}, {1, 2, 3});
  series.setErrorsY(Values{5, 0.5, 100}, Values{1, 4, 100});
  EXPECT_EQ(series.extent(kLinear), (Box3{10, 20, -4, 6, 0, 0}));
  series.setErrorsX(Values{3, kNaN, 1}, Values{0, 7, 1});
  EXPECT_EQ(series.extent(kLinear), (Box3{7, 27, -4, 6, 0, 0}));
  const Box3 logs{10, 20, std::log10(1.0), std::log10(6.0), 0, 0};
  series.removeErrorsX();
  EXPECT_EQ(series.extent({false, true}), logs);  // below 0 a bar is cut off, its point stays
  series.append(Values{30}, Values{-50});
  EXPECT_EQ(series.errorY(3).plus, 0);
  EXPECT_EQ(series.extent(kLinear), (Box3{10, 30, -50, 6, 0, 0}));
  EXPECT_EQ(series.extent({false, true}), logs);
  series.setCapacity(3);
  EXPECT_EQ(series.extent(kLinear), (Box3{20, 30, -50, 6, 0, 0}));
  series.removeErrorsY();
  EXPECT_EQ(series.extent(kLinear), (Box3{20, 30, -50, 2, 0, 0}));
}

TEST(SeriesDataTest, ErrorBarsOfARingAreThoseOfItsPoints) {
  std::mt19937 random(9);
  std::normal_distribution<double> normal;
  const std::size_t count = 20000;
  Values x(count);
  Values y(count);
  Values error(count);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = static_cast<double>(i);
    y[i] = normal(random);
    error[i] = std::fabs(normal(random));
  }
  SeriesData series;
  series.setPoints(x, y);
  series.setErrorsY(error, error);
  for (const std::size_t left : {19999U, 15000U, 8000U, 4000U, 10U}) {
    series.setCapacity(left);
    Box3 expected{x[count - left], x[count - 1], kInfinity, -kInfinity, 0, 0};
    for (std::size_t i = count - left; i < count; ++i) {
      expected.unite({x[i], x[i], y[i] - error[i], y[i] + error[i], 0, 0});
    }
    EXPECT_EQ(series.extent(kLinear), expected) << left;
  }
}

/// A million points, and ten thousand more at a time.
class LongSeriesTest : public testing::Test {
 protected:
  static constexpr std::size_t kCount = 1000000;
  static constexpr std::size_t kMore = 10000;

  LongSeriesTest() {
    Values x(kCount);
    Values y(kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
      x[i] = static_cast<double>(i) + 1;
      y[i] = 2 + std::sin(x[i]);
    }
    series.setPoints(std::move(x), std::move(y));
  }

  void append() {
    Values x(kMore);
    for (double& value : x) value = ++last;
    series.append(x, Values(kMore, 1.5));
  }

  /// How often points are looked at.
  template <class Action>
  static std::size_t readsOf(const Action& action) {
    PointSequence::reads = 0;
    action();
    return PointSequence::reads;
  }

  SeriesData series;
  double last = kCount;
};

TEST_F(LongSeriesTest, WhatIsDerivedLooksAtWhatIsNewOnly) {
  for (const std::size_t capacity : {std::size_t{0}, kCount}) {
    series.setCapacity(capacity);
    for (const AxisLogs& logs : kAllLogs) {
      series.extent(logs);
      series.smallestGap(logs);
    }
    series.statistics();
    for (int i = 0; i < 3; ++i) {
      append();
      for (const AxisLogs& logs : kAllLogs) {
        EXPECT_LT(readsOf([&] { series.extent(logs); }), 4 * kMore);
        EXPECT_LT(readsOf([&] { series.smallestGap(logs); }), 4 * kMore);
      }
      EXPECT_LT(readsOf([&] { series.statistics(); }), 5 * kMore);
    }
    EXPECT_EQ(series.extent(kLinear)->xMax, last);
    EXPECT_EQ(series.extent(kLinear)->xMin, capacity ? last - kCount + 1 : 1);
  }
}

TEST_F(LongSeriesTest, TheNearestPointIsFoundAmongFew) {
  append();
  const SeriesData::Plotted plotted = series.plotted(kLinear);
  for (const double at : {-1e6, 0.0, 1234.5, 500000.0, 2e6}) {
    const auto found =
        nearestOnScreen(plotted.points, plotted.boxes, {at, 2.4}, {800.0 / kCount, 200});
    ASSERT_TRUE(found);
    EXPECT_LT(found->lookedAt, kCount / 200);
  }
}

/// How often points are looked at by a frame of noise in 800 columns, and how many are drawn.
struct FrameCost {
  std::size_t reads = 0;
  std::size_t drawn = 0;
};

FrameCost frameCost(SeriesData& series, double moved) {
  const SeriesData::Plotted plotted = series.plotted(kLinear);
  const Box3 all = *series.extent(kLinear);
  const double unit = 800 / (all.xMax - all.xMin);
  const WindowMapping mapping{{unit, 0, 0, moved - unit * all.xMin}, {0, 50, 0, 300}, {}};
  PixelGrid grid;
  grid.right = 800;
  grid.top = 600;
  grid.depthStep = kInfinity;
  grid.isThin = grid.takesSpans = true;
  PointSequence::reads = 0;
  const ReducedPath path = reducePath({plotted.points, plotted.boxes, mapping, true}, grid);
  return {PointSequence::reads, path.points.size() + 2 * path.spans.size()};
}

TEST(SeriesDataTest, AFrameOfFourTimesAsManyPointsCostsHardlyMore) {
  std::mt19937 random(4);
  std::normal_distribution<double> normal;
  SeriesData series;
  FrameCost few;
  for (std::size_t count = 0; count < 4000000;) {
    Values x(1000000);
    Values y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
      x[i] = static_cast<double>(count++);
      y[i] = normal(random);
    }
    series.append(x, y);
    if (count == 1000000) few = frameCost(series, 0.3);
  }
  const FrameCost many = frameCost(series, 0.3);
  EXPECT_LT(static_cast<double>(many.reads), 1.3 * static_cast<double>(few.reads));
  EXPECT_LT(many.drawn, 800U * 16);
  series.setCapacity(3000000);
  series.append(Values(10000, 4000000.0), Values(10000, 0.0));
  const FrameCost ring = frameCost(series, 0.7);
  EXPECT_LT(static_cast<double>(ring.reads), 1.3 * static_cast<double>(few.reads));
}

}  // namespace
}  // namespace zyn
