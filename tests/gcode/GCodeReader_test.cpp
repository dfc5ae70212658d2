#include "gcode/GCodeReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/MotionLog.h"

namespace zyn {
namespace {

using test::errorOf;
using test::MotionLog;
using test::readProgram;

double endX(std::string_view program, const GCodeOptions& options = {}) {
  return readProgram(program, options).end[0];
}

TEST(GCodeReader, linesOfAllKindsAreNumbered) {
  const MotionLog log = readProgram("G0 X1\r\nX2\r\r\nX3\n\nX4");
  ASSERT_EQ(log.motions.size(), 4U);
  EXPECT_EQ(log.motions[0].line, 1);
  EXPECT_EQ(log.motions[1].line, 2);
  EXPECT_EQ(log.motions[2].line, 4);
  EXPECT_EQ(log.motions[3].line, 6);
  EXPECT_EQ(log.starts, 1);
}

TEST(GCodeReader, nothingAtAll) {
  for (const char* const program :
       {"", "\n", "%", "%\n%", " ", "\r", "; a comment", "\xEF\xBB\xBF"}) {
    const MotionLog log = readProgram(program);
    EXPECT_EQ(log.starts, 1);
    EXPECT_TRUE(log.motions.empty());
  }
}

TEST(GCodeReader, aMarkOfTheEncodingIsNoCharacter) {
  EXPECT_EQ(errorOf("\xEF\xBB\xBFG0 ?").substr(0, 3), "1:4");
}

TEST(GCodeReader, textInUtf16IsRefusedByName) {
  for (const std::string& program :
       {std::string("\xFF\xFEG\0000\0", 6), std::string("\xFE\xFF\0G\0000", 6),
        std::string("G\0000\0", 4), std::string("\0G\0000", 4)}) {
    EXPECT_NE(errorOf(program).find("UTF-16"), std::string::npos) << errorOf(program);
    EXPECT_EQ(errorOf(program).substr(0, 3), "1:1");
  }
}

TEST(GCodeReader, theEndOfDosFilesIsNoCharacter) {
  EXPECT_EQ(endX("G0 X1\r\nX2\r\n\x1A"), 2);
  EXPECT_EQ(endX("G0 X3\x1A\x1A"), 3);
  EXPECT_EQ(errorOf("G0 X1\x1A\nX2").substr(0, 3), "1:6");
}

TEST(GCodeReader, theProgramEndsWhereItSays) {
  for (const char* const end : {"M2", "M30", "m02 ", "G0 X5 M30"}) {
    const MotionLog log = readProgram("G0 X5\n" + std::string(end) + "\nX6 nonsense ?!");
    EXPECT_EQ(log.end[0], 5);
  }
}

TEST(GCodeReader, percentBeginsAndEndsThePaper) {
  EXPECT_EQ(endX("%\nG0 X1\n%\nX2 ?"), 1);
  EXPECT_EQ(endX("(a header)\n\n % \nG0 X1\n%\nX2"), 1);
  EXPECT_EQ(endX("G0 X1\n%\nX2"), 1);
  EXPECT_EQ(endX("%\n%\nG0 X1"), 0);
  EXPECT_EQ(errorOf("G0 X1 %").substr(0, 3), "1:7");
}

TEST(GCodeReader, slashesLeaveBlocksOut) {
  const GCodeOptions all = {.skipsBlocks = false};
  EXPECT_EQ(endX("G0 X1\n/X2 nonsense"), 1);
  EXPECT_EQ(endX("G0 X1\n / X2"), 1);
  EXPECT_EQ(endX("G0 X1\n/#1=5\nX#1"), 0);
  EXPECT_EQ(endX("G0 X1\n/X2", all), 2);
  EXPECT_EQ(endX("G0 X1\n/3 N5 X2", all), 2);
  EXPECT_EQ(errorOf("G0 X1 /Y2").substr(0, 3), "1:7");
}

TEST(GCodeReader, eachProgramBeginsAnew) {
  readProgram("#1=5 G20 G91 G10 L2 P1 X3\nG92 Y3\nG0 X1");
  EXPECT_EQ(endX("G0 X1"), 1);
  EXPECT_EQ(endX("G0 X[#1+#5221+#5211]"), 0);
}

TEST(GCodeReader, tellsHowFarItIs) {
  std::string program = "G0\n";
  for (int i = 0; i < 1000; ++i) {
    program += "X1\nX2\n";
  }
  std::vector<double> parts;
  MotionLog log;
  readGCode(program, {}, log, [&](double part) {
    parts.push_back(part);
    return true;
  });
  EXPECT_EQ(parts.front(), 0);
  EXPECT_EQ(parts.back(), 1);
  EXPECT_GT(parts.size(), 50U);
  EXPECT_LE(parts.size(), 101U);
  EXPECT_THROW(readGCode(program, {}, log, [](double part) { return part < 0.5; }), Aborted);
}

}  // namespace
}  // namespace zyn
