#include "view3d/Mouse3D.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/MouseTest.h"

namespace zyn::test {
namespace {

constexpr MouseKeys kMiddleControl(MouseKeys::kMiddle | MouseKeys::kControl);
constexpr MouseKeys kMiddleShift(MouseKeys::kMiddle | MouseKeys::kShift);

TEST_F(Mouse3DTest, Defaults) {
  EXPECT_EQ(mouse_.mode().value(), 2);
  EXPECT_FALSE(mouse_.windowSelection());
  EXPECT_FALSE(mouse_.selectSuperpose());
  EXPECT_TRUE(mouse_.middleButtonActive());
  EXPECT_FALSE(mouse_.middleButtonInverse());
  EXPECT_EQ(mouse_.middleButtonAcceleration(), 1.0);
}

TEST_F(Mouse3DTest, EveryPressKeepsTheCameraInTheHistory) {
  const CParamsVue3D before(camera());
  mouse_.mode().set(0);
  press({10, 20});
  release({10, 20});
  mouse_.mode().set(MouseMode3D::kPan);
  press({10, 20});
  move({50, 90});
  release({50, 90});
  EXPECT_TRUE(view_.lastView());
  expectSameView(camera(), before);
}

TEST_F(Mouse3DTest, AReleaseFiresThenReleasesTheCaptureThenRepaints) {
  press({10, 20});
  host_.take();
  release({15, 20});
  EXPECT_EQ(host_.take(), (Calls{"MouseUp 0 15,20", "release", "repaint"}));
}

TEST_F(Mouse3DTest, RightAndMiddleFire) {
  mouse_.rightDown({1, 2});
  mouse_.rightUp({3, 4});
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 1 1,2", "MouseUp 1 3,4"}));
  mouse_.middleDown({5, 6}, kMiddle);
  mouse_.middleUp({7, 8});
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 2 5,6", "capture", "MouseUp 2 7,8", "release"}));
}

TEST_F(Mouse3DTest, MovesFireWithTheirKey) {
  mouse_.mouseMove({1, 2}, kNoKeys);
  mouse_.mouseMove({3, -4}, kControl);
  mouse_.mouseMove({5, 6}, kShift);
  mouse_.mouseMove({7, 8}, kLeft);
  EXPECT_EQ(host_.take(),
            (Calls{"MouseMove 0 1,2", "MouseMove 1 3,-4", "MouseMove 2 5,6", "MouseMove 3 7,8"}));
}

TEST_F(Mouse3DTest, WithoutACameraOnlyEventsFire) {
  ViewState3D empty;
  empty.setClientSize({400, 200});
  Mouse3D navigation(empty, host_);
  host_.selectables = true;
  navigation.mode().set(MouseMode3D::kSelect);
  navigation.setWindowSelection(true);
  navigation.mouseMove({5, 5}, kNoKeys);
  navigation.leftDown({10, 20}, kLeft);
  navigation.mouseMove({60, 70}, kLeft);
  EXPECT_FALSE(navigation.rubberBand());
  navigation.leftUp({60, 70}, kNoKeys);
  navigation.wheel(120, {1, 1});
  EXPECT_EQ(host_.take(), (Calls{"track", "MouseMove 0 5,5", "MouseDown 0 10,20",
                                 "MouseMove 3 60,70", "MouseUp 0 60,70", "repaint"}));
  EXPECT_FALSE(empty.history().head());
}

TEST_F(Mouse3DTest, OneShotModeEndsWithoutACameraToo) {
  ViewState3D empty;
  Mouse3D navigation(empty, host_);
  navigation.mode().set(MouseMode3D::kRectangle);
  navigation.leftDown({10, 20}, kLeft);
  navigation.leftUp({60, 70}, kNoKeys);
  EXPECT_EQ(navigation.mode().value(), 2);
}

// Camera moves. 40 pixels are a tenth of the width, 20 pixels a tenth of the height.

TEST_F(Mouse3DTest, PanKeepsTheScenePointUnderThePointer) {
  mouse_.mode().set(MouseMode3D::kPan);
  press({100, 100});
  move({140, 80});
  // To the right by 0.1 x 2: the camera goes left; upwards by 0.1 x 1: it goes down.
  expectNear(camera().target(), Point(-0.2F, -0.1F, 0), 1e-7);
  // Each translation moves the eye back by twice its length.
  expectNear(camera().eye(), Point(-0.2F, -0.1F, std::sqrt(3.0) + 0.4 + 0.2), 1e-7);
  EXPECT_EQ(host_.count("repaint"), 1);
}

TEST_F(Mouse3DTest, RatiosAreSinglePrecision) {
  mouse_.mode().set(MouseMode3D::kPan);
  press({100, 100});
  move({101, 100});
  EXPECT_EQ(camera().target().x, -static_cast<double>(1.0F / 400.0F) * 2.0);
  release({101, 100});
  view_.setClientSize({300, 200});
  press({100, 100});
  const double before = camera().target().x;
  move({101, 100});
  EXPECT_EQ(camera().target().x, before - static_cast<double>(1.0F / 300.0F) * 2.0);
}

TEST_F(Mouse3DTest, AFullWidthTurnsAllTheWayRound) {
  press({0, 100});
  move({400, 100});
  expectNear(camera().eye(), Point(0, 0, std::sqrt(3.0)), 1e-6);
  move({300, 100});  // a quarter back
  expectNear(camera().eye(), Point(std::sqrt(3.0), 0, 0), 1e-6);
  expectNear(camera().up(), Vecteur(0, 1, 0), 1e-6);
}

TEST_F(Mouse3DTest, RotationTurnsByMinusTheRatio) {
  press({100, 100});
  move({200, 100});
  expectNear(camera().eye(), Point(-std::sqrt(3.0), 0, 0), 1e-6);
}

TEST_F(Mouse3DTest, RotationUpwardsLooksFromAbove) {
  press({100, 100});
  move({100, 50});
  expectNear(camera().eye(), Point(0, std::sqrt(3.0), 0), 1e-6);
  expectNear(camera().up(), Vecteur(0, 0, -1), 1e-6);
}

TEST_F(Mouse3DTest, RotationGoesSidewaysFirst) {
  CParamsVue3D expected(camera());
  expected.rotateH(-36.0);
  expected.rotateV(36.0);
  press({100, 100});
  move({140, 120});
  expectNear(camera().eye(), expected.eye(), 1e-6);
  expectNear(camera().up(), expected.up(), 1e-6);
}

TEST_F(Mouse3DTest, ZoomDividesByOneMinusThreeRatios) {
  const std::size_t before = historyLength();
  mouse_.mode().set(MouseMode3D::kZoom);
  press({100, 100});
  move({100, 80});
  EXPECT_NEAR(camera().width(), 2 / 0.7, 1e-6);
  EXPECT_NEAR(camera().height(), 1 / 0.7, 1e-6);
  move({150, 100});  // 20 pixels down
  EXPECT_NEAR(camera().width(), 2 / 0.7 / 1.3, 1e-6);
  EXPECT_EQ(historyLength(), before + 3) << "the press and two steps";
}

TEST_F(Mouse3DTest, AnyZoomCoefficientIsSurvived) {
  view_.setClientSize({300, 300});
  mouse_.mode().set(MouseMode3D::kZoom);
  press({100, 200});
  move({100, 100});  // coefficient 0
  EXPECT_TRUE(std::isinf(camera().width()));
  move({110, 90});
  move({130, 290});
  release({130, 290});
  view_.initView(0, cube);
  EXPECT_NEAR(camera().width(), std::sqrt(3.0), 1e-12);
}

TEST_F(Mouse3DTest, EachStepStartsWhereTheLastEnded) {
  mouse_.mode().set(MouseMode3D::kPan);
  press({100, 100});
  move({120, 100});
  move({140, 100});
  move({140, 100});  // as the system repeats moves
  expectNear(camera().target(), Point(-0.2F, 0, 0), 1e-7);
  EXPECT_EQ(host_.count("repaint"), 2);
  EXPECT_EQ(host_.count("MouseMove"), 3);
}

TEST_F(Mouse3DTest, OtherModesOnlyFireEvents) {
  const CParamsVue3D before(camera());
  for (const std::int32_t mode : {0, 5, -3, 32767, -32768, -1, -2, 4}) {
    mouse_.mode().set(mode);
    press({100, 100});
    move({150, 150});
    expectSameView(camera(), before);
    EXPECT_EQ(host_.calls.back(), "MouseMove 3 150,150");
    release({150, 150});
  }
}

TEST_F(Mouse3DTest, AHostMayChangeTheModeDuringADrag) {
  mouse_.mode().set(MouseMode3D::kPan);
  press({100, 100});
  move({120, 100});
  const CParamsVue3D panned(camera());
  mouse_.mode().set(0);
  move({140, 100});
  expectSameView(camera(), panned);
  mouse_.mode().set(MouseMode3D::kZoom);
  move({140, 80});  // counted from the last step that moved the camera
  EXPECT_NEAR(camera().height(), 1 / 0.7, 1e-6);
}

TEST_F(Mouse3DTest, NothingMovesInAnEmptyClientArea) {
  press({100, 100});
  view_.setClientSize({0, 0});
  const CParamsVue3D before(camera());
  move({150, 150});
  expectSameView(camera(), before);
}

// The middle button.

TEST_F(Mouse3DTest, TheMiddleButtonPansUntilTheFirstMoveThenFollowsTheKeys) {
  mouse_.middleDown({100, 100}, kMiddle);
  EXPECT_EQ(mouse_.mode().value(), 1);
  mouse_.mouseMove({100, 100}, kMiddle);
  EXPECT_EQ(mouse_.mode().value(), 2);
  mouse_.mouseMove({100, 100}, kMiddleShift);
  EXPECT_EQ(mouse_.mode().value(), 3);
  mouse_.mouseMove({100, 100}, kMiddleControl);
  EXPECT_EQ(mouse_.mode().value(), 1);
  mouse_.mouseMove({100, 100},
                   MouseKeys(MouseKeys::kMiddle | MouseKeys::kControl | MouseKeys::kShift));
  EXPECT_EQ(mouse_.mode().value(), 1);
}

TEST_F(Mouse3DTest, TheMiddleButtonRotatesPansAndZooms) {
  mouse_.mode().set(-1);
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.mouseMove({200, 100}, kMiddle);
  expectNear(camera().eye(), Point(-std::sqrt(3.0), 0, 0), 1e-6);
  mouse_.mouseMove({200, 80}, kMiddleShift);
  EXPECT_NEAR(camera().height(), 1 / 0.7, 1e-6);
  const double before = camera().target().y;
  mouse_.mouseMove({200, 100}, kMiddleControl);
  EXPECT_NEAR(camera().target().y, before + 0.1 * camera().height(), 1e-6);
  mouse_.middleUp({200, 100});
  EXPECT_EQ(mouse_.mode().value(), -1);
}

TEST_F(Mouse3DTest, AMiddlePressRecordsNoHistory) {
  const std::size_t before = historyLength();
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.mouseMove({200, 100}, kMiddle);
  mouse_.middleUp({200, 100});
  EXPECT_EQ(historyLength(), before);
}

TEST_F(Mouse3DTest, AnInactiveMiddleButtonOnlyFires) {
  mouse_.setMiddleButtonActive(false);
  const CParamsVue3D before(camera());
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.mouseMove({200, 100}, kMiddleShift);
  EXPECT_EQ(mouse_.mode().value(), 2);
  mouse_.middleUp({200, 100});
  EXPECT_EQ(mouse_.mode().value(), 2);
  expectSameView(camera(), before);
  EXPECT_EQ(host_.take(), (Calls{"MouseDown 2 100,100", "capture", "MouseMove 2 200,100",
                                 "MouseUp 2 200,100", "release"}));
}

TEST_F(Mouse3DTest, TheCaptureLastsUntilTheLastButtonIsReleased) {
  press({100, 100});
  host_.take();
  mouse_.middleDown({100, 100}, MouseKeys(MouseKeys::kLeft | MouseKeys::kMiddle));
  EXPECT_EQ(host_.take(), Calls{"MouseDown 2 100,100"});
  mouse_.middleUp({100, 100});
  EXPECT_EQ(host_.take(), Calls{"MouseUp 2 100,100"});
  move({200, 100});
  expectNear(camera().eye(), Point(-std::sqrt(3.0), 0, 0), 1e-6);
  host_.take();
  release({200, 100});
  EXPECT_EQ(host_.take(), (Calls{"MouseUp 0 200,100", "release", "repaint"}));
}

TEST_F(Mouse3DTest, OneShotModeOutlivesTheMiddleButton) {
  mouse_.mode().set(3);
  mouse_.mode().set(4);
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.middleUp({100, 100});
  EXPECT_EQ(mouse_.mode().value(), 4);
  press({100, 100});
  release({150, 150});
  EXPECT_EQ(mouse_.mode().value(), 3);
}

// Picks.

TEST_F(Mouse3DTest, OnlySelectionModesPickAtAPress) {
  host_.selectables = true;
  for (const std::int32_t mode : {1, 2, 3, 4, 0, 7, -3}) {
    mouse_.mode().set(mode);
    press({10, 20});
    release({10, 20});
  }
  EXPECT_EQ(host_.count("pick"), 0);
}

TEST_F(Mouse3DTest, WithoutSelectablesNothingIsPicked) {
  mouse_.mode().set(-1);
  press({10, 20});
  release({10, 20});
  mouse_.mouseMove({30, 30}, kNoKeys);
  EXPECT_EQ(host_.count("pick"), 0);
  EXPECT_EQ(host_.count("MouseSelection"), 0);
  EXPECT_EQ(host_.count("MouseOn"), 0);
}

// The rubber band.

TEST_F(Mouse3DTest, ARubberBandSelects) {
  mouse_.mode().set(-1);
  mouse_.setWindowSelection(true);
  host_.hits = twoHits();
  press({100, 150});
  EXPECT_FALSE(mouse_.rubberBand());
  move({200, 50});
  EXPECT_EQ(mouse_.rubberBand(), (RubberBand{{100, 150}, {200, 50}}));
  move({250, 25});
  EXPECT_EQ(mouse_.rubberBand(), (RubberBand{{100, 150}, {250, 25}}));
  EXPECT_EQ(host_.count("repaint"), 2);
  host_.take();
  release({250, 25});
  const std::string rectangle = "-0.25:0.125,-0.25:0.375,1,1";
  EXPECT_EQ(host_.take(), (Calls{"MouseUp 0 250,25", "release", "pickWithin " + rectangle,
                                 "WindowSelection 0 " + rectangle + " {5,6,8}", "repaint"}));
  EXPECT_FALSE(mouse_.rubberBand());
  EXPECT_EQ(mouse_.mode().value(), -1);
}

TEST_F(Mouse3DTest, TheKeyOfAWindowSelectionIsThatOfTheRelease) {
  mouse_.mode().set(-2);
  mouse_.setWindowSelection(true);
  for (const auto& [keys, key] : {std::pair(kControl, 1), std::pair(kShift, 2)}) {
    mouse_.leftDown({250, 25}, kLeft);
    mouse_.leftUp({100, 150}, keys);
    EXPECT_EQ(host_.calls[host_.calls.size() - 2],
              "WindowSelection " + std::to_string(key) + " -0.25:0.125,-0.25:0.375,-1,-1 nothing");
  }
}

TEST_F(Mouse3DTest, WithoutWindowSelectionThereIsNoRubberBand) {
  mouse_.mode().set(-1);
  press({100, 100});
  move({200, 150});
  EXPECT_FALSE(mouse_.rubberBand());
  release({200, 150});
  EXPECT_EQ(host_.count("WindowSelection"), 0);
}

TEST_F(Mouse3DTest, ModeFourSelectsOnce) {
  host_.selectables = true;
  mouse_.mode().set(3);
  mouse_.mode().set(4);
  press({100, 150});
  move({250, 25});
  EXPECT_TRUE(mouse_.rubberBand());
  EXPECT_EQ(host_.count("MouseSelection"), 0);
  host_.handlers["WindowSelection"] = [&] { EXPECT_EQ(mouse_.mode().value(), 4); };
  release({250, 25});
  EXPECT_EQ(host_.count("WindowSelection"), 1);
  EXPECT_EQ(mouse_.mode().value(), 3);
  press({100, 150});
  release({250, 25});
  EXPECT_EQ(host_.count("WindowSelection"), 1);
}

TEST_F(Mouse3DTest, ModeFourEndsAfterAnEmptyRectangleToo) {
  mouse_.mode().set(4);
  press({100, 150});
  release({100, 150});
  EXPECT_EQ(host_.count("WindowSelection"), 0);
  EXPECT_EQ(mouse_.mode().value(), 2);
}

// The wheel.

TEST_F(Mouse3DTest, ANotchZoomsAboutTheLastPosition) {
  view_.setClientSize({800, 600});
  view_.fitWindow();
  view_.rotateH(20);
  view_.rotateV(-35);
  CParamsVue3D before(camera());
  const std::size_t history = historyLength();
  mouse_.mouseMove({30, 540}, kNoKeys);
  host_.take();
  mouse_.wheel(120, {500, 500});
  EXPECT_EQ(host_.take(), Calls{"repaint"});
  CParamsVue3D after(camera());
  expectNear(after.pixelToWorld(30, 540), before.pixelToWorld(30, 540), 1e-9);
  EXPECT_NEAR(after.width(), before.width() / 0.96, 1e-6);
  EXPECT_NEAR(after.height(), before.height() / 0.96, 1e-6);
  expectNear(after.direction(), before.direction(), 1e-12);
  EXPECT_EQ(historyLength(), history);
  EXPECT_EQ(view_.lastParams()->width(), after.width());
}

TEST_F(Mouse3DTest, TheWheelTakesItsOwnPositionUntilTheMouseHasMoved) {
  Mouse3D navigation(view_, host_);
  CParamsVue3D before(camera());
  navigation.wheel(100, {50, 60});
  expectNear(CParamsVue3D(camera()).pixelToWorld(50, 60), before.pixelToWorld(50, 60), 1e-9);
  EXPECT_NEAR(camera().height(), 1 / 0.9, 1e-6);
}

/// What turns of the wheel divide the view rectangle by, in a view 200 pixels high.
class WheelTest : public Mouse3DTest {
 protected:
  double factorOf(int delta) {
    const double before = camera().height();
    mouse_.wheel(delta, {});
    return before / camera().height();
  }
};

TEST_F(WheelTest, BothSenses) {
  EXPECT_DOUBLE_EQ(factorOf(120), 1.0F - 120.0F / 1000.0F);
  EXPECT_DOUBLE_EQ(factorOf(-120), 1.0F + 120.0F / 1000.0F);
  mouse_.setMiddleButtonInverse(true);
  EXPECT_DOUBLE_EQ(factorOf(120), 1.0F + 120.0F / 1000.0F);
}

TEST_F(WheelTest, IsAccelerated) {
  mouse_.setMiddleButtonAcceleration(2.5);
  EXPECT_DOUBLE_EQ(factorOf(100), 0.75);
  mouse_.setMiddleButtonAcceleration(-2.5);
  EXPECT_DOUBLE_EQ(factorOf(100), 1.25);
}

TEST_F(WheelTest, TurnsAreTruncatedTowardsZero) {
  mouse_.setMiddleButtonAcceleration(0.0999);
  EXPECT_DOUBLE_EQ(factorOf(100), 1.0F - 9.0F / 1000.0F);
  EXPECT_DOUBLE_EQ(factorOf(-100), 1.0F + 9.0F / 1000.0F);
  mouse_.setMiddleButtonAcceleration(0.0099);
  EXPECT_DOUBLE_EQ(factorOf(100), 1.0);
}

TEST_F(WheelTest, AnyAccelerationIsSurvived) {
  for (const double factor : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
    mouse_.setMiddleButtonAcceleration(factor);
    mouse_.wheel(120, {});
    mouse_.wheel(0, {});
  }
  EXPECT_EQ(host_.count("repaint"), 8);
  view_.initView(0, cube);
  EXPECT_NEAR(camera().height(), std::sqrt(3.0), 1e-12);
}

TEST_F(Mouse3DTest, TheWheelDoesNothingInAnEmptyClientArea) {
  view_.setClientSize({400, 0});
  mouse_.wheel(120, {});
  EXPECT_EQ(host_.take(), Calls());
}

// Ends.

TEST_F(Mouse3DTest, TheSecondReleaseOfADoubleClickOnlyFires) {
  mouse_.mode().set(4);
  press({100, 100});
  release({150, 150});
  mouse_.mode().set(4);
  host_.take();
  release({200, 200});
  EXPECT_EQ(host_.take(), Calls{"MouseUp 0 200,200"});
  EXPECT_EQ(mouse_.mode().value(), 4);
}

TEST_F(Mouse3DTest, ALostCaptureWithoutADragLeavesModesAlone) {
  mouse_.mode().set(4);
  mouse_.captureLost();
  EXPECT_EQ(mouse_.mode().value(), 4);
  EXPECT_EQ(host_.take(), Calls());
}

TEST_F(Mouse3DTest, APressThatDoesNotReportItsButtonIsBelieved) {
  mouse_.leftDown({100, 100}, kNoKeys);
  mouse_.mouseMove({200, 100}, kNoKeys);
  expectNear(camera().eye(), Point(-std::sqrt(3.0), 0, 0), 1e-6);
  host_.selectables = true;
  mouse_.mouseMove({210, 100}, kNoKeys);
  EXPECT_EQ(host_.count("pick"), 0);
  mouse_.leftUp({200, 100}, kNoKeys);
  EXPECT_EQ(host_.calls.back(), "repaint");
}

TEST_F(Mouse3DTest, APressAfterAMissedReleaseStartsAnew) {
  mouse_.mode().set(4);
  press({10, 10});
  move({20, 20});
  press({100, 150});
  EXPECT_FALSE(mouse_.rubberBand());
  move({250, 25});
  EXPECT_EQ(mouse_.rubberBand(), (RubberBand{{100, 150}, {250, 25}}));
  release({250, 25});
  EXPECT_EQ(host_.count("WindowSelection"), 1);
  EXPECT_EQ(mouse_.mode().value(), 2);
}

TEST_F(Mouse3DTest, AMiddlePressAfterAMissedReleaseStartsAnew) {
  mouse_.mode().set(-1);
  mouse_.middleDown({100, 100}, kMiddle);
  host_.handlers["MouseDown"] = [&] { EXPECT_EQ(mouse_.mode().value(), -1); };
  mouse_.middleDown({100, 100}, kMiddle);
  EXPECT_EQ(mouse_.mode().value(), 1);
  mouse_.middleUp({100, 100});
  EXPECT_EQ(mouse_.mode().value(), -1);
}

// What event handlers do.

TEST_F(Mouse3DTest, AMiddleReleaseWithinThePressEventLeavesNoDrag) {
  const std::size_t history = historyLength();
  host_.handlers["MouseDown"] = [&] { mouse_.middleUp({100, 100}); };
  mouse_.middleDown({100, 100}, kMiddle);
  mouse_.mouseMove({200, 100}, kNoKeys);
  expectUnmoved();
  EXPECT_EQ(historyLength(), history);
  EXPECT_EQ(host_.count("capture"), 0);
  EXPECT_EQ(mouse_.mode().value(), 2);
}

TEST_F(Mouse3DTest, TheEndOfModesWithinThePressEventLeavesNoDrag) {
  host_.handlers["MouseDown"] = [&] { mouse_.captureLost(); };
  press({100, 100});
  mouse_.middleDown({100, 100}, kMiddle);
  EXPECT_EQ(host_.count("capture"), 0);
}

TEST_F(Mouse3DTest, AMiddlePressWithinTheReleaseEventIsNotEndedByIt) {
  mouse_.middleDown({10, 10}, kMiddle);
  host_.handlers["MouseUp"] = [&] { mouse_.middleDown({100, 100}, kMiddle); };
  mouse_.middleUp({10, 10});
  EXPECT_EQ(mouse_.mode().value(), 1);
  EXPECT_EQ(host_.count("release"), 0);
  host_.handlers.clear();
  mouse_.middleUp({100, 100});
  EXPECT_EQ(mouse_.mode().value(), 2);
  EXPECT_EQ(host_.count("release"), 1);
}

TEST_F(Mouse3DTest, AModeSetInTheSelectionEventStays) {
  mouse_.mode().set(4);
  host_.handlers["WindowSelection"] = [&] { mouse_.mode().set(MouseMode3D::kZoom); };
  press({10, 10});
  release({50, 50});
  EXPECT_EQ(mouse_.mode().value(), 3);
}

TEST_F(Mouse3DTest, TheCaptureMayBeLostWhileItIsTaken) {
  host_.handlers["capture"] = [&] { mouse_.captureLost(); };
  press({100, 100});
  const CParamsVue3D before(camera());
  move({200, 100});
  expectSameView(camera(), before);
}

}  // namespace
}  // namespace zyn::test
