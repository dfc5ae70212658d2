#include "view2d/Mouse2D.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/RecordingMouseHost2D.h"

namespace zyn {
namespace {

using Calls = std::vector<std::string>;

constexpr MouseKeys kNone;
constexpr MouseKeys kLeft(MouseKeys::kLeft);
constexpr MouseKeys kMiddle(MouseKeys::kMiddle);
constexpr MouseKeys kShift(MouseKeys::kShift);
constexpr MouseKeys kControl(MouseKeys::kControl);

/// Two hits: 8 in front of 5 and 6.
PickRecords twoHits() {
  const std::vector<std::uint32_t> buffer{2, 4000, 5000, 5, 6, 1, 2000, 3000, 8};
  return PickRecords(buffer, 2);
}

/// A view of 400 by 200 pixels on -10..10 by -5..5: 20 pixels a unit, the origin at (200, 100).
class Mouse2DTest : public testing::Test {
 protected:
  Mouse2DTest() {
    view_.resize({400, 200});
    view_.viewRect({-10, 10, -5, 5});
    view_.view(Rect2{-10, 10, -5, 5}, 0);
    mouse_.mouseMove({1, 1}, kNone);
    host_.take();
  }

  void press(PixelPoint at) { mouse_.leftDown(at, kLeft); }
  void move(PixelPoint at) { mouse_.mouseMove(at, kLeft); }
  void release(PixelPoint at) { mouse_.leftUp(at, kNone); }

  std::size_t historyLength() const { return view_.history().count(); }

  void expectShown(const Rect2& expected) const {
    const Rect2 shown = view_.current().bounds();
    EXPECT_NEAR(shown.xMin, expected.xMin, 1e-9);
    EXPECT_NEAR(shown.xMax, expected.xMax, 1e-9);
    EXPECT_NEAR(shown.yMin, expected.yMin, 1e-9);
    EXPECT_NEAR(shown.yMax, expected.yMax, 1e-9);
  }
  void expectUnmoved() const { expectShown({-10, 10, -5, 5}); }

