#include "objects/scale/ScaleTicks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

namespace zyn::test {
namespace {

using Labels = std::vector<std::string>;

ColourScale scaleOf(double first, double last, bool isLogarithmic = false) {
  ColourScale scale;
  scale.range = {first, last};
  scale.isLogarithmic = isLogarithmic;
  return scale;
}

Labels labelsOf(const ColourScale& scale, int most) {
  Labels labels;
  for (const ScaleTick& tick : ticksOf(scale, most)) {
    labels.push_back(tick.label);
  }
  return labels;
}

TEST(ScaleTicksTest, AreMultiplesOfRoundStepsWithEqualDecimals) {
  EXPECT_EQ(labelsOf(scaleOf(0, 1), 6), (Labels{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
  EXPECT_EQ(labelsOf(scaleOf(0, 100), 5), (Labels{"0", "50", "100"}));
  EXPECT_EQ(labelsOf(scaleOf(0.031, 0.0689), 6), (Labels{"0.04", "0.05", "0.06"}));
  EXPECT_EQ(labelsOf(scaleOf(0.031, 0.0689), 8),
            (Labels{"0.035", "0.040", "0.045", "0.050", "0.055", "0.060", "0.065"}));
}

TEST(ScaleTicksTest, ZeroHasNoSign) {
  EXPECT_EQ(labelsOf(scaleOf(-0.3, 0.3), 7),
            (Labels{"-0.3", "-0.2", "-0.1", "0.0", "0.1", "0.2", "0.3"}));
  EXPECT_EQ(labelsOf(scaleOf(-1e-12, 0), 3), (Labels{"-1.0e-12", "-0.5e-12", "0"}));
}

TEST(ScaleTicksTest, LieWhereTheirValuesDo) {
  for (const ColourScale& scale : {scaleOf(-3, 17), scaleOf(17, -3), scaleOf(0.02, 50, true)}) {
    const std::vector<ScaleTick> ticks = ticksOf(scale, 20);
    EXPECT_GE(ticks.size(), 8U);
    for (const ScaleTick& tick : ticks) {
      EXPECT_NEAR(tick.place, scale.placeOf(std::stod(tick.label)).value(), 1e-9) << tick.label;
    }
  }
}

TEST(ScaleTicksTest, LargeAndSmallNumbersHaveAPowerOfTen) {
  EXPECT_EQ(labelsOf(scaleOf(0, 2e9), 6), (Labels{"0", "0.5e9", "1.0e9", "1.5e9", "2.0e9"}));
  EXPECT_EQ(labelsOf(scaleOf(1e-9, 3e-9), 3), (Labels{"1e-9", "2e-9", "3e-9"}));
  EXPECT_EQ(labelsOf(scaleOf(-1.7e308, 1.7e308), 3), (Labels{"-1e308", "0", "1e308"}));
}

TEST(ScaleTicksTest, LogarithmicScalesHaveDecades) {
  EXPECT_EQ(labelsOf(scaleOf(0.01, 1000, true), 8),
            (Labels{"0.01", "0.1", "1", "10", "100", "1000"}));
  EXPECT_EQ(labelsOf(scaleOf(1000, 0.01, true), 8),
            (Labels{"0.01", "0.1", "1", "10", "100", "1000"}));
  EXPECT_EQ(labelsOf(scaleOf(1, 100, true), 7), (Labels{"1", "2", "5", "10", "20", "50", "100"}));
  EXPECT_EQ(labelsOf(scaleOf(1e-12, 1e12, true), 5),
            (Labels{"1e-10", "1e-5", "1e0", "1e5", "1e10"}));
}

TEST(ScaleTicksTest, WithinADecadeALogarithmicScaleHasSteps) {
  EXPECT_EQ(labelsOf(scaleOf(2.1, 2.9, true), 5), (Labels{"2.2", "2.4", "2.6", "2.8"}));
}

TEST(ScaleTicksTest, NoneWhereNothingIsShown) {
  EXPECT_TRUE(ticksOf(scaleOf(1, 1), 5).empty());
  EXPECT_TRUE(ticksOf(scaleOf(1, std::nextafter(1.0, 2.0)), 5).empty());
  EXPECT_TRUE(ticksOf(scaleOf(0, 1, true), 5).empty());
  EXPECT_TRUE(ticksOf(scaleOf(0, 1), 0).empty());
  EXPECT_TRUE(ticksOf(scaleOf(0, 1e-300), 5).empty());
}

TEST(ScaleTicksTest, AreNeverTooManyNorAlike) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> part(-1, 1);
  std::uniform_int_distribution<int> exponent(-12, 12);
  for (int i = 0; i < 2000; ++i) {
    const double centre = part(random) * std::pow(10, exponent(random));
    const double half = part(random) * std::pow(10, exponent(random));
    const bool isLogarithmic = i % 3 == 0;
    const ColourScale scale = isLogarithmic ? scaleOf(std::abs(centre), std::abs(half), true)
                                            : scaleOf(centre - half, centre + half);
    const int most = 3 + i % 10;
    const Labels labels = labelsOf(scale, most);
    EXPECT_LE(labels.size(), static_cast<std::size_t>(most));
    EXPECT_EQ(std::set<std::string>(labels.begin(), labels.end()).size(), labels.size())
        << scale.range.first << " to " << scale.range.last;
    for (const std::string& label : labels) {
      EXPECT_FALSE(label[0] == '-' && std::stod(label) == 0) << label;
    }
    if (std::abs(half) > 1e-6 * std::abs(centre) && !isLogarithmic && most >= 6) {
      EXPECT_GE(labels.size(), 2U) << centre << " " << half << " " << most;
    }
  }
}

}  // namespace
}  // namespace zyn::test
