#include "gcode/ArcWords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "support/MotionLog.h"

namespace zyn {
namespace {

using test::errorOf;
using test::Motion;
using test::readProgram;

constexpr double kPi = std::numbers::pi;

/// The last motion of a program, which is an arc.
Motion arcOf(const std::string& program) {
  const Motion motion = readProgram("F100\n" + program).motions.back();
  EXPECT_EQ(motion.type, segment_type::kArc) << program;
  return motion;
}

void expectArc(const std::string& program, int axis, double sweep, const PathPoint& centre) {
  SCOPED_TRACE(program);
  const Motion motion = arcOf(program);
  EXPECT_EQ(motion.arc.axis, axis);
  EXPECT_NEAR(motion.arc.sweep, sweep, 1e-12);
  for (std::size_t side = 0; side < 3; ++side) {
    if (static_cast<int>(side) != axis) {
      EXPECT_NEAR(motion.arc.centre[side], centre[side], 1e-12);
    }
  }
}

TEST(ArcWords, quartersInEachPlaneAndSense) {
  expectArc("G0 X10\nG3 X0 Y10 I-10", 2, kPi / 2, {0, 0, 0});
  expectArc("G0 X10\nG2 X0 Y10 I-10", 2, -1.5 * kPi, {0, 0, 0});
  expectArc("G0 Z10\nG18 G3 X10 Z0 K-10", 1, kPi / 2, {0, 0, 0});
  expectArc("G0 X10\nG18 G2 X0 Z10 I-10", 1, -kPi / 2, {0, 0, 0});
  expectArc("G0 Y10\nG19 G3 Y0 Z10 J-10", 0, kPi / 2, {0, 0, 0});
  expectArc("G0 Z10\nG19 G2 Y10 Z0 K-10", 0, -kPi / 2, {0, 0, 0});
}

TEST(ArcWords, fullCirclesAndHelices) {
  expectArc("G2 I5", 2, -2 * kPi, {5, 0, 0});
  expectArc("G3 X0 Y0 J-5", 2, 2 * kPi, {0, -5, 0});
  expectArc("G18 G3 K2", 1, 2 * kPi, {0, 0, 2});
  const Motion helix = arcOf("G0 Z1\nG2 X0 Y0 Z-3 I5");
  EXPECT_EQ(helix.to, (PathPoint{0, 0, -3}));
  EXPECT_DOUBLE_EQ(helix.length, std::hypot(10 * kPi, 4));
  expectArc("G2 I5\nJ5", 2, -2 * kPi, {0, 5, 0});
  expectArc("G0 X[.1+.2]\nG3 X.3 I1", 2, 2 * kPi, {1.3, 0, 0});
}

TEST(ArcWords, centresInStepsUnitsAndOffsets) {
  expectArc("G10 L2 P1 X5 Y5\nG0 X0 Y0\nG3 X2 Y0 I1", 2, kPi, {6, 5, 0});
  expectArc("G10 L2 P1 X5 Y5\nG0 X0 Y0\nG90.1 G3 X2 Y0 I1 J0", 2, kPi, {6, 5, 0});
  expectArc("G0 X1\nG91 G3 X2 I1", 2, kPi, {2, 0, 0});
  expectArc("G20 G3 X2 I1", 2, kPi, {25.4, 0, 0});
  expectArc("G3 X2 I1 K0", 2, kPi, {1, 0, 0});
}

TEST(ArcWords, radii) {
  expectArc("G2 X10 Y10 R10", 2, -kPi / 2, {10, 0, 0});
  expectArc("G2 X10 Y10 R-10", 2, -1.5 * kPi, {0, 10, 0});
  expectArc("G3 X10 Y10 R10", 2, kPi / 2, {0, 10, 0});
  expectArc("G3 X10 Y10 R-10", 2, 1.5 * kPi, {10, 0, 0});
  expectArc("G3 X10 R5", 2, kPi, {5, 0, 0});
  expectArc("G2 X10 R-5", 2, -kPi, {5, 0, 0});
  expectArc("G18 G2 X10 Z10 R10", 1, -kPi / 2, {0, 0, 10});
  expectArc("G19 G3 Y10 Z10 R10", 0, kPi / 2, {0, 0, 10});
  expectArc("G20 G3 X2 R1", 2, kPi, {25.4, 0, 0});
}

TEST(ArcWords, aSmallTurnOnALargeCircle) {
  EXPECT_NEAR(arcOf("G3 X0.001 R1000").length, 0.001, 1e-15);
  EXPECT_NEAR(arcOf("G3 X0.001 I0.0005 J1000").length, 0.001, 1e-15);
}

TEST(ArcWords, radiiThatNearlyMeetAreBlended) {
  EXPECT_EQ(arcOf("G3 X0 Y10.01 I0 J5").to, (PathPoint{0, 10.01, 0}));
  EXPECT_EQ(errorOf("G3 X0 Y10.011 J5 F1"),
            "1:1 the radius of the arc is 5 at its start and 5.011 at its end");
  EXPECT_EQ(arcOf("G3 X0 Y2001 I0 J1000").to[1], 2001);
  EXPECT_NE(errorOf("G3 X0 Y2001.1 J1000 F1"), "");
  EXPECT_EQ(arcOf("G3 X10.01 R5").to[0], 10.01) << "half a circle";
  EXPECT_EQ(errorOf("G3 X10.1 R5 F1"),
            "1:1 the radius of the arc is 5, half the way to its end is 5.05");
}

TEST(ArcWords, errors) {
  EXPECT_EQ(errorOf("G2 X0 Y0 R5 F1"), "1:1 an arc with R ends where it starts");
  EXPECT_EQ(errorOf("G2 Z5 R5 F1"), "1:1 an arc with R ends where it starts");
  EXPECT_EQ(errorOf("G2 F1\n Y0 R5"), "2:2 an arc with R ends where it starts");
  EXPECT_EQ(errorOf("G2 X1 F1"), "1:1 an arc needs its centre or R");
  EXPECT_EQ(errorOf("G2 X1 K1 F1"), "1:1 an arc needs its centre or R");
  EXPECT_EQ(errorOf("G2 X2 I1 K1 F1"), "1:10 nothing in the line uses K");
  EXPECT_EQ(errorOf("G2 X2 I1 R1 F1"), "1:10 an arc has R or a centre, not both");
  EXPECT_EQ(errorOf("G2 X1 I0 J0 F1"), "1:1 the radius of the arc is 0");
  EXPECT_EQ(errorOf("G2 X1 R0 F1"),
            "1:1 the radius of the arc is 0, half the way to its end is 0.5");
  EXPECT_EQ(errorOf("G90.1 G2 X2 I1 F1"),
            "1:7 with G90.1 an arc needs both coordinates of its centre, or R");
  EXPECT_EQ(errorOf("G2 X1000000000000 I500000000000.1 J-1 F1").substr(0, 3), "");
}

}  // namespace
}  // namespace zyn
