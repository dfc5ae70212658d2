#include "view2d/Multiples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMany = 1e6;

std::vector<double> valuesOf(const Multiples& multiples) {
  std::vector<double> values;
  for (int i = 0; i < multiples.count(); ++i) {
    values.push_back(multiples.value(i));
  }
  return values;
}

std::vector<double> between(double min, double max, double step, double most = kMany) {
  return valuesOf(Multiples::between(min, max, step, most));
}

TEST(MultiplesTest, StartAtTheLowerBoundAndEndBeforeTheUpper) {
  EXPECT_EQ(between(0, 10, 2), (std::vector<double>{0, 2, 4, 6, 8}));
  EXPECT_EQ(between(0.5, 2, 0.5), (std::vector<double>{0.5, 1, 1.5}));
  EXPECT_EQ(between(-3, 3.5, 1.5), (std::vector<double>{-3, -1.5, 0, 1.5, 3}));
}

TEST(MultiplesTest, BoundsNeedNotBeMultiples) {
  EXPECT_EQ(between(0.1, 9.9, 4), (std::vector<double>{4, 8}));
  EXPECT_EQ(between(-0.1, 0.1, 4), (std::vector<double>{0}));
  EXPECT_EQ(between(1, 3, 4), (std::vector<double>{}));
}

TEST(MultiplesTest, RoundingMovesNoBound) {
  for (int n = -50; n <= 50; ++n) {
    const double bound = n / 10.0;
    const Multiples multiples = Multiples::between(bound, bound + 1, 0.1, kMany);
    EXPECT_EQ(multiples.count(), 10) << bound;
    EXPECT_EQ(multiples.factor(0), n) << bound;
  }
}

TEST(MultiplesTest, ZeroIsExactAndPositive) {
  for (const double value : between(-1, 1, 0.1)) {
    if (std::abs(value) < 0.05) {
      EXPECT_EQ(value, 0);
      EXPECT_FALSE(std::signbit(value));
    }
  }
}

TEST(MultiplesTest, UselessStepsGiveNone) {
  for (const double step : {0.0, -0.0, -1.0, kNaN, kInfinity, -kInfinity, 5e-324, 1e-300, 1e-16}) {
    EXPECT_EQ(Multiples::between(0, 1, step, 1e300).count(), 0) << step;
  }
  EXPECT_EQ(between(1e6, 1e6 + 1, 1e-12), (std::vector<double>{}));
}

TEST(MultiplesTest, UselessBoundsGiveNone) {
  for (const double bound : {kNaN, kInfinity, -kInfinity}) {
    EXPECT_EQ(Multiples::between(bound, 1, 1, kMany).count(), 0) << bound;
    EXPECT_EQ(Multiples::between(0, bound, 1, kMany).count(), 0) << bound;
  }
  EXPECT_EQ(Multiples::between(1, 0, 0.1, kMany).count(), 0);
  EXPECT_EQ(Multiples::between(1, 1, 0.1, kMany).count(), 0);
  EXPECT_EQ(Multiples::between(-1e308, 1e308, 1e-308, kMany).count(), 0);
}

TEST(MultiplesTest, AStepBeyondTheBoundsGivesZeroAtMost) {
  EXPECT_EQ(between(-1, 1, 1e300), (std::vector<double>{0}));
  EXPECT_EQ(between(1, 2, 1e300), (std::vector<double>{}));
}

TEST(MultiplesTest, ThereAreAllOrNone) {
  EXPECT_EQ(Multiples::between(0, 100, 1, 100).count(), 100);
  EXPECT_EQ(Multiples::between(0, 100, 1, 99.9).count(), 0);
  EXPECT_EQ(Multiples::between(0, 100, 1, 0).count(), 0);
  EXPECT_EQ(Multiples::between(0, 100, 1, kNaN).count(), 0);
  EXPECT_EQ(Multiples::between(0, 1e12, 1, kInfinity).count(), 0);
}

TEST(MultiplesTest, WorkFarFromZeroAndAtAnySize) {
  const std::vector<double> far = between(1e6, 1e6 + 1, 0.25);
  EXPECT_EQ(far, (std::vector<double>{1e6, 1e6 + 0.25, 1e6 + 0.5, 1e6 + 0.75}));
  EXPECT_EQ(between(0, 1e-9, 2.5e-10).size(), 4U);
  EXPECT_EQ(between(-1e12, 1e12, 5e11), (std::vector<double>{-1e12, -5e11, 0, 5e11}));
  EXPECT_EQ(between(1e-300, 5e-300, 1e-300).size(), 4U);
}

}  // namespace
}  // namespace zyn::test
