#include "support/ArrayVariant_win.h"
#include "support/Pickable_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

/// A scene of 20 x 10 around the origin, which the view shows at 20 pixels a unit.
constexpr Bounds kScene = {-10, 10, -5, 5, -1, 1};

class View3DMouse : public HostTest {
 protected:
  View3DMouse() { startScene(host); }

  static void startScene(const View3DHost& view) {
    view.addBox(kScene);
    require(view->initView(0), "initView");
    require(view->VueXYp(0), "VueXYp");
  }

  static std::vector<double> frameOf(const View3DHost& view) {
    _variant_t value;
    require(view->XFormView(&value), "XFormView");
    return doublesIn(value);
  }
  std::vector<double> frame() const { return frameOf(host); }

  static void expectFrame(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < actual.size(); ++i) {
      // Ratios of a drag are in single precision.
      EXPECT_NEAR(actual[i], expected[i], 1e-5) << i;
    }
  }
  /// What these calls would make of the scene.
  template <class Calls>
  static std::vector<double> frameAfter(Calls calls) {
    const View3DHost other;
    startScene(other);
    calls(other.get());
    return frameOf(other);
  }

  short mode() const {
    short value = 0;
    host->get_MouseMode(&value);
    return value;
  }

  /// Events as "number(arguments)" without selections.
  std::vector<std::vector<long>> log() const {
    std::vector<std::vector<long>> all;
    for (const auto& event : host.events()) {
      std::vector<long> entry = {event.event};
      for (const auto& argument : event.arguments) {
        if (argument.vt == VT_I4 || argument.vt == VT_INT) entry.push_back(argument.lVal);
      }
      all.push_back(entry);
    }
    return all;
  }
  using Log = std::vector<std::vector<long>>;

  /// A plate that can be picked, in pixels of the view.
  ComPtr<ForeignObject> addSelectable(long name, int left, int top, int right, int bottom,
                                      double z = 0) {
    auto object = makePickable(
        {static_cast<GLuint>(name)},
        {(left - 200) / 20.0, (right - 200) / 20.0, (100 - bottom) / 20.0, (100 - top) / 20.0, z});
    host->AddSelection(object->dispatch());
    return object;
  }

  View3DHost host;
};

TEST_F(View3DMouse, ButtonsAreReportedWithTheirNumbers) {
  host.send(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 11, 21);
  host.send(WM_RBUTTONDOWN, 12, 22, MK_RBUTTON);
  host.send(WM_RBUTTONUP, 13, 23);
  host.send(WM_MBUTTONDOWN, 14, 24, MK_MBUTTON);
  host.send(WM_MBUTTONUP, 15, 25);
  EXPECT_EQ(log(), (Log{{kMouseDown, 0, 10, 20},
                        {kMouseUp, 0, 11, 21},
                        {kMouseDown, 1, 12, 22},
                        {kMouseUp, 1, 13, 23},
                        {kMouseDown, 2, 14, 24},
                        {kMouseUp, 2, 15, 25}}));
}

TEST_F(View3DMouse, KeyTellsWhatIsHeld) {
  struct {
    WPARAM held;
    long key;
  } const cases[] = {
      {0, 0},
      {MK_CONTROL, 1},
      {MK_SHIFT, 2},
      {MK_CONTROL | MK_SHIFT, 1},
      {MK_LBUTTON, 3},
      {MK_LBUTTON | MK_CONTROL, 1},
      {MK_LBUTTON | MK_SHIFT, 2},
      {MK_LBUTTON | MK_RBUTTON, 0},
      {MK_RBUTTON, 0},
      {MK_MBUTTON, 0},
  };
  for (const auto& held : cases) {
    host.forgetEvents();
    host.move(30, 40, held.held);
    EXPECT_EQ(log(), (Log{{kMouseMove, held.key, 30, 40}})) << held.held;
  }
}

