#include "view3d/MouseMode.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

TEST(MouseModeTest, RotatesByDefault) {
  MouseMode mode;
  EXPECT_EQ(mode.value(), 2);
  mode.endOnce();
  EXPECT_EQ(mode.value(), 2);
}

TEST(MouseModeTest, TakesAnyValue) {
  MouseMode mode;
  for (const std::int32_t value : {1, 3, -1, -2, 0, 5, -32768, 32767}) {
    mode.set(value);
    EXPECT_EQ(mode.value(), value);
    EXPECT_EQ(mode.isSelection(), value == -1 || value == -2);
    EXPECT_FALSE(mode.isOnce());
  }
}

TEST(MouseModeTest, OnceGivesThePreviousModeBack) {
  MouseMode mode;
  mode.set(-1);
  mode.set(4);
  EXPECT_TRUE(mode.isOnce());
  EXPECT_EQ(mode.value(), 4);
  mode.endOnce();
  EXPECT_EQ(mode.value(), -1);
  mode.endOnce();
  EXPECT_EQ(mode.value(), -1);
}

TEST(MouseModeTest, OnceSetTwiceGivesTheModeBeforeBack) {
  MouseMode mode;
  mode.set(3);
  mode.set(4);
  mode.set(4);
  mode.endOnce();
  EXPECT_EQ(mode.value(), 3);
}

TEST(MouseModeTest, OnceIsOverWhenAnotherModeIsSet) {
  MouseMode mode;
  mode.set(4);
  mode.set(1);
  mode.endOnce();
  EXPECT_EQ(mode.value(), 1);
}

TEST(MouseModeTest, StandsInForTheModeThatIsSet) {
  MouseMode mode;
  mode.set(-2);
  mode.standIn(MouseMode::kPan);
  EXPECT_EQ(mode.value(), 1);
  EXPECT_FALSE(mode.isSelection());
  mode.standIn(MouseMode::kZoom);
  EXPECT_EQ(mode.value(), 3);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -2);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -2);
}

TEST(MouseModeTest, WhatIsSetMeanwhileStays) {
  MouseMode mode;
  mode.standIn(MouseMode::kPan);
  mode.set(-1);
  EXPECT_EQ(mode.value(), -1);
  mode.standIn(MouseMode::kRotate);
  EXPECT_EQ(mode.value(), 2);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -1);
}

TEST(MouseModeTest, OnceOutlivesAStandIn) {
  MouseMode mode;
  mode.set(3);
  mode.set(4);
  mode.standIn(MouseMode::kPan);
  EXPECT_TRUE(mode.isOnce());
  mode.endStandIn();
  EXPECT_EQ(mode.value(), 4);
  mode.endOnce();
  EXPECT_EQ(mode.value(), 3);
}

}  // namespace
}  // namespace zyn
