#include "view2d/Mouse2D.h"

#include <gtest/gtest.h>

namespace zyn::test {
namespace {

TEST(MouseMode2DTest, AsksForTheNearestPointAtFirst) {
  const MouseMode2D mode;
  EXPECT_EQ(mode.value(), 3);
  EXPECT_EQ(mode.previous(), 2);
  EXPECT_FALSE(mode.isPanning());
}

TEST(MouseMode2DTest, TakesAnyValueAndRemembersTheOneBefore) {
  MouseMode2D mode;
  std::int32_t before = 3;
  for (const std::int32_t value : {1, 0, -1, -2, 5, 32767, -32768}) {
    mode.set(value);
    EXPECT_EQ(mode.value(), value);
    EXPECT_EQ(mode.previous(), before);
    EXPECT_EQ(mode.isSelection(), value == -1 || value == -2);
    before = value;
  }
}

TEST(MouseMode2DTest, NeverRemembersTheZoom) {
  MouseMode2D mode;
  mode.set(-1);
  mode.set(4);
  mode.set(4);
  EXPECT_EQ(mode.previous(), -1);
  mode.set(5);
  EXPECT_EQ(mode.previous(), -1);
}

TEST(MouseMode2DTest, AZoomGoesBackToTheModeBefore) {
  MouseMode2D mode;
  mode.set(-2);
  mode.set(4);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), -2);
}

TEST(MouseMode2DTest, OtherModesDoNotEndWithAZoom) {
  MouseMode2D mode;
  mode.set(5);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 5);
}

TEST(MouseMode2DTest, PansForAWhile) {
  MouseMode2D mode;
  mode.set(-1);
  mode.beginPan();
  EXPECT_EQ(mode.value(), 1);
  EXPECT_TRUE(mode.isPanning());
  mode.endStandIn();
  EXPECT_EQ(mode.value(), -1);
  EXPECT_FALSE(mode.isPanning());
}

TEST(MouseMode2DTest, AfterAPanInTheZoomTheZoomComesBackAndStays) {
  MouseMode2D mode;
  mode.set(5);
  mode.set(4);
  mode.beginPan();
  EXPECT_EQ(mode.previous(), 4);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), 4);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 4);
}

TEST(MouseMode2DTest, APressWithoutReleaseLosesNothing) {
  MouseMode2D mode;
  mode.beginPan();
  mode.beginPan();
  mode.endStandIn();
  EXPECT_EQ(mode.value(), 3);
  mode.set(5);
  mode.endStandIn();
  EXPECT_EQ(mode.value(), 5);
}

TEST(MouseMode2DTest, TheHostMaySetAModeDuringAPan) {
  MouseMode2D mode;
  mode.beginPan();
  mode.set(4);
  EXPECT_FALSE(mode.isPanning());
  mode.endStandIn();
  EXPECT_EQ(mode.value(), 4);
  mode.endRectangle();
  EXPECT_EQ(mode.value(), 3);
}

}  // namespace
}  // namespace zyn::test
