#include "viewer/ProgramLines.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(ProgramLinesTest, LinesAreNumberedFromOneWithoutTheirEnds) {
  const ProgramLines lines("G21\r\n\nG1 X1\rM2");
  ASSERT_EQ(lines.lineCount(), 4U);
  EXPECT_EQ(lines.line(1), "G21");
  EXPECT_EQ(lines.line(2), "");
  EXPECT_EQ(lines.line(3), "G1 X1");
  EXPECT_EQ(lines.line(4), "M2");
}

TEST(ProgramLinesTest, TheEndOfTheLastLineBeginsNoOther) {
  EXPECT_EQ(ProgramLines("G21\n").lineCount(), 1U);
  EXPECT_EQ(ProgramLines("G21\n\n").lineCount(), 2U);
  EXPECT_EQ(ProgramLines("").lineCount(), 0U);
}

TEST(ProgramLinesTest, OtherNumbersHaveNoText) {
  const ProgramLines lines("G21\n");
  EXPECT_EQ(lines.line(0), "");
  EXPECT_EQ(lines.line(2), "");
}

}  // namespace
}  // namespace zyn::viewer
