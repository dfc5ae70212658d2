#include "gcode/DrillCycle.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/MotionLog.h"

namespace zyn {
namespace {

using test::errorOf;
using test::Motion;
using test::MotionLog;
using test::readProgram;

/// The places along z that the motions of a program end at, and its types.
std::vector<double> depths(const std::string& program, const GCodeOptions& options = {}) {
  std::vector<double> result;
  for (const Motion& motion : readProgram(program, options).motions) {
    result.push_back(motion.to[2]);
  }
  return result;
}

using Depths = std::vector<double>;

TEST(DrillCycle, oneHole) {
  const MotionLog log = readProgram("G0 Z10\nG81 X1 Y2 Z-3 R2 F50");
  EXPECT_EQ(log.types(), "00020");
  EXPECT_EQ(log.motions[1].to, (PathPoint{1, 2, 10}));
  EXPECT_EQ(log.motions[2].to, (PathPoint{1, 2, 2}));
  EXPECT_EQ(log.motions[3].to, (PathPoint{1, 2, -3}));
  EXPECT_EQ(log.motions[3].speed, 50);
  EXPECT_EQ(log.end, (PathPoint{1, 2, 10}));
}

TEST(DrillCycle, fromBelowTheClearance) {
  EXPECT_EQ(depths("G81 X1 Z-3 R2 F50"), (Depths{2, 2, -3, 2}));
  EXPECT_EQ(depths("G99 G81 Z-3 R2 F50"), (Depths{2, -3, 2}));
}

TEST(DrillCycle, seriesReturnToTheLevelBeforeItOrToR) {
  EXPECT_EQ(depths("G0 Z10\nG99 G81 X1 Z-3 R2 F50\nX2\nG98 X3"),
            (Depths{10, 10, 2, -3, 2, 2, -3, 2, 2, -3, 10}));
  EXPECT_EQ(depths("G0 Z10\nG81 X1 Z-3 R2 F50\nX2 Z-4\nX3 R3"),
            (Depths{10, 10, 2, -3, 10, 10, 2, -4, 10, 10, 3, -4, 10}));
  EXPECT_EQ(depths("G0 Z10\nG99 G81 X1 Z-3 R2 F50\nG0 Z5\nG98 G81 X2 Z-3 R2"),
            (Depths{10, 10, 2, -3, 2, 5, 5, 2, -3, 5}));
}

TEST(DrillCycle, repeats) {
  const MotionLog log = readProgram("G0 X1 Y2 Z3\nG91 G99 G81 X4 Y5 Z-.6 R1.8 L3 F9");
  EXPECT_EQ(log.types(),
            "0"
            "0"
            "020"
            "020"
            "020");
  EXPECT_NEAR(log.motions[1].to[2], 4.8, 1e-12);
  EXPECT_NEAR(log.motions[3].to[2], 4.2, 1e-12);
  EXPECT_NEAR(log.end[0], 13, 1e-12);
  EXPECT_NEAR(log.end[1], 17, 1e-12);
  EXPECT_NEAR(log.end[2], 4.8, 1e-12);
  EXPECT_EQ(readProgram("G81 X1 Z-1 R1 L2 F9").types(), "002020") << "twice the same hole";
}

TEST(DrillCycle, inStepsRIsFromWhereTheToolIs) {
  EXPECT_EQ(depths("G0 Z10\nG91 G81 X1 Z-5 R-8 F9"), (Depths{10, 10, 2, -3, 10}));
  EXPECT_EQ(depths("G0 Z10\nG91 G99 G81 X1 Z-5 R-8 F9\nX1\nX1 Z-4 R1"),
            (Depths{10, 10, 2, -3, 2, 2, -3, 2, 3, 3, -1, 3}))
      << "R that is not given again stays where it was";
}

TEST(DrillCycle, dwellsAtTheBottom) {
  const MotionLog log = readProgram("G82 X1 Z-3 R2 P1.5 F50\nX2\nX3 P2");
  EXPECT_EQ(log.dwelled(), 5);
  EXPECT_EQ(log.dwellLines, (std::vector<int>{1, 2, 3}));
}

TEST(DrillCycle, pecks) {
  EXPECT_EQ(depths("G99 G83 X1 Z-8 R2 Q4 F50"),
            (Depths{2, 2, -2, 2, -1.746, -6, 2, -5.746, -8, 2}));
  EXPECT_EQ(depths("G99 G73 X1 Z-8 R2 Q4 F50"), (Depths{2, 2, -2, -1.746, -6, -5.746, -8, 2}));
  EXPECT_EQ(depths("G99 G73 Z-8 R2 Q4 F50", {.peckRetract = 1}),
            (Depths{2, -2, -1, -6, -5, -8, 2}));
  EXPECT_EQ(readProgram("G83 X1 Z-8 R2 Q4 F50").types(), "0020020020");
}

TEST(DrillCycle, roundingMakesNoFurtherPeck) {
  EXPECT_EQ(readProgram("G99 G73 Z-.2 R1 Q.3 F50").types(),
            "0202020"
            "20");
  EXPECT_EQ(readProgram("G99 G73 Z-8 R2 Q10 F50").types(), "020");
  EXPECT_EQ(readProgram("G99 G73 Z-8 R2 Q11 F50").types(), "020");
}

TEST(DrillCycle, inOtherPlanesAndUnits) {
  const MotionLog log = readProgram("G0 Y10\nG18 G99 G81 X1 Z2 Y-3 R2 F50");
  EXPECT_EQ(log.motions[1].to, (PathPoint{1, 10, 2}));
  EXPECT_EQ(log.motions[3].to, (PathPoint{1, -3, 2}));
  EXPECT_EQ(log.end, (PathPoint{1, 2, 2}));
  EXPECT_EQ(readProgram("G19 G99 G81 Y1 Z2 X-3 R2 F50").end, (PathPoint{2, 1, 2}));
  EXPECT_EQ(readProgram("G10 L2 P1 Z5\nG20 G99 G81 X1 Z-1 R1 F50").end, (PathPoint{25.4, 0, 30.4}));
}

TEST(DrillCycle, errors) {
  EXPECT_EQ(errorOf("G81 X1 R1 F1"), "1:1 G81 needs Z");
  EXPECT_EQ(errorOf("G81 X1 Z-1 F1"), "1:1 G81 needs R");
  EXPECT_EQ(errorOf("G81 X1 Z-1 R1"), "1:1 a feed without F");
  EXPECT_EQ(errorOf("G82 X1 Z-1 R1 F1"), "1:1 G82 needs P");
  EXPECT_EQ(errorOf("G82 X1 Z-1 R1 P-1 F1"), "1:15 P is out of range");
  EXPECT_EQ(errorOf("G83 X1 Z-1 R1 F1"), "1:1 G83 needs Q");
  EXPECT_EQ(errorOf("G73 X1 Z-1 R1 Q0 F1"), "1:15 Q is out of range");
  EXPECT_EQ(errorOf("G81 X1 Z2 R1 F1"), "1:1 the bottom of the hole lies above R");
  EXPECT_EQ(errorOf("G81 R1 F1"), "1:1 G81 needs X, Y or Z");
  EXPECT_EQ(errorOf("G81 X1 Z-1 R1 L0 F1"), "1:15 L is not a whole number from 1 to 1000000");
  EXPECT_EQ(errorOf("G93 G81 X1 Z-1 R1 F1"), "1:5 cycles do not go with G93");
  EXPECT_EQ(errorOf("G81 X1 Z-1 R1 F1\nG80\nG81 X2"), "3:1 G81 needs R");
  EXPECT_EQ(errorOf("G81 X1 Z-1 R1 F1\nR2"), "2:1 nothing in the line uses R");
  EXPECT_EQ(errorOf("G81 X1 Z-1 R1 F1\nG18 X2"), "2:5 G81 needs R");
  EXPECT_EQ(errorOf("G81 X1 Z-1 R1 Q1 F1"), "1:15 nothing in the line uses Q");
}

TEST(DrillCycle, backsOffNoFartherThanCoordinatesReach) {
  const std::string program = "G83 X1 Z-5 R2 Q2 F100";
  EXPECT_EQ(errorOf(program, {.peckRetract = 1e300}), "1:1 the coordinate is out of range");
  EXPECT_EQ(errorOf(program, {.peckRetract = 1e11}), "");
}

TEST(DrillCycle, theNumberOfMotionsIsBounded) {
  const std::string cause = "1:5 the cycles of the program make too many motions";
  EXPECT_EQ(errorOf("G91 G81 X1 Z-1 R1 F1 L1000000"), cause);
  EXPECT_EQ(errorOf("G91 G83 X1 Z-1 R1 F1 Q0.0000001"), cause);
  EXPECT_EQ(errorOf("G91 G83 X1 Z-1 R1 F1 Q[10**-300]"), cause);
  std::string program = "G99 G81 Z-1 R1 F1\n";
  for (int i = 0; i < 10; ++i) {
    program += "Z-1 L100000\n";
  }
  EXPECT_EQ(errorOf(program).substr(0, 2), "4:");
}

}  // namespace
}  // namespace zyn
