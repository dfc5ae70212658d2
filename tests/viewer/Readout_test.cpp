#include "viewer/Readout.h"

#include <gtest/gtest.h>

#include <vector>

namespace zyn::viewer {
namespace {

TEST(ReadoutTest, PointsShowSixDigitsAndTheNormalOfASurface) {
  EXPECT_EQ(pointText({1.25, -3, 1234567}, std::nullopt), "x 1.25  y -3  z 1.23457e+06");
  EXPECT_EQ(pointText({-0.0, 0, 1.0 / 3}, host::Vector{0, -0.0, 0.70710678}),
            "x 0  y 0  z 0.333333   normal 0  0  0.707");
}

TEST(ReadoutTest, FewPartsAreNamedManyAreCounted) {
  EXPECT_EQ(partsText({}), "");
  EXPECT_EQ(partsText(std::vector<std::string>{"base"}), "base");
  EXPECT_EQ(partsText(std::vector<std::string>{"base", "step"}), "base, step");
  EXPECT_EQ(partsText(std::vector<std::string>(8, "x")), "x, x, x, x, x, x, x, x");
  EXPECT_EQ(partsText(std::vector<std::string>(9, "x")), "9 parts");
}

TEST(ReadoutTest, PicksTellOfMouseAndSelection) {
  EXPECT_EQ(faceText(12, "base"), "face 12 of base");
  EXPECT_EQ(picksText("", ""), "");
  EXPECT_EQ(picksText("face 3 of base", ""), "over face 3 of base");
  EXPECT_EQ(picksText("", "step"), "selected: step");
  EXPECT_EQ(picksText("face 3 of base", "step"), "over face 3 of base; selected: step");
}

TEST(ReadoutTest, SizesAreCounted) {
  EXPECT_EQ(sizeText(1, 1), "1 face in 1 part");
  EXPECT_EQ(sizeText(1200, 3), "1200 faces in 3 parts");
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
