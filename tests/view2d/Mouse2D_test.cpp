#include "view2d/Mouse2D.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/MouseTest.h"

namespace zyn::test {
namespace {

TEST_F(Mouse2DTest, Defaults) {
  EXPECT_EQ(mouse_.mode().value(), 3);
  EXPECT_FALSE(mouse_.maintainWindowZoom());
  EXPECT_FALSE(mouse_.windowSelection());
  EXPECT_FALSE(mouse_.selectSuperpose());
  EXPECT_FALSE(mouse_.middleButtonActive());
  EXPECT_FALSE(mouse_.middleButtonInverse());
  EXPECT_EQ(mouse_.middleButtonAcceleration(), 1.0);
}

// Presses.

TEST_F(Mouse2DTest, ButtonsFireInModelCoordinates) {
  mouse_.mode().set(0);
  press({300, 50});
  release({220, 120});
  mouse_.rightDown({200, 100});
  mouse_.rightUp({0, 200});
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 0 5,2.5", "capture", "MouseUp 0 1,-1", "release",
                                 "MouseDown 1 0,0", "MouseUp 1 -10,-5"}));
}

TEST_F(Mouse2DTest, ModeThreeAsksTheActiveTrace) {
  host_.activeTrace = true;
  press({300, 50});
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 0 5,2.5", "nearest 5,2.5", "repaint"}));
  release({310, 50});
  EXPECT_EQ(host_.take(), Calls{"MouseUp 0 5.5,2.5"});
  EXPECT_EQ(historyLength(), 1U);
}

TEST_F(Mouse2DTest, WithoutAnActiveTraceNothingIsRepainted) {
  press({300, 50});
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 0 5,2.5", "nearest 5,2.5"}));
}

TEST_F(Mouse2DTest, OnlyModeThreeAsksTheTrace) {
  for (const std::int32_t mode : {-3, -2, -1, 0, 1, 2, 4, 5}) {
    mouse_.mode().set(mode);
    press({300, 50});
    release({300, 50});
  }
  EXPECT_EQ(host_.count("nearest"), 0);
}

TEST_F(Mouse2DTest, TheRightModesKeepTheViewInTheHistory) {
  for (const std::int32_t mode : {-5, -3, -2, -1, 0, 3, 4}) {
    mouse_.mode().set(mode);
    press({300, 50});
    release({300, 50});
    EXPECT_EQ(historyLength(), 1U) << mode;
  }
  std::size_t expected = 1;
  for (const std::int32_t mode : {1, 2, 5, 6, 1000}) {
    mouse_.mode().set(mode);
    press({300, 50});
    release({300, 50});
    EXPECT_EQ(historyLength(), ++expected) << mode;
  }
}

// Drags.

TEST_F(Mouse2DTest, ThePanFollowsThePointer) {
  mouse_.mode().set(1);
  press({100, 100});
  const Point grabbed = view_.getPoint({100, 100});
  for (const PixelPoint at : {PixelPoint{140, 80}, {137, 81}, {-50, 260}}) {
    move(at);
    EXPECT_NEAR(view_.getPoint(at).x, grabbed.x, 1e-12);
    EXPECT_NEAR(view_.getPoint(at).y, grabbed.y, 1e-12);
  }
  release({-50, 260});
  expectShown({-10 + 7.5, 10 + 7.5, -5 + 8, 5 + 8});
  move({10, 10});
  expectShown({-10 + 7.5, 10 + 7.5, -5 + 8, 5 + 8});
  view_.lastView();
  expectUnmoved();
}

TEST_F(Mouse2DTest, EachStepOfAPanRepaintsOnceAndThenTellsThePoint) {
  mouse_.mode().set(1);
  press({100, 100});
  host_.take();
  move({140, 80});
  move({140, 80});  // as the system repeats moves
  EXPECT_EQ(host_.take(), (Calls{"repaint", "MouseMove -5,0", "MouseMove -5,0"}));
}

TEST_F(Mouse2DTest, OtherModesDragNothing) {
  for (const std::int32_t mode : {-3, -2, -1, 0, 2, 3, 4, 5, 99}) {
    mouse_.mode().set(mode);
    press({100, 100});
    move({150, 130});
    expectUnmoved();
    mouse_.captureLost();
  }
}

TEST_F(Mouse2DTest, AHostMayStartAPanDuringADrag) {
  mouse_.mode().set(0);
  press({100, 100});
  move({150, 100});
  mouse_.mode().set(1);
  move({170, 100});  // counted from where the mouse was
  expectShown({-11, 9, -5, 5});
  mouse_.mode().set(0);
  move({190, 100});
  expectShown({-11, 9, -5, 5});
}