TEST_F(View3DMouse, PositionsBeyondTheEdgesAreSigned) {
  host.send(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  host.forgetEvents();
  host.move(-5, -7, MK_LBUTTON);
  EXPECT_EQ(log(), (Log{{kMouseMove, 3, -5, -7}}));
}

TEST_F(View3DMouse, Mode2Rotates) {
  host.drag({{100, 100}, {200, 80}});
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) {
                view->RotateH(-90);
                view->RotateV(-36);
              }));
}

TEST_F(View3DMouse, FullWidthIsAFullTurn) {
  const auto before = frame();
  host.drag({{0, 100}, {100, 100}, {250, 100}, {400, 100}});
  expectFrame(frame(), before);
}

TEST_F(View3DMouse, DragsInStepsEqualOneDrag) {
  host.drag({{100, 100}, {120, 100}, {130, 100}, {200, 100}});
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) { view->RotateH(-90); }));
}

TEST_F(View3DMouse, Mode1PansWithTheMouse) {
  host->put_MouseMode(1);
  host.drag({{100, 100}, {140, 80}});
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) {
                view->TranslateH(-2);
                view->TranslateV(-1);
              }));
}

TEST_F(View3DMouse, Mode3Zooms) {
  host->put_MouseMode(3);
  host.drag({{100, 100}, {170, 80}});
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) { view->Zoom(1 - 3 * 0.1); }));
}

TEST_F(View3DMouse, AZoomDragLeavesHistoryAtEachStep) {
  const auto before = frame();
  host->put_MouseMode(3);
  host.drag({{100, 100}, {100, 110}, {100, 120}});
  for (int i = 0; i < 3; ++i) host->LastView();  // two steps and the press
  expectFrame(frame(), before);
  host->LastView();
  EXPECT_NE(frame(), before) << "the view before that";
}

TEST_F(View3DMouse, WildZoomDragsAreRecovered) {
  host->put_MouseMode(3);
  host->put_DrawCoordSys(VARIANT_TRUE);
  host.send(WM_LBUTTONDOWN, 10, 199, MK_LBUTTON);
  for (const int y : {-3000, 3000, 0, 67, -32000, 32000, 1}) {
    host.move(10, y, MK_LBUTTON);
    host.paint();
  }
  host.send(WM_LBUTTONUP, 10, 0);
  host->VueXYp(0);
  expectFrame(frame(), frameAfter([](IZYNVue3D*) {}));
}

TEST_F(View3DMouse, OtherModesMoveNothing) {
  const auto before = frame();
  for (const short other : {short{0}, short{5}, short{-3}, short{4}, short{-1}, short{-2}}) {
    host->put_MouseMode(other);
    host.drag({{100, 100}, {140, 80}});
    expectFrame(frame(), before);
  }
}

TEST_F(View3DMouse, EveryLeftPressIsUndoable) {
  const auto before = frame();
  host.drag({{100, 100}, {140, 80}, {10, 3}});
  host->LastView();
  expectFrame(frame(), before);
}

TEST_F(View3DMouse, MovesWithoutAPressMoveNothing) {
  const auto before = frame();
  host.move(10, 10, MK_LBUTTON);
  host.move(90, 90, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 90, 90);
  host.move(20, 20, MK_LBUTTON);
  expectFrame(frame(), before);
  EXPECT_EQ(host.events(kMouseUp).size(), 1U);
}

TEST_F(View3DMouse, MiddleDragFollowsTheKeys) {
  host.middleDrag({{100, 100}, {200, 100}});
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) { view->RotateH(-90); }));
  host->VueXYp(0);
  host.middleDrag({{100, 100}, {140, 80}}, MK_CONTROL);
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) {
                view->TranslateH(-2);
                view->TranslateV(-1);
              }));
  host->VueXYp(0);
  host.middleDrag({{100, 100}, {140, 80}}, MK_SHIFT);
  expectFrame(frame(), frameAfter([](IZYNVue3D* view) { view->Zoom(1 - 3 * 0.1); }));
  EXPECT_EQ(mode(), 2);
}