  ViewState2D view_;
  test::RecordingMouseHost2D host_;
  Mouse2D mouse_{view_, host_};
};

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

TEST_F(Mouse2DTest, APressFiresBeforeAnythingElse) {
  mouse_.mode().set(1);
  host_.handlers["MouseDown"] = [&] {
    EXPECT_EQ(historyLength(), 1U);
    EXPECT_EQ(host_.calls.size(), 1U);
  };
  press({10, 20});
  EXPECT_EQ(historyLength(), 2U);
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

TEST_F(Mouse2DTest, AMoveWithoutDistanceRepaintsNoRubberBand) {
  mouse_.mode().set(4);
  press({100, 150});
  move({100, 150});
  EXPECT_EQ(host_.count("repaint"), 0);
  move({200, 50});
  move({200, 50});
  EXPECT_EQ(host_.count("repaint"), 1);
}

// Selection.

TEST_F(Mouse2DTest, APressInASelectionModePicks) {
  host_.selectables = true;
  host_.hits = twoHits();
  for (const std::int32_t mode : {-1, -2}) {
    mouse_.mode().set(mode);
    press({300, 50});
    move({310, 60});
    EXPECT_FALSE(mouse_.rubberBand());
    release({310, 60});
    EXPECT_EQ(host_.take(),
              (Calls{"MouseDown 0 5,2.5", "pick 300,50", "MouseSelection {8}",
                     "MouseSelection2 0 5,2.5 {8}", "MouseMove 5.5,2", "MouseUp 0 5.5,2"}));
  }
}

TEST_F(Mouse2DTest, TheKeyOfASelectionIsThatOfThePress) {
  host_.selectables = true;
  mouse_.mode().set(-1);
  const std::uint32_t both = MouseKeys::kControl | MouseKeys::kShift;
  for (const auto& [keys, key] : {std::pair(kControl, "1"), std::pair(kShift, "2"),
                                  std::pair(MouseKeys(both), "1"), std::pair(kLeft, "0")}) {
    mouse_.leftDown({200, 100}, keys);
    EXPECT_EQ(host_.calls.back(), std::string("MouseSelection2 ") + key + " 0,0 nothing");
  }
}

TEST_F(Mouse2DTest, SuperposedSelectionReportsEveryHit) {
  host_.selectables = true;
  host_.hits = twoHits();
  mouse_.setSelectSuperpose(true);
  mouse_.mode().set(-1);
  press({200, 100});
  EXPECT_EQ(host_.calls.back(), "MouseSelection2 0 0,0 {5,6,8}");
  mouse_.leftDoubleClick({200, 100});
  EXPECT_EQ(host_.calls.back(), "MouseSelectionDblClick {5,6,8}");
  mouse_.mouseMove({201, 100}, kNone);
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
  mouse_.mouseMove({30, 30}, kNone);
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 0 -9.5,4", "MouseUp 0 -9.5,4", "MouseMove -8.5,3.5"}));
}

TEST_F(Mouse2DTest, HoveringReportsTheNearestHitAfterTheMove) {
  host_.selectables = true;
  host_.hits = twoHits();
  mouse_.mouseMove({300, 50}, kNone);
  EXPECT_EQ(host_.take(),
            (Calls{"MouseMove 5,2.5", "pick 300,50", "MouseOn {8}", "MouseOn2 0 5,2.5 {8}"}));
  host_.hits = PickRecords();
  mouse_.mouseMove({301, 50}, kShift);
  EXPECT_EQ(host_.take(), (Calls{"MouseMove 5.05,2.5", "pick 301,50", "MouseOn nothing",
                                 "MouseOn2 2 5.05,2.5 nothing"}));
}

TEST_F(Mouse2DTest, NothingIsPickedTwiceForOnePosition) {
  host_.selectables = true;
  mouse_.mouseMove({30, 40}, kNone);
  mouse_.mouseMove({30, 40}, kControl);
  EXPECT_EQ(host_.count("pick"), 1);
  EXPECT_EQ(host_.count("MouseMove"), 2);
  mouse_.mouseLeave();
  mouse_.mouseMove({30, 40}, kNone);
  EXPECT_EQ(host_.count("pick"), 2);
}

TEST_F(Mouse2DTest, NothingIsPickedWhileAButtonIsHeld) {
  host_.selectables = true;
  for (const std::uint32_t button : {0x01U, 0x02U, 0x10U, 0x20U, 0x40U}) {
    mouse_.mouseMove({30, static_cast<int>(button)}, MouseKeys(button));
  }
  mouse_.mode().set(0);
  mouse_.leftDown({10, 10}, kNone);
  mouse_.mouseMove({31, 40}, kNone);
  EXPECT_EQ(host_.count("pick"), 0);
  release({31, 40});
  mouse_.mouseMove({31, 40}, kNone);
  EXPECT_EQ(host_.count("pick"), 1);
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

TEST_F(Mouse2DTest, ARectangleWithoutAPixelSelectsNothing) {
  mouse_.mode().set(-1);
  mouse_.setWindowSelection(true);
  for (const PixelPoint end : {PixelPoint{100, 100}, {100, 150}, {150, 100}}) {
    press({100, 100});
    move({200, 200});
    release(end);
  }
  EXPECT_EQ(host_.count("pickWithin") + host_.count("WindowSelection"), 0);
  EXPECT_EQ(host_.count("repaint"), 6);
}

TEST_F(Mouse2DTest, WindowSelectionNeedsASelectionMode) {
  mouse_.setWindowSelection(true);
  for (const std::int32_t mode : {0, 1, 2, 3, 5, -3}) {
    mouse_.mode().set(mode);
    press({100, 100});
    move({120, 130});
    EXPECT_FALSE(mouse_.rubberBand());
    release({120, 130});
  }
  EXPECT_EQ(host_.count("WindowSelection"), 0);
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

TEST_F(Mouse2DTest, SwitchingTheMiddleButtonOffEndsItsPan) {
  mouse_.setMiddleButtonActive(true);
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.setMiddleButtonActive(false);
  EXPECT_EQ(mouse_.mode().value(), 3);
  mouse_.mouseMove({200, 100}, kMiddle);
  expectUnmoved();
  mouse_.middleUp();
  EXPECT_EQ(mouse_.mode().value(), 3);
  EXPECT_EQ(host_.count("release"), 1);
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
  mouse_.mouseMove({300, 50}, kNone);
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

// Entering and leaving.

TEST_F(Mouse2DTest, LeavingIsTrackedOnceAVisit) {
  EXPECT_TRUE(mouse_.isMouseInside());
  mouse_.mouseLeave();
  EXPECT_FALSE(mouse_.isMouseInside());
  mouse_.mouseMove({200, 100}, kNone);
  mouse_.mouseMove({220, 100}, kNone);
  EXPECT_TRUE(mouse_.isMouseInside());
  EXPECT_EQ(host_.take(), (Calls{"MouseLeave", "track", "MouseMove 0,0", "MouseMove 1,0"}));
}

TEST_F(Mouse2DTest, TheCursorGlyphComesAndGoes) {
  host_.cursor = true;
  mouse_.mouseLeave();
  EXPECT_EQ(host_.take(), (Calls{"repaint", "MouseLeave"}));
  mouse_.mouseMove({200, 100}, kNone);
  EXPECT_EQ(host_.take(), (Calls{"repaint", "track", "MouseMove 0,0"}));
}

// Ends.

TEST_F(Mouse2DTest, AReleaseWithoutAPressOnlyFires) {
  mouse_.mode().set(4);
  release({200, 100});
  mouse_.middleUp();
  EXPECT_EQ(host_.take(), Calls{"MouseUp 0 0,0"});
  EXPECT_EQ(mouse_.mode().value(), 4);
}

TEST_F(Mouse2DTest, ALostCaptureEndsADragOnce) {
  mouse_.mode().set(4);
  press({100, 100});
  move({150, 150});
  host_.take();
  mouse_.captureLost();
  EXPECT_EQ(host_.take(), Calls{"repaint"});
  EXPECT_FALSE(mouse_.rubberBand());
  EXPECT_EQ(mouse_.mode().value(), 3);
  mouse_.captureLost();
  EXPECT_EQ(host_.take(), Calls());
  release({200, 200});
  EXPECT_EQ(host_.take(), Calls{"MouseUp 0 0,-5"});
  expectUnmoved();
}

TEST_F(Mouse2DTest, ALostCaptureEndsThePan) {
  mouse_.setMiddleButtonActive(true);
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.captureLost();
  EXPECT_EQ(mouse_.mode().value(), 3);
  mouse_.mouseMove({200, 200}, kMiddle);
  expectUnmoved();
}

TEST_F(Mouse2DTest, ReleasingTheCaptureReportsItAsLost) {
  host_.handlers["release"] = [&] { mouse_.captureLost(); };
  mouse_.mode().set(4);
  press({200, 100});
  release({240, 80});
  expectShown({0, 2, 0, 1});
  EXPECT_EQ(host_.count("repaint"), 1);
}

TEST_F(Mouse2DTest, AMoveThatReportsTheButtonAsUpEndsTheDrag) {
  mouse_.setMiddleButtonActive(true);
  mouse_.mode().set(4);
  press({100, 100});
  move({150, 150});
  host_.take();
  mouse_.mouseMove({200, 100}, kNone);
  EXPECT_EQ(host_.take(), (Calls{"repaint", "release", "MouseMove 0,0"}));
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.mouseMove({100, 100}, kNone);
  EXPECT_EQ(mouse_.mode().value(), 3);
  expectUnmoved();
}

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

TEST_F(Mouse2DTest, AReleaseWithinThePressEventLeavesNoDrag) {
  mouse_.mode().set(1);
  host_.handlers["MouseDown"] = [&] { release({100, 100}); };
  press({100, 100});
  move({200, 100});
  expectUnmoved();
  EXPECT_EQ(historyLength(), 1U);
  EXPECT_EQ(host_.count("capture"), 0);
}

TEST_F(Mouse2DTest, TheModeIsReadAfterThePressEvent) {
  host_.handlers["MouseDown"] = [&] { mouse_.mode().set(1); };
  press({100, 100});
  move({140, 100});
  expectShown({-12, 8, -5, 5});
}

TEST_F(Mouse2DTest, MovesWithinTheReleaseEventDragNoMore) {
  mouse_.mode().set(4);
  press({200, 100});
  host_.handlers["MouseUp"] = [&] {
    mouse_.mouseMove({300, 10}, kNone);
    EXPECT_FALSE(mouse_.rubberBand());
  };
  release({240, 80});
  expectShown({0, 2, 0, 1});
}

TEST_F(Mouse2DTest, APressWithinTheReleaseEventIsNotEndedByIt) {
  mouse_.mode().set(4);
  press({10, 10});
  host_.handlers["MouseUp"] = [&] {
    host_.handlers.clear();
    press({200, 100});
    move({240, 80});
  };
  release({50, 50});
  expectUnmoved();
  EXPECT_EQ(mouse_.rubberBand(), (RubberBand{{200, 100}, {240, 80}}));
  release({240, 80});
  expectShown({0, 2, 0, 1});
}

TEST_F(Mouse2DTest, AModeSetInTheReleaseEventWaitsForTheNextDrag) {
  mouse_.mode().set(0);
  host_.handlers["MouseUp"] = [&] { mouse_.mode().set(4); };
  press({10, 10});
  release({50, 50});
  EXPECT_EQ(mouse_.mode().value(), 4);
  expectUnmoved();
}

TEST_F(Mouse2DTest, WindowSelectionMayEndInTheSelectionEvent) {
  host_.selectables = true;
  mouse_.mode().set(-1);
  mouse_.setWindowSelection(true);
  host_.handlers["MouseSelection"] = [&] { mouse_.setWindowSelection(false); };
  press({10, 10});
  EXPECT_EQ(host_.count("capture"), 0);
}

TEST_F(Mouse2DTest, AMoveWithinAPickPicksNoPositionTwice) {
  host_.selectables = true;
  host_.handlers["pick"] = [&] { mouse_.mouseMove({30, 40}, kNone); };
  mouse_.mouseMove({30, 40}, kNone);
  EXPECT_EQ(host_.count("pick"), 1);
}

/// Closes the view in one kind of call: no call comes after it.
class ClosingGraphTest : public Mouse2DTest, public testing::WithParamInterface<const char*> {
 protected:
  template <class Message>
  void run(Message message) {
    bool closed = false;
    host_.handlers[GetParam()] = [&] {
      mouse_.close();
      closed = true;
      callsAtClose_ = host_.calls.size();
    };
    message();
    if (closed) {
      ++closings_;
      EXPECT_EQ(host_.calls.size(), callsAtClose_) << host_.calls.back();
    }
  }

  std::size_t callsAtClose_ = 0;
  int closings_ = 0;
};

TEST_P(ClosingGraphTest, NothingFollows) {
  host_.activeTrace = true;
  host_.selectables = true;
  host_.cursor = true;
  mouse_.setWindowSelection(true);
  mouse_.setMiddleButtonActive(true);
  for (const std::int32_t mode : {-1, 1, 3, 4}) {
    mouse_.mode().set(mode);
    run([&] { press({100, 100}); });
    run([&] { move({150, 150 + mode}); });
    run([&] { release({150, 150 + mode}); });
    run([&] { mouse_.leftDoubleClick({150, 150}); });
    run([&] { mouse_.middleDown({10, 10}, kMiddle); });
    run([&] { mouse_.mouseMove({20, 20}, kMiddle); });
    run([&] { mouse_.middleUp(); });
    run([&] { mouse_.mouseMove({30, 30 + mode}, kNone); });
    run([&] { mouse_.wheel(120, {}); });
    run([&] { mouse_.mouseLeave(); });
    run([&] { press({100, 100}); });
    run([&] { mouse_.captureLost(); });
    run([&] { press({100, 100}); });
    run([&] { mouse_.mouseMove({100, 100}, kNone); });
  }
  EXPECT_GT(closings_, 0);
  EXPECT_FALSE(mouse_.rubberBand());
}

INSTANTIATE_TEST_SUITE_P(EveryCall, ClosingGraphTest,
                         testing::Values("MouseDown", "MouseUp", "MouseMove", "MouseLeave",
                                         "MouseSelection", "MouseSelection2",
                                         "MouseSelectionDblClick", "MouseOn", "MouseOn2",
                                         "WindowSelection", "nearest", "capture", "release",
                                         "track", "repaint", "pick", "pickWithin"));

}  // namespace
}  // namespace zyn