TEST_F(Mouse2DTest, NothingMovesInAnEmptyClientArea) {
  mouse_.mode().set(1);
  press({100, 100});
  view_.resize({0, 0});
  host_.take();
  move({150, 150});
  EXPECT_EQ(host_.count("repaint"), 0);
  view_.resize({400, 200});
  expectUnmoved();
}

// The zoom to a rectangle.

TEST_F(Mouse2DTest, ModeFourZoomsToTheRectangle) {
  mouse_.mode().set(4);
  press({240, 80});
  EXPECT_FALSE(mouse_.rubberBand());
  move({200, 100});
  EXPECT_EQ(mouse_.rubberBand(), (RubberBand{{240, 80}, {200, 100}}));
  host_.take();
  release({200, 100});
  EXPECT_EQ(host_.take(), (Calls{"MouseUp 0 0,0", "release", "repaint"}));
  EXPECT_FALSE(mouse_.rubberBand());
  expectShown({0, 2, 0, 1});
  EXPECT_EQ(mouse_.mode().value(), 3);
  EXPECT_EQ(historyLength(), 2U);
  view_.lastView();
  expectUnmoved();
}

TEST_F(Mouse2DTest, AClickZoomsNowhere) {
  for (const PixelPoint end : {PixelPoint{240, 80}, {240, 120}, {300, 80}}) {
    mouse_.mode().set(4);
    press({240, 80});
    move({300, 120});
    release(end);
    expectUnmoved();
    EXPECT_EQ(historyLength(), 1U);
    EXPECT_EQ(mouse_.mode().value(), 3);
  }
}

TEST_F(Mouse2DTest, MaintainedWindowZoomStays) {
  mouse_.setMaintainWindowZoom(true);
  mouse_.mode().set(1);
  mouse_.mode().set(4);
  press({200, 100});
  release({240, 80});
  EXPECT_EQ(mouse_.mode().value(), 4);
  mouse_.setMaintainWindowZoom(false);
  press({200, 100});
  release({240, 80});
  EXPECT_EQ(mouse_.mode().value(), 1);
}

// Selection.

TEST_F(Mouse2DTest, SuperposedSelectionHoldsForDoubleClicksButNotForHovering) {
  host_.selectables = true;
  host_.hits = twoHits();
  mouse_.setSelectSuperpose(true);
  mouse_.leftDoubleClick({200, 100});
  EXPECT_EQ(host_.calls.back(), "MouseSelectionDblClick {5,6,8}");
  mouse_.mouseMove({201, 100}, kNoKeys);
  EXPECT_EQ(host_.calls.back(), "MouseOn2 0 0.05,0 {8}");
}

TEST_F(Mouse2DTest, ADoubleClickPicksInAnyMode) {
  host_.selectables = true;
  host_.hits = twoHits();
  for (const std::int32_t mode : {-1, 1, 3, 4}) {
    mouse_.mode().set(mode);
    mouse_.leftDoubleClick({30, 40});
    EXPECT_EQ(host_.take(), (Calls{"pick 30,40", "MouseSelectionDblClick {8}"}));
    release({30, 40});
    EXPECT_EQ(host_.take(), Calls{"MouseUp 0 -8.5,3"});
    EXPECT_EQ(mouse_.mode().value(), mode);
  }
  EXPECT_EQ(historyLength(), 1U);
}

TEST_F(Mouse2DTest, WithoutSelectablesNothingIsPicked) {
  mouse_.mode().set(-1);
  press({10, 20});
  release({10, 20});
  mouse_.leftDoubleClick({10, 20});
  mouse_.mouseMove({30, 30}, kNoKeys);
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 0 -9.5,4", "MouseUp 0 -9.5,4", "MouseMove -8.5,3.5"}));
}

TEST_F(Mouse2DTest, ARubberBandSelects) {
  mouse_.mode().set(-1);
  mouse_.setWindowSelection(true);
  host_.selectables = true;
  host_.hits = twoHits();
  press({240, 120});
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 0 2,-1", "pick 240,120", "MouseSelection {8}",
                                 "MouseSelection2 0 2,-1 {8}", "capture"}));
  move({200, 60});
  EXPECT_EQ(mouse_.rubberBand(), (RubberBand{{240, 120}, {200, 60}}));
  EXPECT_EQ(host_.take(), (Calls{"repaint", "MouseMove 0,2"}));
  mouse_.leftUp({180, 60}, kShift);
  EXPECT_EQ(host_.take(), (Calls{"MouseUp 0 -1,2", "release", "pickWithin 240,120 180,60",
                                 "WindowSelection 2 -1:2,-1:2 {5,6,8}", "repaint"}));
  EXPECT_FALSE(mouse_.rubberBand());
  EXPECT_EQ(mouse_.mode().value(), -1);
  expectUnmoved();
}

TEST_F(Mouse2DTest, ARubberBandWithoutSelectablesStillTellsItsRectangle) {
  mouse_.mode().set(-2);
  mouse_.setWindowSelection(true);
  press({200, 100});
  host_.take();
  release({240, 80});
  EXPECT_EQ(host_.take()[3], "WindowSelection 0 0:2,0:1 nothing");
}

