#include "toolpath/PathArc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace zyn {
namespace {

constexpr double kPi = std::numbers::pi;

TEST(PathArc, lengthOfAQuarterInEachPlane) {
  EXPECT_DOUBLE_EQ(arcLength({10, 0, 0}, {{0, 0, 7}, {0, 10, 0}, 2, kPi / 2}), 5 * kPi);
  EXPECT_DOUBLE_EQ(arcLength({0, 0, 10}, {{0, 7, 0}, {10, 0, 0}, 1, kPi / 2}), 5 * kPi);
  EXPECT_DOUBLE_EQ(arcLength({0, 10, 0}, {{7, 0, 0}, {0, 0, 10}, 0, -1.5 * kPi}), 15 * kPi);
}

TEST(PathArc, lengthOfAHelixOfSeveralTurns) {
  EXPECT_DOUBLE_EQ(arcLength({3, 0, 0}, {{0, 0, 0}, {3, 0, 5}, 2, 6 * kPi}),
                   std::hypot(18 * kPi, 5));
}

/// The sum of many short chords.
double lengthInSteps(double r0, double r1, double rise, double sweep) {
  constexpr int kSteps = 200000;
  double sum = 0;
  double x = r0;
  double y = 0;
  for (int i = 1; i <= kSteps; ++i) {
    const double t = static_cast<double>(i) / kSteps;
    const double r = r0 + (r1 - r0) * t;
    const double nextX = r * std::cos(sweep * t);
    const double nextY = r * std::sin(sweep * t);
    sum += std::hypot(nextX - x, nextY - y, rise / kSteps);
    x = nextX;
    y = nextY;
  }
  return sum;
}

TEST(PathArc, lengthOfASpiral) {
  for (const double r1 : {10.0, 10.001, 12.0, 40.0, 0.0}) {
    for (const double rise : {0.0, 3.0}) {
      const PathPoint end{r1 * std::cos(2.0), r1 * std::sin(2.0), rise};
      const double length = arcLength({10, 0, 0}, {{0, 0, 0}, end, 2, 2.0});
      EXPECT_NEAR(length, lengthInSteps(10, r1, rise, 2.0), 1e-8 * length);
    }
  }
}

TEST(PathArc, lengthOfARadiusThatHardlyChanges) {
  EXPECT_DOUBLE_EQ(arcLength({10, 0, 0}, {{0, 0, 0}, {-10.00000000001, 0, 0}, 2, kPi}),
                   10.000000000005 * kPi);
}

TEST(PathArc, lengthAlongTheAxisItself) {
  EXPECT_DOUBLE_EQ(arcLength({0, 0, 1}, {{0, 0, 0}, {0, 0, 4}, 2, kPi}), 3);
}

}  // namespace
}  // namespace zyn
