#include "viewer/PathReadout.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(PathReadoutTest, APlaceIsOneLine) {
  const PathPlace place = {.line = 12,
                           .type = 1,
                           .speed = 1500,
                           .point = {1.5, -0.0001, -2},
                           .time = 7.5,
                           .duration = 200,
                           .travelled = 81.2,
                           .length = 2034.5};
  EXPECT_EQ(placeText(place),
            "line 12  x 1.500  y 0.000  z -2.000 mm  feed 1500 mm/min  0:07.5 of 3:20.0  81.2 of "
            "2034.5 mm");
}

TEST(PathReadoutTest, FreeTypesAreMotions) {
  EXPECT_NE(placeText({.type = 7, .speed = 100}).find("  motion 100 mm/min  "), std::string::npos);
  EXPECT_NE(placeText({.type = -1}).find("  motion  "), std::string::npos);
  EXPECT_NE(placeText({.type = 4, .speed = 200.5}).find("  arc 200.5 mm/min  "), std::string::npos);
}

TEST(PathReadoutTest, TimesCountMinutesAndFromAnHourOnHours) {
  EXPECT_EQ(durationText(0), "0:00.0");
  EXPECT_EQ(durationText(59.97), "1:00.0");
  EXPECT_EQ(durationText(3599.9), "59:59.9");
  EXPECT_EQ(durationText(3600), "1:00:00");
  EXPECT_EQ(durationText(36061), "10:01:01");
}

TEST(PathReadoutTest, ProgramsTellTheirSize) {
  EXPECT_EQ(programText(1, 0, {}), "1 line, 0 segments");
  EXPECT_EQ(programText(9, 1, {3, "line 2"}),
            "9 lines, 1 segment, 3 codes skipped (first: line 2)");
}

TEST(PathReadoutTest, LongLinesAreCut) {
  EXPECT_EQ(lineText(3, "G1 X1"), "line 3: G1 X1");
  EXPECT_EQ(lineText(3, std::string(41, 'X')), "line 3: " + std::string(40, 'X') + "...");
}

TEST(PathReadoutTest, ToolsTellTheirDiameter) { EXPECT_EQ(toolText(1.5), "tool of 1.5 mm"); }

}  // namespace
}  // namespace zyn::viewer