// The middle button and the wheel.

TEST_F(Mouse2DTest, AnInactiveMiddleButtonDoesNothing) {
  mouse_.middleDown({100, 100}, kMiddle);
  EXPECT_EQ(mouse_.mode().value(), 3);
  mouse_.mouseMove({200, 100}, kMiddle);
  mouse_.middleUp();
  expectUnmoved();
  EXPECT_FALSE(mouse_.wheel(120, {5, 5}));
  EXPECT_EQ(host_.take(), Calls{"MouseMove 0,0"});
}

TEST_F(Mouse2DTest, TheMiddleButtonPansAndFiresNothing) {
  mouse_.setMiddleButtonActive(true);
  mouse_.mode().set(-1);
  mouse_.middleDown({100, 100}, kMiddle);
  EXPECT_EQ(mouse_.mode().value(), 1);
  mouse_.mouseMove({140, 80}, kMiddle);
  expectShown({-12, 8, -6, 4});
  mouse_.middleUp();
  EXPECT_EQ(mouse_.mode().value(), -1);
  EXPECT_EQ(host_.take(), (Calls{"capture", "repaint", "MouseMove -5,0", "release"}));
  EXPECT_EQ(historyLength(), 1U);
}

TEST_F(Mouse2DTest, ThePanReturnsToModeFour) {
  mouse_.setMiddleButtonActive(true);
  mouse_.mode().set(0);
  mouse_.mode().set(4);
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.middleUp();
  EXPECT_EQ(mouse_.mode().value(), 4);
}

TEST_F(Mouse2DTest, TheCaptureLastsUntilTheLastButtonIsReleased) {
  mouse_.setMiddleButtonActive(true);
  mouse_.mode().set(0);
  press({100, 100});
  mouse_.middleDown({100, 100}, MouseKeys(MouseKeys::kLeft | MouseKeys::kMiddle));
  mouse_.middleUp();
  EXPECT_EQ(host_.count("capture"), 1);
  EXPECT_EQ(host_.count("release"), 0);
  release({100, 100});
  EXPECT_EQ(host_.count("release"), 1);
}

TEST_F(Mouse2DTest, ANotchZoomsAboutTheLastPosition) {
  mouse_.setMiddleButtonActive(true);
  mouse_.mouseMove({300, 50}, kNoKeys);
  const Point before = view_.getPoint({300, 50});
  host_.take();
  EXPECT_TRUE(mouse_.wheel(120, {10, 10}));
  EXPECT_EQ(host_.take(), Calls{"repaint"});
  EXPECT_NEAR(view_.getPoint({300, 50}).x, before.x, 1e-6);
  EXPECT_NEAR(view_.getPoint({300, 50}).y, before.y, 1e-6);
  EXPECT_DOUBLE_EQ(view_.current().halfHeight(), 5 * (1 + 120.0 / 400 * 0.5));
  EXPECT_EQ(historyLength(), 1U);
}

TEST_F(Mouse2DTest, TheWheelTurnsBothWaysAndFaster) {
  mouse_.setMiddleButtonActive(true);
  mouse_.setMiddleButtonInverse(true);
  mouse_.setMiddleButtonAcceleration(0.5);
  mouse_.wheel(120, {});
  EXPECT_DOUBLE_EQ(view_.current().halfHeight(), 5 * (1 - 60.0 / 400 * 0.5));
}

TEST_F(Mouse2DTest, TheWheelTakesItsOwnPositionUntilTheMouseHasMoved) {
  Mouse2D mouse(view_, host_);
  mouse.setMiddleButtonActive(true);
  const Point before = view_.getPoint({300, 50});
  mouse.wheel(-120, {300, 50});
  EXPECT_NEAR(view_.getPoint({300, 50}).x, before.x, 1e-6);
}

// Ends.

TEST_F(Mouse2DTest, APressAfterAMissedReleaseStartsAnew) {
  mouse_.mode().set(4);
  press({10, 10});
  move({20, 20});
  press({200, 100});
  EXPECT_FALSE(mouse_.rubberBand());
  mouse_.mode().set(3);
  press({50, 50});
  EXPECT_EQ(host_.count("capture"), host_.count("release")) << "mode 3 captures nothing";
}

// What event handlers do.

TEST_F(Mouse2DTest, WindowSelectionMayEndInTheSelectionEvent) {
  host_.selectables = true;
  mouse_.mode().set(-1);
  mouse_.setWindowSelection(true);
  host_.handlers["MouseSelection"] = [&] { mouse_.setWindowSelection(false); };
  press({10, 10});
  EXPECT_EQ(host_.count("capture"), 0);
}

}  // namespace
}  // namespace zyn::test
