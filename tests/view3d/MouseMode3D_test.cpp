#include "view3d/Mouse3D.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

TEST(MouseMode3DTest, RotatesByDefault) {
  MouseMode3D mode;
  EXPECT_EQ(mode.value(), 2);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 2);
}

TEST(MouseMode3DTest, TakesAnyValue) {
  MouseMode3D mode;
  for (const std::int32_t value : {1, 3, -1, -2, 0, 5, -32768, 32767}) {
    mode.set(value);
    EXPECT_EQ(mode.value(), value);
    EXPECT_EQ(mode.isSelection(), value == -1 || value == -2);
    EXPECT_FALSE(mode.isRectangle());
  }
}

TEST(MouseMode3DTest, OnceGivesThePreviousModeBack) {
  MouseMode3D mode;
  mode.set(-1);
  mode.set(4);
  EXPECT_TRUE(mode.isRectangle());
  EXPECT_EQ(mode.value(), 4);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), -1);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), -1);
}

TEST(MouseMode3DTest, OnceSetTwiceGivesTheModeBeforeBack) {
  MouseMode3D mode;
  mode.set(3);
  mode.set(4);
  mode.set(4);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 3);
}

TEST(MouseMode3DTest, OnceIsOverWhenAnotherModeIsSet) {
  MouseMode3D mode;
  mode.set(4);
  mode.set(1);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 1);
}

TEST(MouseMode3DTest, StandsInForTheModeThatIsSet) {
  MouseMode3D mode;
  mode.set(-2);
  mode.standIn(MouseMode3D::kPan);
  EXPECT_EQ(mode.value(), 1);
  EXPECT_FALSE(mode.isSelection());
  mode.standIn(MouseMode3D::kZoom);
  EXPECT_EQ(mode.value(), 3);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -2);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -2);
}

TEST(MouseMode3DTest, WhatIsSetMeanwhileStays) {
  MouseMode3D mode;
  mode.standIn(MouseMode3D::kPan);
  mode.set(-1);
  EXPECT_EQ(mode.value(), -1);
  mode.standIn(MouseMode3D::kRotate);
  EXPECT_EQ(mode.value(), 2);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -1);
}

TEST(MouseMode3DTest, OnceOutlivesAStandIn) {
  MouseMode3D mode;
  mode.set(3);
  mode.set(4);
  mode.standIn(MouseMode3D::kPan);
  EXPECT_TRUE(mode.isRectangle());
  mode.endStandIn();
  EXPECT_EQ(mode.value(), 4);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 3);
}

}  // namespace
}  // namespace zyn