TEST_F(View3DMouse, MiddleDragGivesTheModeBack) {
  for (const short before : {short{1}, short{3}, short{4}, short{-1}, short{77}}) {
    host->put_MouseMode(before);
    host.send(WM_MBUTTONDOWN, 10, 10, MK_MBUTTON);
    EXPECT_EQ(mode(), 1) << "a press pans until the mouse moves";
    host.move(20, 20, MK_MBUTTON);
    host.send(WM_MBUTTONUP, 20, 20);
    EXPECT_EQ(mode(), before);
  }
}

TEST_F(View3DMouse, MiddleButtonCanBeSwitchedOff) {
  host->put_MiddleButtonActive(VARIANT_FALSE);
  const auto before = frame();
  host.middleDrag({{100, 100}, {200, 50}});
  expectFrame(frame(), before);
  EXPECT_EQ(mode(), 2);
  EXPECT_EQ(host.events(kMouseDown).size(), 1U);
  EXPECT_EQ(host.events(kMouseUp).size(), 1U);
}

TEST_F(View3DMouse, CaptureLastsAsLongAsTheButtons) {
  host.send(WM_LBUTTONDOWN, 10, 10, MK_LBUTTON);
  EXPECT_EQ(GetCapture(), host.window());
  host.send(WM_LBUTTONUP, 10, 10);
  EXPECT_EQ(GetCapture(), nullptr);
  host.send(WM_MBUTTONDOWN, 10, 10, MK_MBUTTON);
  EXPECT_EQ(GetCapture(), host.window());
  host.send(WM_MBUTTONUP, 10, 10);
  EXPECT_EQ(GetCapture(), nullptr);
  host.send(WM_RBUTTONDOWN, 10, 10, MK_RBUTTON);
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(View3DMouse, APressTakesTheFocus) {
  for (const UINT message :
       std::initializer_list<UINT>{WM_LBUTTONDOWN, WM_MBUTTONDOWN, WM_RBUTTONDOWN}) {
    SetFocus(nullptr);
    host.send(message, 10, 10);
    EXPECT_EQ(GetFocus(), host.window()) << message;
    host.send(message + 1, 10, 10);
  }
}

TEST_F(View3DMouse, ADragEndsWithTheCapture) {
  for (const UINT loss : std::initializer_list<UINT>{WM_CAPTURECHANGED, WM_CANCELMODE}) {
    host->VueXYp(0);
    const auto before = frame();
    host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
    SendMessageW(host.window(), loss, 0, 0);
    host.move(200, 100, MK_LBUTTON);
    expectFrame(frame(), before);
    host.forgetEvents();
    host.send(WM_LBUTTONUP, 200, 100);
    EXPECT_EQ(log(), (Log{{kMouseUp, 0, 200, 100}}));
  }
}

TEST_F(View3DMouse, ADragEndsWhenAnotherWindowTakesTheMouse) {
  const View3DHost other;
  host->put_MouseMode(4);
  host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
  host.move(200, 150, MK_LBUTTON);
  SetCapture(other.window());
  host.send(WM_LBUTTONUP, 200, 150);
  EXPECT_TRUE(host.events(kWindowSelection).empty());
  EXPECT_EQ(GetCapture(), other.window());
  ReleaseCapture();
}

TEST_F(View3DMouse, WithoutACameraThereAreEventsOnly) {
  View3DHost empty;
  empty.send(WM_LBUTTONDOWN, 1, 2, MK_LBUTTON);
  EXPECT_EQ(GetCapture(), nullptr);
  empty.move(50, 60, MK_LBUTTON);
  empty.send(WM_LBUTTONUP, 50, 60);
  empty.wheel(120);
  EXPECT_EQ(empty.events().size(), 3U);
  _variant_t value;
  empty->XFormView(&value);
  EXPECT_EQ(value.vt, VT_EMPTY);
  empty->LastView();
  empty->XFormView(&value);
  EXPECT_EQ(value.vt, VT_EMPTY) << "no view to go back to";
}

TEST_F(View3DMouse, WheelZoomsByItsFactor) {
  double before = 0;
  host->getWindowScale(&before);
  const auto zoomedBy = [&](int delta) {
    host->VueXYp(0);
    host.wheel(delta);
    double after = 0;
    host->getWindowScale(&after);
    return before / after;
  };
  EXPECT_NEAR(zoomedBy(120), 1 - 120.0 / (5 * 200), 1e-6);
  EXPECT_NEAR(zoomedBy(-240), 1 + 240.0 / (5 * 200), 1e-6);
  host->put_MiddleButtonInverse(VARIANT_TRUE);
  EXPECT_NEAR(zoomedBy(120), 1 + 120.0 / (5 * 200), 1e-6);
  host->put_MiddleButtonAcceleration(0.0158);  // 1.896 is truncated to 1
  EXPECT_NEAR(zoomedBy(-120), 1 - 1.0 / (5 * 200), 1e-6);
  EXPECT_NEAR(zoomedBy(120), 1 + 1.0 / (5 * 200), 1e-6);
}

TEST_F(View3DMouse, WheelNotchInAHighWindow) {
  View3DHost high({600, 600});
  startScene(high);
  double before = 0;
  high->getWindowScale(&before);
  high.wheel(120);
  double after = 0;
  high->getWindowScale(&after);
  EXPECT_NEAR(before / after, 0.96, 1e-6);
}

TEST_F(View3DMouse, WheelLeavesNoHistory) {
  const auto start = frame();
  host->Zoom(2);
  host.wheel(120);
  host->LastView();
  expectFrame(frame(), start);
}

TEST_F(View3DMouse, WheelKeepsThePointUnderTheMouse) {
  const auto pointAt = [&](int x, int y) {
    _variant_t point;
    host->getPixelPlanIntersection(x, y, doubleArray({0.2, 0.1, 1, 0.5}), &point);
    return doublesIn(point);
  };
  host->RotateH(33);
  host->RotateV(-21);
  for (const auto& [x, y] : {std::pair{0, 0}, {399, 199}, {57, 160}}) {
    host.move(x, y);
    const auto before = pointAt(x, y);
    for (const int delta : {120, -360, 120}) {
      host.wheel(delta);
      const auto after = pointAt(x, y);
      for (size_t i = 0; i < 3; ++i) EXPECT_NEAR(after[i], before[i], 1e-6);
    }
  }
}

TEST_F(View3DMouse, WildWheelsAreRecovered) {
  host->put_MiddleButtonAcceleration(1e300);
  host.wheel(120);
  host.wheel(-120);
  host.paint();
  host->put_MiddleButtonAcceleration(1000.0 / 120);  // a factor of zero
  host.wheel(120);
  host.paint();
  host->VueXYp(0);
  expectFrame(frame(), frameAfter([](IZYNVue3D*) {}));
}

TEST_F(View3DMouse, SelectionModesPickAtThePress) {
  addSelectable(7, 100, 50, 200, 150, 0);
  addSelectable(8, 100, 50, 200, 150, 0.5);
  for (const short selecting : {short{-1}, short{-2}}) {
    host->put_MouseMode(selecting);
    host.forgetEvents();
    host.send(WM_LBUTTONDOWN, 150, 100, MK_LBUTTON | MK_SHIFT);
    EXPECT_EQ(log(), (Log{{kMouseDown, 0, 150, 100}, {kMouseSelection, 2, 150, 100}}));
    EXPECT_EQ(namesIn(host.events().back().arguments.back()), (Names{8}));
    host.send(WM_LBUTTONUP, 150, 100);
    host.forgetEvents();
    host.send(WM_LBUTTONDOWN, 90, 100, MK_LBUTTON);
    ASSERT_EQ(host.events(kMouseSelection).size(), 1U);
    EXPECT_EQ(host.events().back().arguments.back().vt, VT_EMPTY);
    host.send(WM_LBUTTONUP, 90, 100);
  }
}

TEST_F(View3DMouse, AHitWithoutNamesIsAnArrayWithoutElements) {
  const auto nameless = makePickable({}, {-10, 0, -5, 5, 0});
  host->AddSelection(nameless->dispatch());
  _variant_t under;
  EXPECT_EQ(host->getSelectionUnderMouse(100, 100, &under), S_OK);
  EXPECT_EQ(under.vt, VT_ARRAY | VT_I4);
  host->put_WindowSelection(VARIANT_TRUE);
  host.move(100, 100);
  for (const VARIANT_BOOL superposed : {VARIANT_FALSE, VARIANT_TRUE}) {
    host->put_SelectSuperpose(superposed);
    host->put_MouseMode(-1);
    host.drag({{20, 20}, {180, 180}});
  }
  std::vector<_variant_t> selections;
  for (const DISPID event : {kMouseOn, kMouseSelection, kWindowSelection}) {
    for (const auto& fired : host.events(event)) selections.push_back(fired.arguments.back());
  }
  EXPECT_EQ(selections.size(), 5U);
  for (const _variant_t& selection : selections) {
    EXPECT_EQ(selection.vt, VT_ARRAY | VT_I4);
    EXPECT_EQ(namesIn(selection), Names{});
  }
}

TEST_F(View3DMouse, SuperposedSelectionReportsEveryHit) {
  addSelectable(7, 100, 50, 200, 150, 0);
  addSelectable(8, 100, 50, 200, 150, 0.5);
  addSelectable(9, 300, 50, 350, 150, 0.7);
  host->put_MouseMode(-1);
  host->put_SelectSuperpose(VARIANT_TRUE);
  host.send(WM_LBUTTONDOWN, 150, 100, MK_LBUTTON);
  const auto events = host.events(kMouseSelection);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(namesIn(events[0].arguments[3]), (Names{7, 8}));
}

TEST_F(View3DMouse, NothingIsPickedWhereNothingCanBe) {
  host->put_MouseMode(-1);
  host.drag({{100, 100}, {120, 120}});
  EXPECT_TRUE(host.events(kMouseSelection).empty());
  host->put_MouseMode(2);
  const auto object = addSelectable(7, 0, 0, 400, 200);
  host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
  host.move(150, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 150, 100);
  EXPECT_TRUE(host.events(kMouseSelection).empty());
  EXPECT_TRUE(host.events(kMouseOn).empty()) << "not while a button is down";
  EXPECT_TRUE(object->modes.empty());
}

TEST_F(View3DMouse, HoveringPicksTheNearestOnceAPosition) {
  host.move(150, 100);
  EXPECT_TRUE(host.events(kMouseOn).empty()) << "nothing is selectable yet";
  const auto behind = addSelectable(7, 100, 50, 200, 150, 0);
  addSelectable(8, 100, 50, 200, 150, 0.5);
  host.forgetEvents();
  host.move(151, 100, MK_CONTROL);
  EXPECT_EQ(log(), (Log{{kMouseOn, 1, 151, 100}, {kMouseMove, 1, 151, 100}}));
  EXPECT_EQ(namesIn(host.events()[0].arguments[3]), (Names{8}));
  EXPECT_EQ(behind->modes, (std::vector<int>{-1}));
  host.move(151, 100);
  EXPECT_EQ(behind->modes.size(), 1U) << "the same position again";
  EXPECT_EQ(host.events(kMouseMove).size(), 2U);
  host.move(90, 100);
  EXPECT_EQ(host.events(kMouseOn).back().arguments[3].vt, VT_EMPTY);
}

TEST_F(View3DMouse, RubberBandSelectsWithin) {
  const auto inside = addSelectable(1, 120, 60, 140, 70);
  addSelectable(2, 250, 140, 350, 160);  // reaches in
  addSelectable(3, 305, 20, 390, 190);   // outside
  host->put_MouseMode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{100, 50}, {180, 90}, {300, 150}}, MK_CONTROL);
  const auto events = host.events(kWindowSelection);
  ASSERT_EQ(events.size(), 1U);
  ASSERT_EQ(events[0].arguments.size(), 3U);
  EXPECT_EQ(long(events[0].arguments[0]), 1);
  EXPECT_EQ(doublesIn(events[0].arguments[1]),
            (std::vector<double>{-0.25, 0.25, -0.25, 0.25, 1, -1}));
  EXPECT_EQ(namesIn(events[0].arguments[2]), (Names{1, 2}));
  EXPECT_EQ(inside->modes.back(), -2);
  EXPECT_EQ(host.events().back().event, kWindowSelection) << "after MouseUp";
}

