#include "gcode/Interpreter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "support/MotionLog.h"

namespace zyn {
namespace {

using test::errorOf;
using test::kSkipUnknown;
using test::MotionLog;
using test::readProgram;

void expectEnd(std::string_view program, double x, double y, double z) {
  SCOPED_TRACE(program);
  const PathPoint end = readProgram(program).end;
  EXPECT_NEAR(end[0], x, 1e-12);
  EXPECT_NEAR(end[1], y, 1e-12);
  EXPECT_NEAR(end[2], z, 1e-12);
}

double speedOf(std::string_view program) { return readProgram(program).motions.back().speed; }

TEST(Interpreter, motionsWithTheirTypesSpeedsAndLines) {
  const MotionLog log = readProgram("G0 X10\nG1 Y5 F300\n\nZ-2\nZ1\nX1 Z0\nG0 Z5\n");
  EXPECT_EQ(log.types(), "012310");
  EXPECT_EQ(log.motions[1].to, (PathPoint{10, 5, 0}));
  EXPECT_EQ(log.motions[1].speed, 300);
  EXPECT_EQ(log.motions[0].speed, 0);
  EXPECT_EQ(log.motions[2].line, 4);
  EXPECT_EQ(log.end, (PathPoint{1, 5, 5}));
}

TEST(Interpreter, whatRoundingMovesIsStillAxial) {
  EXPECT_EQ(readProgram("G20 G0 X0.1 Z1\nG21 G1 X2.54 Z-1 F9").types(), "02");
}

TEST(Interpreter, motionsThatLeadNowhereAreNone) {
  EXPECT_EQ(readProgram("G0 X0 Y0 Z0\nG1 X0 F100\nG28\nG93 G1 X0 F2").types(), "");
}

TEST(Interpreter, motionNeedsACodeAndFeedsASpeed) {
  EXPECT_EQ(errorOf("Y2 X1"), "1:1 no code of motion is in effect");
  EXPECT_EQ(errorOf("G0 X1\nG80\n M3 X2"), "3:5 no code of motion is in effect");
  EXPECT_EQ(errorOf("G80 X1"), "1:5 no code of motion is in effect");
  EXPECT_EQ(errorOf("G1 X1"), "1:1 a feed without F");
  EXPECT_EQ(errorOf("G0 X1\nG1\nX2"), "3:1 a feed without F");
  EXPECT_EQ(errorOf("G1 X1 F0"), "1:1 a feed without F");
  EXPECT_EQ(errorOf("G2 X1 R1"), "1:1 a feed without F");
  EXPECT_EQ(errorOf("G1 X1 F-5"), "1:7 the feed rate is out of range");
  EXPECT_EQ(errorOf("G1\nG0\nG2\nF100\nG80"), "") << "nothing moves";
}

TEST(Interpreter, inches) {
  expectEnd("G20 G0 X1 Y-.5", 25.4, -12.7, 0);
  expectEnd("G0 X1\nG20 Y1\nG21 Z1", 1, 25.4, 1);
  expectEnd("G20 G91 G0 X1\nX1", 50.8, 0, 0);
  EXPECT_DOUBLE_EQ(speedOf("G20 G1 X1 F10"), 254) << "the units of the line";
  EXPECT_DOUBLE_EQ(speedOf("F100\nG20\nG1 X1"), 100) << "a feed stays what it was";
  EXPECT_DOUBLE_EQ(speedOf("G20 F1\nG21\nG1 X1"), 25.4);
  expectEnd("G20 G10 L2 P1 X1\nG0 X1\nG92 Y2\nY3", 50.8, 25.4, 0);
}

TEST(Interpreter, steps) {
  expectEnd("G91 G0 X1 Y2\nX1\nG90 Z3 Y1", 2, 1, 3);
  expectEnd("G92 X5\nG91 G0 X1\nG90 X5", 0, 0, 0);
}

TEST(Interpreter, origins) {
  expectEnd("G10 L2 P1 X10 Y20\nG0 X1", 11, 0, 0);
  expectEnd("G10 L2 P2 X10 Z5\nG0 X1 Z1\nG55 X1", 11, 0, 1);
  expectEnd("G10 L2 P6 Z-5\nG59 G0 Z1", 0, 0, -4);
  expectEnd("G10 L2 P3 X1\nG10 L2 P3 Y2\nG56 G0 X0 Y0", 1, 2, 0);
  expectEnd("G0 X10\nG10 L20 P1 X3\nX0", 7, 0, 0);
  expectEnd("G0 X10\nG92 X2\nG10 L20 P2 X3\nG55 X3", 10, 0, 0);
  expectEnd("#5221=4\nG0 X1", 5, 0, 0);
  expectEnd("G10 L2 P2 Y7\nG0 X#5242", 7, 0, 0);
  expectEnd("G57\nG0 X#5220", 4, 0, 0);
  expectEnd("G91 G10 L2 P1 X10\nG10 L2 P1 X10\nG90 G0 X0", 10, 0, 0);
}

TEST(Interpreter, originsNeedTheirWords) {
  EXPECT_EQ(errorOf("G10 L2 X1"), "1:1 G10 needs P");
  EXPECT_EQ(errorOf("G10 P1 X1"), "1:1 G10 needs L2 or L20");
  EXPECT_EQ(errorOf("G10 L3 P1 X1"), "1:1 G10 needs L2 or L20");
  EXPECT_EQ(errorOf("G10 L2 P7 X1"), "1:8 P is not a whole number from 1 to 6");
  EXPECT_EQ(errorOf("G10 L2 P0 X1"), "1:8 P is not a whole number from 1 to 6");
  EXPECT_EQ(errorOf("G10 L2 P1.5 X1"), "1:8 P is not a whole number from 1 to 6");
  EXPECT_EQ(errorOf("G10 L2 P1 R5 X1"), "1:11 nothing in the line uses R");
  EXPECT_EQ(errorOf("G1 G10 L2 P1 X1"), "1:1 G1 and G10 both take the axis words");
}

TEST(Interpreter, offsets) {
  expectEnd("G0 X10\nG92 X2\nX3", 11, 0, 0);
  expectEnd("G0 X10 Y5\nG92 X0 Y0\nX1 Y1\nG92 X0\nX1 Y0", 12, 5, 0);
  expectEnd("G10 L2 P1 X5\nG0 X5\nG92 X0\nX1", 11, 0, 0);
  expectEnd("G0 X10\nG92 X0\nG92.1\nX3", 3, 0, 0);
  expectEnd("G0 X10\nG92 X0\nG92.1\nG92.3\nX3", 3, 0, 0);
  expectEnd("G0 X10\nG92 X0\nG92.2\nX3", 3, 0, 0);
  expectEnd("G0 X10\nG92 X0\nG92.2\nG92.3\nX3", 13, 0, 0);
  expectEnd("G0 X10\nG92 X0\nG92.1 X3", 3, 0, 0);
  expectEnd("G0 X10\nG92 X4\nG0 Y#5211", 10, 6, 0);
  EXPECT_EQ(errorOf("G92"), "1:1 G92 needs X, Y or Z");
  EXPECT_EQ(errorOf("G0 G92 X1"), "1:1 G0 and G92 both take the axis words");
}

TEST(Interpreter, homes) {
  EXPECT_EQ(readProgram("G0 X1 Y2 Z3\nG28").end, (PathPoint{0, 0, 0}));
  EXPECT_EQ(readProgram("#5161=10 #5163=5\nG0 Y4\nG28").end, (PathPoint{10, 0, 5}));
  EXPECT_EQ(readProgram("#5181=1 #5182=2 #5183=3\nG30").end, (PathPoint{1, 2, 3}));
  const MotionLog log = readProgram("G0 X5 Y6 Z-1\nG91 G28 Z4");
  EXPECT_EQ(log.types(), "000");
  EXPECT_EQ(log.motions[1].to, (PathPoint{5, 6, 3}));
  EXPECT_EQ(log.end, (PathPoint{5, 6, 0}));
  EXPECT_EQ(readProgram("G10 L2 P1 X9\nG0 X1 Y2\nG28 X0").end, (PathPoint{0, 2, 0}));
  EXPECT_EQ(readProgram("G20\n#5161=10\nG28 X1").end, (PathPoint{10, 0, 0})) << "millimetres";
  EXPECT_EQ(readProgram("G0 G91 G28 Z1").types(), "00") << "usual at the end of programs";
  EXPECT_EQ(errorOf("G1 G28 X0 F1"), "1:1 G1 and G28 both take the axis words");
  EXPECT_EQ(errorOf("#5161=1 G28").substr(0, 3), "");
}

TEST(Interpreter, theMachineItself) {
  expectEnd("G10 L2 P1 X10\nG92 Y5\nG0 G53 X1 Y1", 1, 1, 0);
  expectEnd("G10 L2 P1 X10\nG0 G53 X1\nX1", 11, 0, 0);
  expectEnd("G0 X5 G91\nG53 X1", 1, 0, 0);
  EXPECT_EQ(readProgram("G1 F5\nG53 Z-1").types(), "2");
  EXPECT_EQ(errorOf("G2 F1\nG53 X1 I1"), "2:1 G53 needs G0 or G1");
  EXPECT_EQ(errorOf("G53 X1"), "1:5 no code of motion is in effect");
}

TEST(Interpreter, dwells) {
  const MotionLog log = readProgram("G4 P1.5\nG0 X1\nG4P.5 X2\nG4 P0");
  EXPECT_EQ(log.dwelled(), 2);
  EXPECT_EQ(log.dwellLines, (std::vector<int>{1, 3}));
  EXPECT_EQ(log.end[0], 2);
  EXPECT_EQ(errorOf("G4"), "1:1 G4 needs P");
  EXPECT_EQ(errorOf("G4 P-1"), "1:4 the seconds are out of range");
}

TEST(Interpreter, feedModes) {
  EXPECT_DOUBLE_EQ(speedOf("G93 G1 X30 Y40 F2"), 100);
  EXPECT_DOUBLE_EQ(speedOf("G20 G93 G1 X1 F2"), 50.8);
  EXPECT_DOUBLE_EQ(speedOf("G93 G2 X10 Y0 I5 F3"), 15 * std::acos(-1.0));
  EXPECT_DOUBLE_EQ(speedOf("G95 S1000 F0.2\nG1 X10"), 200);
  EXPECT_DOUBLE_EQ(speedOf("G20 G95 S100 G1 X10 F.1"), 254);
  EXPECT_DOUBLE_EQ(speedOf("G1 X1 F100\nG94 X2"), 100);
  EXPECT_EQ(errorOf("G93 G1 X1 F2\nX2"), "2:1 with G93 each feed needs F");
  EXPECT_EQ(errorOf("G1 X1 F100\nG93 F2 X2\nG94 X3"), "3:5 a feed without F");
  EXPECT_EQ(errorOf("G95 G1 X1 F1"), "1:5 with G95 a feed needs a spindle speed S");
  EXPECT_EQ(errorOf("S-1"), "1:1 the spindle speed is out of range");
  EXPECT_EQ(errorOf("T-1").substr(0, 3), "1:1");
  EXPECT_EQ(errorOf("T1.5").substr(0, 3), "1:1");
}

TEST(Interpreter, wordsWithoutUse) {
  for (const std::string word : {"I1", "J1", "K1", "L2", "P1", "Q1", "R1"}) {
    EXPECT_EQ(errorOf("G1 X1 F9 " + word), "1:10 nothing in the line uses " + word.substr(0, 1));
    EXPECT_EQ(errorOf(word), "1:1 nothing in the line uses " + word.substr(0, 1));
  }
  EXPECT_EQ(errorOf("G2 X2 R1 P3 F9"), "1:10 nothing in the line uses P");
}

TEST(Interpreter, whatIsTooFarOrTooFast) {
  EXPECT_EQ(errorOf("G0 X1000000000001"), "1:4 the coordinate is out of range");
  EXPECT_EQ(errorOf("G20 G0 X100000000000"), "1:8 the coordinate is out of range");
  EXPECT_EQ(errorOf("#5161=[10**300]\nG28").substr(0, 3), "2:1");
  EXPECT_EQ(errorOf("#5221=[10**300]\nG0 X1").substr(0, 3), "2:4");
  EXPECT_EQ(errorOf("F[10**300]").substr(0, 3), "1:1");
  EXPECT_EQ(errorOf("G1 X1 F[10**-300]").substr(0, 3), "1:1");
  EXPECT_EQ(errorOf("G4 P[10**300]").substr(0, 3), "1:4");
}

}  // namespace
}  // namespace zyn
