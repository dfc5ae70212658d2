#include "viewer/Readout.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(ReadoutTest, PointsShowSixDigits) {
  EXPECT_EQ(pointText({1.25, -3, 1234567}, false), "x 1.25  y -3  z 1.23457e+06");
  EXPECT_EQ(pointText({-0.0, 0, 1.0 / 3}, true), "x 0  y 0  z 0.333333  (surface)");
}

TEST(ReadoutTest, FewPartsAreNamedManyAreCounted) {
  EXPECT_EQ(partsText({}), "");
  EXPECT_EQ(partsText({7}), "part 7");
  EXPECT_EQ(partsText({5, 1, 2}), "parts 1, 2, 5");
  EXPECT_EQ(partsText({1, 2, 3, 4, 5, 6, 7, 8}), "parts 1, 2, 3, 4, 5, 6, 7, 8");
  EXPECT_EQ(partsText({1, 2, 3, 4, 5, 6, 7, 8, 9}), "9 parts");
}

TEST(ReadoutTest, PicksTellOfMouseAndSelection) {
  EXPECT_EQ(picksText(0, {}), "");
  EXPECT_EQ(picksText(3, {}), "over part 3");
  EXPECT_EQ(picksText(0, {2}), "selected: part 2");
  EXPECT_EQ(picksText(3, {1, 2}), "over part 3; selected: parts 1, 2");
}

TEST(ReadoutTest, SizesAreCounted) {
  EXPECT_EQ(sizeText(1, 1), "1 triangle in 1 part");
  EXPECT_EQ(sizeText(1200, 3), "1200 triangles in 3 parts");
}

TEST(ReadoutTest, EventsAreShownWithTheirPixel) {
  EXPECT_EQ(mouseText("MouseUp", 2, -1, 80), "MouseUp 2 at -1, 80");
}

TEST(ReadoutTest, EveryMouseModeHasAWord) {
  EXPECT_EQ(modeText(1), "pan");
  EXPECT_EQ(modeText(2), "rotate");
  EXPECT_EQ(modeText(3), "zoom");
  EXPECT_EQ(modeText(4), "window selection");
  EXPECT_EQ(modeText(-1), "select");
  EXPECT_EQ(modeText(-2), "select");
  EXPECT_EQ(modeText(9), "events only");
}

}  // namespace
}  // namespace zyn::viewer
