#include "graph/AxisScale.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace zyn::test {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();

AxisScale scaleOf(AxisKind kind, double min, double max, bool isInverted = false,
                  double pixelFrom = 40, double pixelTo = 640) {
  return {kind, min, max, isInverted, pixelFrom, pixelTo};
}

TEST(AxisScaleTest, ShowsValuesEvenly) {
  const AxisScale scale = scaleOf(AxisKind::kLinear, -1, 2);
  EXPECT_DOUBLE_EQ(scale.pixelOf(0), 240);
  EXPECT_DOUBLE_EQ(scale.pixelOf(-2), -160);
  EXPECT_DOUBLE_EQ(scale.pixelOf(5), 1240);
  EXPECT_DOUBLE_EQ(scale.valueOf(440), 1);
  EXPECT_DOUBLE_EQ(scale.valueOf(1240), 5);
  EXPECT_EQ(scale.length(), 600);
}

TEST(AxisScaleTest, MayBeInvertedAndUpright) {
  EXPECT_DOUBLE_EQ(scaleOf(AxisKind::kLinear, 0, 3, true).pixelOf(1), 440);
  EXPECT_DOUBLE_EQ(scaleOf(AxisKind::kLinear, 0, 3, false, 640, 40).pixelOf(1), 440);
  EXPECT_DOUBLE_EQ(scaleOf(AxisKind::kLinear, 0, 3, true, 640, 40).pixelOf(1), 240);
  EXPECT_DOUBLE_EQ(scaleOf(AxisKind::kLinear, 0, 3, true, 640, 40).valueOf(240), 1);
}

TEST(AxisScaleTest, ShowsDecadesEvenlyOnALogarithmicAxis) {
  const AxisScale scale = scaleOf(AxisKind::kLog10, 0.1, 100);
  EXPECT_NEAR(scale.pixelOf(1), 240, 1e-9);
  EXPECT_NEAR(scale.pixelOf(1000), 840, 1e-9);
  EXPECT_NEAR(scale.valueOf(440), 10, 1e-12);
  EXPECT_NEAR(scale.pixelOf(2), 240 + 200 * std::log10(2.0), 1e-9);
  EXPECT_EQ(scale.coordinateOf(100), 2);
  EXPECT_EQ(scaleOf(AxisKind::kDate, 0, 1).coordinateOf(100), 100);
}

TEST(AxisScaleTest, KnowsWhatItCanShow) {
  const double nan = std::nan("");
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(scaleOf(AxisKind::kLinear, -kGreatest, kGreatest).isValid());
  EXPECT_TRUE(scaleOf(AxisKind::kLog10, kLeast, kGreatest).isValid());
  EXPECT_FALSE(scaleOf(AxisKind::kLinear, 1, 1).isValid());
  EXPECT_FALSE(scaleOf(AxisKind::kLinear, 2, 1).isValid());
  EXPECT_FALSE(scaleOf(AxisKind::kLinear, nan, 1).isValid());
  EXPECT_FALSE(scaleOf(AxisKind::kLinear, 0, infinity).isValid());
  EXPECT_FALSE(scaleOf(AxisKind::kLog10, 0, 1).isValid());
  EXPECT_TRUE(scaleOf(AxisKind::kLinear, 0, 1).canShow(-5));
  EXPECT_FALSE(scaleOf(AxisKind::kLog10, 1, 2).canShow(0));
  EXPECT_FALSE(scaleOf(AxisKind::kDate, 1, 2).canShow(nan));
}

TEST(AxisScaleTest, WithoutLengthIsOnePixel) {
  const AxisScale scale = scaleOf(AxisKind::kLinear, 1, 2, false, 7, 7);
  EXPECT_EQ(scale.pixelOf(1.5), 7);
  EXPECT_EQ(scale.valueOf(7), 1);
}

/// Ranges of every size, from a few neighbouring numbers to all numbers.
AxisScale randomScale(std::mt19937_64& random) {
  std::uniform_real_distribution<double> part(-1, 1);
  const bool isLogarithmic = part(random) > 0;
  AxisScale scale = scaleOf(isLogarithmic ? AxisKind::kLog10 : AxisKind::kLinear, 0, 0,
                            part(random) > 0, 1000 * part(random), 1000 * part(random));
  while (!scale.isValid()) {
    scale.min = std::pow(10.0, 308 * part(random)) * (isLogarithmic || part(random) > 0 ? 1 : -1);
    const double factor = std::pow(10.0, 15.5 * (part(random) - 1));
    scale.max = part(random) > 0 ? scale.min + std::abs(scale.min) * factor
                                 : std::pow(10.0, 308 * part(random));
  }
  return scale;
}

TEST(AxisScaleTest, IsExactAtItsEndsMonotoneAndFiniteForAnyRange) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> place(-3, 4);
  for (int i = 0; i < 20000; ++i) {
    const AxisScale scale = randomScale(random);
    const double first = scale.isInverted ? scale.pixelTo : scale.pixelFrom;
    const double last = scale.isInverted ? scale.pixelFrom : scale.pixelTo;
    ASSERT_EQ(scale.pixelOf(scale.min), first);
    ASSERT_EQ(scale.pixelOf(scale.max), last);
    ASSERT_EQ(scale.valueOf(first), scale.min);
    ASSERT_EQ(scale.valueOf(last), scale.max);
    const double a = scale.valueOf(std::lerp(first, last, place(random)));
    const double b = scale.valueOf(std::lerp(first, last, place(random)));
    ASSERT_TRUE(scale.canShow(a) && scale.canShow(b)) << scale.min << " " << scale.max;
    const double rise = (scale.pixelOf(b) - scale.pixelOf(a)) * (last - first);
    ASSERT_TRUE(std::isfinite(rise));
    // Logarithms are rounded, by far less than can be seen.
    ASSERT_GE(a < b ? rise : -rise, -1e-6) << scale.min << " " << scale.max << " " << a << " " << b;
    for (const double far : {kGreatest, kLeast, scale.max / 2, 1.0}) {
      ASSERT_TRUE(std::isfinite(scale.pixelOf(far)));
    }
  }
}

TEST(AxisScaleTest, PixelsAndValuesAreInverse) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> part(0, 1);
  for (int i = 0; i < 20000; ++i) {
    const AxisScale scale = randomScale(random);
    const double pixel = std::lerp(scale.pixelFrom, scale.pixelTo, part(random));
    const double value = scale.valueOf(pixel);
    ASSERT_TRUE(value >= scale.min && value <= scale.max);
    // Where few numbers lie between the ends, the nearest of them.
    const double neighbour = std::nextafter(value, value == scale.max ? scale.min : scale.max);
    const double grain = std::abs(scale.pixelOf(neighbour) - scale.pixelOf(value));
    ASSERT_NEAR(scale.pixelOf(value), pixel, 1e-9 + 2 * grain) << scale.min << " " << scale.max;
  }
}

}  // namespace
}  // namespace zyn::test
