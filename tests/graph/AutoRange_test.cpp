#include "graph/AutoRange.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace zyn::test {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();

ValueRange linear(double min, double max) {
  return autoRange(AxisKind::kLinear, ValueRange{min, max});
}

ValueRange logarithmic(double min, double max) {
  return autoRange(AxisKind::kLog10, ValueRange{min, max});
}

TEST(AutoRangeTest, LeavesATwentiethOnEachSide) {
  EXPECT_EQ(linear(0, 100), (ValueRange{-5, 105}));
  EXPECT_EQ(linear(-20, -10), (ValueRange{-20.5, -9.5}));
  EXPECT_EQ(autoRange(AxisKind::kDate, ValueRange{45000, 45020}), (ValueRange{44999, 45021}));
}

TEST(AutoRangeTest, LeavesATwentiethOfTheDecades) {
  const ValueRange range = logarithmic(1, 1e20);
  EXPECT_NEAR(range.min, 0.1, 1e-12);
  EXPECT_NEAR(range.max / 1e21, 1, 1e-12);
}

TEST(AutoRangeTest, WithoutValuesIsAUnit) {
  EXPECT_EQ(autoRange(AxisKind::kLinear, {}), (ValueRange{0, 1}));
  EXPECT_EQ(autoRange(AxisKind::kDate, {}), (ValueRange{0, 1}));
  EXPECT_EQ(autoRange(AxisKind::kLog10, {}), (ValueRange{1, 10}));
}

TEST(AutoRangeTest, ASingleValueIsInItsMiddle) {
  EXPECT_EQ(linear(100, 100), (ValueRange{95, 105}));
  EXPECT_EQ(linear(-100, -100), (ValueRange{-105, -95}));
  EXPECT_EQ(linear(0, 0), (ValueRange{-1, 1}));
  EXPECT_EQ(autoRange(AxisKind::kDate, ValueRange{45000, 45000}), (ValueRange{44999.5, 45000.5}));
  const ValueRange range = logarithmic(10, 10);
  EXPECT_NEAR(range.max / range.min, 10, 1e-12);
  EXPECT_NEAR(std::sqrt(range.max * range.min), 10, 1e-12);
}

TEST(AutoRangeTest, RoundingErrorsAreNoSpan) {
  EXPECT_NEAR(linear(0.3, 0.1 * 3).min, 0.285, 1e-9);
  EXPECT_NEAR(linear(0.3, 0.1 * 3).max, 0.315, 1e-9);
  EXPECT_LT(logarithmic(0.3, 0.1 * 3).min, 0.2);
  EXPECT_NEAR(linear(1e15, 1e15 + 8).min, 1e15 - 0.4, 0.2);
}

TEST(AutoRangeTest, IsARangeWhateverTheValues) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> exponent(-323, 308);
  std::uniform_int_distribution<int> one(0, 9);
  const auto number = [&] {
    const int choice = one(random);
    const double size = choice == 0   ? kGreatest
                        : choice == 1 ? kLeast
                        : choice == 2 ? 0.0
                                      : std::pow(10.0, exponent(random));
    return one(random) < 5 ? size : -size;
  };
  for (int i = 0; i < 100000; ++i) {
    const double a = number();
    const double b = one(random) == 0 ? a : one(random) < 3 ? std::nextafter(a, 0.0) : number();
    const ValueRange values{std::min(a, b), std::max(a, b)};
    for (const AxisKind kind : {AxisKind::kLinear, AxisKind::kLog10, AxisKind::kDate}) {
      if (kind == AxisKind::kLog10 && !(values.min > 0)) {
        continue;
      }
      const ValueRange range = autoRange(kind, values);
      const AxisScale scale{.kind = kind, .min = range.min, .max = range.max};
      ASSERT_TRUE(scale.isValid()) << values.min << " " << values.max;
      ASSERT_TRUE(range.min <= values.min && range.max >= values.max);
    }
  }
}

}  // namespace
}  // namespace zyn::test
