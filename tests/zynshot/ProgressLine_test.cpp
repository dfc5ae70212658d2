#include "zynshot/ProgressLine.h"

#include <gtest/gtest.h>

namespace zyn::shot {
namespace {

std::string shown(ProgressLine::Style style) {
  std::string text;
  {
    ProgressLine line(style, [&text](const std::string& part) { text += part; });
    line.show("building", 1, 100);
    line.show("building", 1, 100);
    line.show("building", 15, 100);
    line.show("go", 100, 100);
    line.show("nothing", 0, 0);
  }
  return text;
}

TEST(ProgressLine, overwritesItselfOnATerminalAndLeavesNothing) {
  EXPECT_EQ(shown(ProgressLine::Style::kTerminal),
            "\rbuilding 1%\rbuilding 15%\rgo 100%     \r       \r");
}

TEST(ProgressLine, writesALineForEveryTenPerCentElsewhere) {
  EXPECT_EQ(shown(ProgressLine::Style::kLines), "building 0%\nbuilding 10%\ngo 100%\n");
}

TEST(ProgressLine, isSilentWhenOff) { EXPECT_EQ(shown(ProgressLine::Style::kOff), ""); }

}  // namespace
}  // namespace zyn::shot
