#include "zynshot/ProgressLine.h"

#include <gtest/gtest.h>

namespace zyn::shot {
namespace {

std::string shown(ProgressLine::Style style) {
  std::string text;
  {
    ProgressLine line(style, [&text](const std::string& part) { text += part; });
    line.show("building", 0.01);
    line.show("building", 0.0101);
    line.show("building", 0.15);
    line.show("building", 0.29);
    line.show("go", 1);
  }
  return text;
}

TEST(ProgressLine, overwritesItselfOnATerminalAndLeavesNothing) {
  EXPECT_EQ(shown(ProgressLine::Style::kTerminal),
            "\rbuilding 1%\rbuilding 15%\rbuilding 29%\rgo 100%     \r       \r");
}

TEST(ProgressLine, writesALineForEveryTenPerCentElsewhere) {
  EXPECT_EQ(shown(ProgressLine::Style::kLines),
            "building 0%\nbuilding 10%\nbuilding 20%\ngo 100%\n");
}

TEST(ProgressLine, isSilentWhenOff) { EXPECT_EQ(shown(ProgressLine::Style::kOff), ""); }

}  // namespace
}  // namespace zyn::shot
