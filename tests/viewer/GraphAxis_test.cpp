#include "viewer/GraphAxis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace zyn::viewer {
namespace {

using Numbers = std::tuple<double, double, double, double>;

Numbers numbersOf(const AxisRange& range) {
  return {range.low, range.high, range.bigStep, range.smallStep};
}

TEST(GraphAxisTest, RangesEndAtGraduations) {
  EXPECT_EQ(numbersOf(linearRange(0, 10)), Numbers(0, 10, 2, 0.5));
  EXPECT_EQ(numbersOf(linearRange(1950, 2010)), Numbers(1950, 2010, 10, 2));
  EXPECT_EQ(numbersOf(linearRange(18.95, 29.24)), Numbers(18.5, 29.5, 2, 0.5));
  EXPECT_EQ(numbersOf(linearRange(-30, 250)), Numbers(-30, 250, 50, 10));
}

TEST(GraphAxisTest, EveryRangeHoldsItsValuesAndHasAFewGraduations) {
  for (const double size : {1e-300, 3.7e-9, 0.011, 1.0, 42.0, 9.99e12, 1e300}) {
    for (const double low : {-size / 3, 0.0, size * 2}) {
      const AxisRange range = linearRange(low, low + size);
      EXPECT_LE(range.low, low);
      EXPECT_GE(range.high, low + size);
      EXPECT_LE(range.size(), size * 1.3);
      EXPECT_GE(range.size() / range.bigStep, 2);
      EXPECT_LE(range.size() / range.bigStep, 8);
      EXPECT_GT(range.smallStep, 0);
      EXPECT_LT(range.smallStep, range.bigStep);
    }
  }
}

TEST(GraphAxisTest, ASingleValueHasARangeAroundIt) {
  for (const double value : {0.0, 7.0, -3e-5, 1e200}) {
    const AxisRange range = linearRange(value, value);
    EXPECT_LT(range.low, value);
    EXPECT_GT(range.high, value);
  }
}

TEST(GraphAxisTest, ValuesAtTheLimitsOfDoublesStayFinite) {
  constexpr double kMost = std::numeric_limits<double>::max();
  for (const AxisRange& range : {linearRange(-kMost, kMost), linearRange(kMost, kMost),
                                 linearRange(1e9, std::nextafter(1e9, 2e9))}) {
    EXPECT_TRUE(std::isfinite(range.bigStep));
    EXPECT_GT(range.smallStep, 0);
    EXPECT_LT(range.low, range.high);
  }
}

TEST(GraphAxisTest, LogarithmicRangesEndAtDecades) {
  EXPECT_EQ(numbersOf(decadeRange(0.2, 2.7)), Numbers(0, 3, 1, 1));
  EXPECT_EQ(numbersOf(decadeRange(-2.5, -1)), Numbers(-3, -1, 1, 1));
  EXPECT_EQ(numbersOf(decadeRange(2, 2)), Numbers(2, 3, 1, 1));
}

TEST(GraphAxisTest, UnitsStandInBrackets) {
  const auto split = [](const char* name) {
    const AxisTitle title = axisTitle(name);
    return title.name + '|' + title.unit;
  };
  EXPECT_EQ(split("Temperature [K]"), "Temperature|K");
  EXPECT_EQ(split("Flow (m3/h)"), "Flow|m3/h");
  EXPECT_EQ(split("JAN"), "JAN|");
  EXPECT_EQ(split("sin(x) of it"), "sin(x) of it|");
  EXPECT_EQ(split("[K]"), "[K]|");
  EXPECT_EQ(split("T[]"), "T|");
  EXPECT_EQ(split(""), "|");
}

}  // namespace
}  // namespace zyn::viewer
