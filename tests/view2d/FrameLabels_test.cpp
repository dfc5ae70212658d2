#include "view2d/FrameLabels.h"

#include <gtest/gtest.h>

namespace zyn::test {
namespace {

using Texts = std::vector<std::string>;

constexpr FrameArea kArea{300, 200, {-60, 360, -40, 240}};

Graduation at(double position, const std::string& label, const std::string& exponent = {}) {
  return {.position = position, .factor = 0.0, .label = label, .exponent = exponent};
}

std::vector<PlacedLabel> place(const std::vector<Graduation>& x, const std::vector<Graduation>& y,
                               const FrameArea& area = kArea,
                               const std::vector<PixelBox>& boxes = {}) {
  return placeLabels({.small = {}, .big = x}, {.small = {}, .big = y}, area, boxes);
}

Texts textsOf(const std::vector<PlacedLabel>& labels) {
  Texts texts;
  for (const PlacedLabel& label : labels) {
    texts.push_back(label.label);
  }
  return texts;
}

TEST(FrameLabelsTest, BelowTheHorizontalAxisCentred) {
  const std::vector<PlacedLabel> labels = place({at(0, "0"), at(100, "10")}, {});
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].box, (PixelBox{-2, 2, -16, -10}));
  EXPECT_EQ(labels[1].box, (PixelBox{96.5, 103.5, -16, -10}));
}

TEST(FrameLabelsTest, LargerDigitsKeepTheirDistances) {
  FrameArea large{3000, 2000, {-600, 3600, -400, 2400}};
  large.font = LabelFont::forWindow(2800);
  const std::vector<PlacedLabel> labels = place({at(100, "5")}, {at(100, "5")}, large);
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].box, (PixelBox{96.5, 103.5, -21, -10}));
  EXPECT_EQ(labels[1].box, (PixelBox{-17, -10, 94.5, 105.5}));
}

TEST(FrameLabelsTest, LeftOfTheVerticalAxis) {
  const std::vector<PlacedLabel> labels = place({}, {at(0, "0"), at(100, "0.5")});
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].box, (PixelBox{-14, -10, -3, 3}));
  EXPECT_EQ(labels[1].box, (PixelBox{-21, -10, 97, 103}));
}

TEST(FrameLabelsTest, WithoutRoomRightOfTheVerticalAxis) {
  const FrameArea narrow{300, 200, {-20, 360, -40, 240}};
  const std::vector<PlacedLabel> labels = place({}, {at(50, "10"), at(100, "0.5")}, narrow);
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].box, (PixelBox{-17, -10, 47, 53}));
  EXPECT_EQ(labels[1].box, (PixelBox{3, 14, 97, 103}));
}

TEST(FrameLabelsTest, RightOfTheAxisTheyStandOnLines) {
  FrameArea narrow{300, 200, {-10, 360, -40, 240}};
  EXPECT_EQ(place({}, {at(0, "0.5")}, narrow).at(0).box, (PixelBox{3, 14, 3, 9}));
  EXPECT_EQ(place({}, {at(50, "0.5")}, narrow).at(0).box, (PixelBox{3, 14, 47, 53}));
  narrow.isRuled = true;
  EXPECT_EQ(place({}, {at(50, "0.5")}, narrow).at(0).box, (PixelBox{3, 14, 53, 59}));
}

TEST(FrameLabelsTest, PulledUpwardsInLowWindows) {
  const FrameArea low{105, 70, {-21, 126, -14.3, 84}};
  EXPECT_NEAR(place({at(50, "5")}, {}, low).at(0).box.bottom, -13.3, 1e-9);
  const FrameArea lower{105, 70, {-21, 126, -9, 84}};
  EXPECT_EQ(place({at(50, "5")}, {}, lower).at(0).box.bottom, 3);
}

TEST(FrameLabelsTest, AboveTheAxisTheFirstMakesWayForTheVerticalAxis) {
  const FrameArea lower{105, 70, {-21, 126, -9, 84}};
  EXPECT_EQ(textsOf(place({at(0, "0"), at(50, "5")}, {}, lower)), (Texts{"5"}));
}

TEST(FrameLabelsTest, PulledSidewaysIntoTheWindow) {
  const FrameArea narrow{300, 200, {-5, 303, -40, 240}};
  const std::vector<PlacedLabel> labels = place({at(0, "0.0005"), at(300, "30000")}, {}, narrow);
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].box.left, -4);
  EXPECT_EQ(labels[1].box.right, 302);
}

TEST(FrameLabelsTest, NoneOverlap) {
  EXPECT_EQ(textsOf(place({at(0, "1000"), at(10, "2000"), at(50, "3000")}, {})),
            (Texts{"1000", "3000"}));
  EXPECT_EQ(textsOf(place({}, {at(0, "1"), at(4, "2"), at(6, "3")})), (Texts{"1", "3"}));
}

TEST(FrameLabelsTest, BoxesAreKeptClear) {
  const PixelBox title{90, 150, -30, -12};
  EXPECT_EQ(textsOf(place({at(50, "1"), at(100, "2"), at(200, "3")}, {}, kArea, {title})),
            (Texts{"1", "3"}));
  const PixelBox beside{-30, -15, 90, 110};
  EXPECT_EQ(textsOf(place({}, {at(50, "1.5"), at(100, "2.5")}, kArea, {beside})), (Texts{"1.5"}));
}

TEST(FrameLabelsTest, WhatDoesNotFitIsLeftOut) {
  const FrameArea tiny{10, 10, {-2, 12, -2, 12}};
  EXPECT_TRUE(place({at(5, "123456")}, {at(5, "123456")}, tiny).empty());
  EXPECT_TRUE(place({at(5, "")}, {at(5, "")}).empty());
}

TEST(FrameLabelsTest, ExponentsAreRaised) {
  const PlacedLabel label = place({at(100, "10", "-3")}, {}).at(0);
  EXPECT_EQ(label.label, "10");
  EXPECT_EQ(label.exponent, "-3");
  EXPECT_EQ(label.box, (PixelBox{92.5, 107.5, -16, -8}));
  EXPECT_EQ(label.exponentStart.x, 100.5);
  EXPECT_EQ(label.exponentStart.y, -12);
}

TEST(FrameLabelsTest, SmallGraduationsMayHaveLabels) {
  const std::vector<PlacedLabel> labels = placeLabels(
      {.small = {at(20, "2"), at(40, ""), at(60, "4")}, .big = {at(58, "3")}}, {}, kArea, {});
  EXPECT_EQ(textsOf(labels), (Texts{"3", "2"}));  // the big one has precedence
}

}  // namespace
}  // namespace zyn::test