TEST_F(View3DMouse, RubberBandTellsTheDirectionOfTheDrag) {
  addSelectable(1, 120, 60, 140, 70);
  host->put_MouseMode(-2);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{300, 150}, {100, 50}}, MK_SHIFT);
  const auto events = host.events(kWindowSelection);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(long(events[0].arguments[0]), 2);
  EXPECT_EQ(doublesIn(events[0].arguments[1]),
            (std::vector<double>{-0.25, 0.25, -0.25, 0.25, -1, 1}));
}

TEST_F(View3DMouse, RubberBandLeavesTheCamera) {
  addSelectable(1, 120, 60, 140, 70);
  const auto before = frame();
  host->put_MouseMode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{10, 20}, {180, 90}});
  expectFrame(frame(), before);
}

TEST_F(View3DMouse, ABandWithoutAreaSelectsNothing) {
  addSelectable(1, 0, 0, 400, 200);
  host->put_MouseMode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{100, 50}, {300, 50}});
  host.drag({{100, 50}, {100, 150}});
  host.drag({{100, 50}, {200, 150}, {100, 50}});
  EXPECT_TRUE(host.events(kWindowSelection).empty());
  host.drag({{100, 50}, {101, 51}});
  EXPECT_EQ(host.events(kWindowSelection).size(), 1U);
}

