#include "gcode/BlockReader.h"

#include <gtest/gtest.h>

#include <string>

#include "support/MotionLog.h"

namespace zyn {
namespace {

using test::errorOf;
using test::kSkipUnknown;
using test::MotionLog;
using test::readProgram;

TEST(BlockReader, wordsInAnyOrder) {
  const MotionLog log = readProgram("n10 F100 z3 X1 g1 Y2");
  EXPECT_EQ(log.end, (PathPoint{1, 2, 3}));
}

TEST(BlockReader, comments) {
  EXPECT_EQ(readProgram("G0 (first) X1 ( second ; of it ) Y2 ; the ( rest").end,
            (PathPoint{1, 2, 0}));
  EXPECT_EQ(errorOf("G0 X1 (no end\nX2"), "1:7 the comment has no end");
  EXPECT_EQ(errorOf("G0 (a (b) c)"), "1:7 a comment within a comment");
}

TEST(BlockReader, whatIsNoWord) {
  EXPECT_EQ(errorOf("G0 X1\nG0 ?"), "2:4 a word cannot begin with this character");
  EXPECT_EQ(errorOf("G0 X1 =5"), "1:7 a word cannot begin with this character");
  EXPECT_EQ(errorOf(std::string("G0\0X1", 5)), "1:3 a word cannot begin with this character");
  EXPECT_EQ(errorOf("G0 (\xC3\xA9\xE2\x82\xAC) ?"), "1:9 a word cannot begin with this character")
      << "columns count characters, not bytes";
}

TEST(BlockReader, lineNumbers) {
  EXPECT_EQ(readProgram("N0010G0X1\nn 99999 Y2\nN1.5 Z3").end, (PathPoint{1, 2, 3}));
  EXPECT_EQ(errorOf("G0 N5 X1"), "1:4 N is not at the begin of the line");
  EXPECT_EQ(errorOf("N G0"), "1:1 the number of the line is missing");
}

TEST(BlockReader, oneOfEachGroupAndLetter) {
  EXPECT_EQ(errorOf("G0 G1 X1"), "1:4 G0 and G1 in a line");
  EXPECT_EQ(errorOf("G17 G18"), "1:5 G17 and G18 in a line");
  EXPECT_EQ(errorOf("G90 X1 G91"), "1:8 G90 and G91 in a line");
  EXPECT_EQ(errorOf("G20 G21"), "1:5 G20 and G21 in a line");
  EXPECT_EQ(errorOf("G54 G59"), "1:5 G54 and G59 in a line");
  EXPECT_EQ(errorOf("G90.1 G91.1"), "1:7 G90.1 and G91.1 in a line");
  EXPECT_EQ(errorOf("G4 P1 G92.1"), "1:7 G4 and G92.1 in a line");
  EXPECT_EQ(errorOf("G93 G94"), "1:5 G93 and G94 in a line");
  EXPECT_EQ(errorOf("G98 G99"), "1:5 G98 and G99 in a line");
  EXPECT_EQ(errorOf("M3 M5"), "1:4 M3 and M5 in a line");
  EXPECT_EQ(errorOf("M2 M30"), "1:4 M2 and M30 in a line");
  EXPECT_EQ(errorOf("G0 X1 Y2 X3"), "1:10 X twice in a line");
}

TEST(BlockReader, whatMayStandTogether) {
  EXPECT_EQ(errorOf("G0 G17 G21 G40 G49 G54 G64 G69 G80 G90 G91.1 G94 G97 G98 G15"), "");
  EXPECT_EQ(errorOf("T1 M6 S1000 M3 M7 M8 M48 G43 H1 D1"), "");
  EXPECT_EQ(errorOf("M0\nM1\nM60\nM4\nM5\nM9\nM49\nG61\nG61.1\nG64 P0.01 Q0.02"), "");
}

TEST(BlockReader, refused) {
  EXPECT_EQ(errorOf("G0 X1\nO100 sub").substr(0, 3), "2:1");
  EXPECT_NE(errorOf("O1001 (BRACKET)").find("leave out the line"), std::string::npos);
  EXPECT_EQ(errorOf("M98 P1"), "1:1 M98 is not supported");
  EXPECT_EQ(errorOf("G1 G41 D1"), "1:4 G41 is not supported");
  EXPECT_EQ(errorOf("G42"), "1:1 G42 is not supported");
  for (const char* const cycle : {"G84", "G85", "G86", "G87", "G88", "G89"}) {
    EXPECT_EQ(errorOf(cycle), "1:1 " + std::string(cycle) + " is not supported");
    EXPECT_NE(errorOf(cycle, kSkipUnknown), "");
  }
  for (const std::string axis : {"A", "B", "C"}) {
    EXPECT_EQ(errorOf("G0 " + axis + "90"), "1:4 the rotary axis " + axis + " is not supported");
    EXPECT_NE(errorOf("G0 " + axis + "90", kSkipUnknown), "");
  }
  EXPECT_NE(errorOf("M98 P1", kSkipUnknown), "");
  EXPECT_NE(errorOf("G41", kSkipUnknown), "");
  EXPECT_NE(errorOf("O1", kSkipUnknown), "");
  EXPECT_NE(errorOf("o <name> sub", kSkipUnknown), "");
  EXPECT_NE(errorOf("N5 O#1 if [1]", kSkipUnknown), "");
  EXPECT_EQ(errorOf("OFFSET_ALL", kSkipUnknown), "");
}

TEST(BlockReader, unknownCodesAreRefused) {
  EXPECT_EQ(errorOf("G0 X1\n  G123"), "2:3 unknown code G123");
  EXPECT_EQ(errorOf("G5.1"), "1:1 unknown code G5.1");
  EXPECT_EQ(errorOf("M104 S200"), "1:1 unknown code M104");
  EXPECT_EQ(errorOf("M3.1"), "1:1 unknown code M3.1");
  EXPECT_EQ(errorOf("G-1"), "1:1 unknown code");
  EXPECT_EQ(errorOf("G1.05"), "1:1 unknown code");
  EXPECT_EQ(errorOf("G[10**30]"), "1:1 unknown code");
  EXPECT_EQ(errorOf("G0 E5"), "1:4 unknown word E");
  EXPECT_EQ(errorOf("G0 U5"), "1:4 unknown word U");
  EXPECT_EQ(errorOf("PRINT_START"), "1:1 a number is missing");
}

TEST(BlockReader, codesMayBeComputed) {
  EXPECT_EQ(readProgram("#1=1\nG#1 X2 F[50*2] (G1)\nG[#1-1] Y3").types(), "10");
}

MotionLog skipping(const char* program) { return readProgram(program, kSkipUnknown); }

TEST(BlockReader, skippedCodesMoveNothing) {
  for (const char* const line :
       {"G123 X5 Y6", "X5 G123", "M123 X5 Y6 F7", "M201 X1000 Y1000 Z200 E5000 A3",
        "G5 X5 I1 P2 Q3", "G29.1 X5 E2", "M117 Layer 5 X5", "M862.3 P \"MK3S\"", "M115 U3.9.0",
        "M84 X Y E", "M117 50% done", "M117 X5 O1 #2 [", "PRINT_START BED=60 X5", "Tx", "@pause",
        "M118 A1 P0 X"}) {
    SCOPED_TRACE(line);
    const MotionLog log = skipping(("G1 X1 F100\n" + std::string(line) + "\nY1").c_str());
    EXPECT_EQ(log.skipped, 1U);
    EXPECT_EQ(log.end, (PathPoint{1, 1, 0}));
    ASSERT_EQ(log.motions.size(), 2U);
    EXPECT_EQ(log.motions[1].speed, 100);
  }
}

TEST(BlockReader, whatStandsBesideASkippedCode) {
  EXPECT_EQ(skipping("G0 X1 M123 Y2").end, (PathPoint{1, 2, 0})) << "a code of motion takes them";
  EXPECT_EQ(skipping("G0 X1\nX2 M123 X5").end, (PathPoint{2, 0, 0})) << "what stands before an M";
  EXPECT_EQ(skipping("M123 X9 G91\nG0 X1 Y1\nX1").end, (PathPoint{2, 1, 0}));
}

TEST(BlockReader, wordsOfPrinters) {
  const MotionLog log = skipping(
      "G28 W ; home\nG92 E0\nG1 E-2.5 F2400\nG1 X10 E.5 F1200\nX20 E1\nG1X30E-.5\nG28 X Y\nG1 Z1");
  EXPECT_EQ(log.skipped, 6U);
  EXPECT_EQ(log.types(), "11103");
  EXPECT_EQ(log.motions[0].speed, 1200);
  EXPECT_EQ(log.end, (PathPoint{0, 0, 1}));
  EXPECT_EQ(errorOf("G1 X Y5 F1", kSkipUnknown), "1:4 a number is missing");
  EXPECT_EQ(errorOf("G1 F", kSkipUnknown), "1:4 a number is missing");
}

TEST(BlockReader, dwellsAndOffsetsOfPrintersAreUnknown) {
  const MotionLog log = skipping("G1 X1 F100\nG4 S2\nG4 X2\nG10\nG10 P0 S205 X3\nG11");
  EXPECT_EQ(log.skipped, 5U);
  EXPECT_EQ(log.motions.size(), 1U);
  EXPECT_EQ(log.dwelled(), 0);
}

}  // namespace
}  // namespace zyn