TEST_F(View3DMouse, WithoutWindowSelectionADragSelectsNothing) {
  addSelectable(1, 0, 0, 400, 200);
  host->put_MouseMode(-1);
  host.drag({{100, 50}, {300, 150}});
  EXPECT_TRUE(host.events(kWindowSelection).empty());
}

TEST_F(View3DMouse, Mode4SelectsOnce) {
  addSelectable(1, 120, 60, 140, 70);
  host->put_MouseMode(1);
  host->put_MouseMode(4);
  host->put_MouseMode(4);
  host.drag({{100, 50}, {300, 150}});
  ASSERT_EQ(host.events(kWindowSelection).size(), 1U);
  EXPECT_EQ(namesIn(host.events(kWindowSelection)[0].arguments[2]), (Names{1}));
  EXPECT_EQ(mode(), 1);
  host.send(WM_LBUTTONUP, 300, 150);
  EXPECT_EQ(host.events(kWindowSelection).size(), 1U) << "a second release ends nothing again";
  EXPECT_EQ(mode(), 1);
}

TEST_F(View3DMouse, ModeBefore4IsTheOneThatComesBack) {
  host->put_MouseMode(4);
  host->put_MouseMode(3);
  host->put_MouseMode(4);
  host.drag({{100, 50}, {300, 150}});
  EXPECT_EQ(mode(), 3);
}

TEST_F(View3DMouse, ADoubleClickIsTwoPressesAndTwoReleases) {
  host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 100, 100);
  host.send(WM_LBUTTONDBLCLK, 100, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 100, 100);
  EXPECT_EQ(host.events(kMouseDown).size(), 2U);
  EXPECT_EQ(host.events(kMouseUp).size(), 2U);
  const auto before = frame();
  host.move(300, 20);
  expectFrame(frame(), before);
  EXPECT_EQ(GetCapture(), nullptr);
}

}  // namespace
}  // namespace zyn::test
