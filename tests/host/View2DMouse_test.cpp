#include <algorithm>
#include <cmath>

#include "support/Pickable_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

/// A trace of another component that answers what the test tells it to.
class ForeignProfile final : public ForeignBase<ForeignProfile, IZYNProfil> {
 public:
  std::vector<std::array<double, 3>> asked;
  double t = 0;
  ComPtr<ForeignObject> pc, pp, v, a;
  HRESULT result = S_OK;

  STDMETHODIMP PlusProche(IDispatch* P, double* outT, IDispatch** outPc, IDispatch** outPp,
                          IDispatch** outV, IDispatch** outA) override {
    const auto point = queryFor<IZYNPoint>(P);
    std::array<double, 3> at = {};
    point->get_x(&at[0]);
    point->get_y(&at[1]);
    point->get_z(&at[2]);
    asked.push_back(at);
    *outT = t;
    give(pc, outPc);
    give(pp, outPp);
    give(v, outV);
    give(a, outA);
    return result;
  }

 private:
  ~ForeignProfile() override = default;
  friend ForeignBase;

  static void give(const ComPtr<ForeignObject>& object, IDispatch** out) {
    *out = object ? object->dispatch() : nullptr;
    if (*out) (*out)->AddRef();
  }
};

/// A view of 400 by 200 on -10..10 by -5..5: 20 pixels a unit, the origin at (200, 100).
class View2DMouse : public HostTest {
 protected:
  View2DMouse() { host.look({-10, 10, -5, 5}); }

  void expectShown(double x, double y, double width) const {
    const VueParams p = host.params();
    EXPECT_NEAR(p.x, x, 1e-9);
    EXPECT_NEAR(p.y, y, 1e-9);
    EXPECT_NEAR(p.width, width, 1e-9);
  }
  void expectUnmoved() const { expectShown(0, 0, 20); }

  /// Events as their number and their numeric arguments.
  using Log = std::vector<std::vector<double>>;
  Log log() const {
    Log all;
    for (const auto& event : host.events()) {
      std::vector<double> entry = {double(event.event)};
      for (const auto& argument : event.arguments) {
        if (argument.vt == VT_I4) entry.push_back(argument.lVal);
        if (argument.vt == VT_R8) entry.push_back(argument.dblVal);
      }
      all.push_back(entry);
    }
    return all;
  }

  /// A plate that can be picked, in pixels of the view.
  ComPtr<ForeignObject> addSelectable(unsigned name, int left, int top, int right, int bottom) {
    auto object = makePlate(
        {(left - 200) / 20.0, (right - 200) / 20.0, (100 - bottom) / 20.0, (100 - top) / 20.0}, {},
        {name});
    host->AddSelection(object->dispatch());
    return object;
  }

  View2DHost host;
};

TEST_F(View2DMouse, ButtonsAreReportedInModelUnits) {
  host.send(WM_LBUTTONDOWN, 300, 50, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 220, 120);
  host.send(WM_RBUTTONDOWN, 200, 100, MK_RBUTTON);
  host.send(WM_RBUTTONUP, 0, 200);
  host.send(WM_MBUTTONDOWN, 14, 24, MK_MBUTTON);
  host.send(WM_MBUTTONUP, 15, 25);
  EXPECT_EQ(log(), (Log{{GraphEvent::MouseDown, 0, 5, 2.5},
                        {GraphEvent::MouseUp, 0, 1, -1},
                        {GraphEvent::MouseDown, 1, 0, 0},
                        {GraphEvent::MouseUp, 1, -10, -5}}));
  EXPECT_EQ(host.events()[0].arguments[0].vt, VT_I4);
  EXPECT_EQ(host.events()[0].arguments[1].vt, VT_R8);
}

TEST_F(View2DMouse, MovesAreReportedInModelUnits) {
  host.move(300, 50);
  host.move(-20, 220);
  EXPECT_EQ(log(), (Log{{GraphEvent::MouseMove, 5, 2.5}, {GraphEvent::MouseMove, -11, -6}}));
}

TEST_F(View2DMouse, ScalesShowInEvents) {
  host->GraphView(0, 0, 0, nullptr, nullptr, nullptr, 0, 10, 0, 0, 2, nullptr, nullptr, nullptr, 0,
                  1000, 0, 0, 0.01);
  const auto point = host.pointOf(123, 45);
  host.move(123, 45);
  EXPECT_EQ(log(), (Log{{GraphEvent::MouseMove, point[0], point[1]}}));
}

TEST_F(View2DMouse, LeavingIsReported) {
  host.move(10, 10);
  host.forgetEvents();
  host.send(WM_MOUSELEAVE, 0, 0);
  ASSERT_EQ(host.events().size(), 1U);
  EXPECT_EQ(host.events()[0].event, DISPID{GraphEvent::MouseLeave});
  EXPECT_TRUE(host.events()[0].arguments.empty());
}

TEST_F(View2DMouse, KeysAreReportedWithTheirModifiers) {
  BYTE before[256];
  GetKeyboardState(before);
  struct {
    int held;
    std::array<long, 3> flags;
  } const cases[] = {
      {0, {0, 0, 0}}, {VK_CONTROL, {1, 0, 0}}, {VK_MENU, {0, 1, 0}}, {VK_SHIFT, {0, 0, 1}}};
  for (const auto& one : cases) {
    BYTE keys[256] = {};
    keys[one.held] = one.held ? 0x80 : 0;
    SetKeyboardState(keys);
    host.forgetEvents();
    SendMessageW(host.window(), WM_KEYDOWN, VK_F5, 1);
    SendMessageW(host.window(), WM_KEYUP, VK_F5, 1);
    ASSERT_EQ(host.events().size(), 2U);
    EXPECT_EQ(host.events()[0].event, DISPID{GraphEvent::KeyDown});
    EXPECT_EQ(host.events()[1].event, DISPID{GraphEvent::KeyUp});
    for (const auto& event : host.events()) {
      ASSERT_EQ(event.arguments.size(), 4U);
      EXPECT_EQ(event.arguments[0], _variant_t(long{VK_F5}));
      for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(event.arguments[i + 1], _variant_t(one.flags[i]));
      }
    }
  }
  SetKeyboardState(before);
}

TEST_F(View2DMouse, KeysHeldWithAltAreReportedToo) {
  SendMessageW(host.window(), WM_SYSKEYDOWN, 'X', 1 << 29);
  SendMessageW(host.window(), WM_SYSKEYUP, 'X', 1 << 29);
  ASSERT_EQ(host.events().size(), 2U);
  EXPECT_EQ(long(host.events()[0].arguments[0]), 'X');
}

TEST_F(View2DMouse, ArrowsAreTheControls) {
  EXPECT_TRUE(SendMessageW(host.window(), WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS);
}

// The active trace.

TEST_F(View2DMouse, ModeThreeTellsTheNearestPoint) {
  const auto profile = makeForeign<ForeignProfile>();
  profile->t = 3.25;
  profile->pc = makeForeign<ForeignObject>();
  profile->pp = makeForeign<ForeignObject>();
  profile->v = makeForeign<ForeignObject>();
  profile->a = makeForeign<ForeignObject>();
  EXPECT_EQ(host->setActiveProfil(profile->dispatch()), S_OK);
  host.paint();
  host.drag({{300, 50}, {310, 60}});
  EXPECT_EQ(profile->asked, (std::vector<std::array<double, 3>>{{5, 2.5, 0}}));
  const auto found = host.events(GraphEvent::PlusProche);
  ASSERT_EQ(found.size(), 1U);
  const auto& arguments = found[0].arguments;
  ASSERT_EQ(arguments.size(), 5U);
  EXPECT_EQ(arguments[0], _variant_t(3.25));
  const IDispatch* const expected[] = {profile->pc->dispatch(), profile->pp->dispatch(),
                                       profile->v->dispatch(), profile->a->dispatch()};
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(arguments[i + 1].vt, VT_DISPATCH);
    EXPECT_EQ(arguments[i + 1].pdispVal, expected[i]);
  }
  EXPECT_TRUE(GetUpdateRect(host.window(), nullptr, FALSE));
  EXPECT_EQ(host.events()[0].event, DISPID{GraphEvent::MouseDown}) << "the press comes first";
}

TEST_F(View2DMouse, ObjectsOfTheAnswerAreReleased) {
  const auto profile = makeForeign<ForeignProfile>();
  profile->pc = makeForeign<ForeignObject>();
  host->setActiveProfil(profile->dispatch());
  host.send(WM_LBUTTONDOWN, 300, 50, MK_LBUTTON);
  host.forgetEvents();
  EXPECT_EQ(referencesOf(profile->pc.Get()), 1U);
}

TEST_F(View2DMouse, AnAnswerMayLackObjects) {
  const auto profile = makeForeign<ForeignProfile>();
  host->setActiveProfil(profile->dispatch());
  host.send(WM_LBUTTONDOWN, 300, 50, MK_LBUTTON);
  const auto found = host.events(GraphEvent::PlusProche);
  ASSERT_EQ(found.size(), 1U);
  for (size_t i = 1; i < 5; ++i) {
    EXPECT_EQ(found[0].arguments[i].vt, VT_DISPATCH);
    EXPECT_EQ(found[0].arguments[i].pdispVal, nullptr);
  }
}

TEST_F(View2DMouse, AFailingTraceFiresNothing) {
  const auto profile = makeForeign<ForeignProfile>();
  profile->result = E_FAIL;
  host->setActiveProfil(profile->dispatch());
  host.send(WM_LBUTTONDOWN, 300, 50, MK_LBUTTON);
  EXPECT_EQ(profile->asked.size(), 1U);
  EXPECT_TRUE(host.events(GraphEvent::PlusProche).empty());
}

TEST_F(View2DMouse, TheActiveTraceIsReplaced) {
  const auto first = makeForeign<ForeignProfile>();
  const auto second = makeForeign<ForeignProfile>();
  host->setActiveProfil(first->dispatch());
  EXPECT_EQ(referencesOf(first.Get()), 2U);
  host->setActiveProfil(second->dispatch());
  EXPECT_EQ(referencesOf(first.Get()), 1U);
  const auto stranger = makeForeign<ForeignObject>();
  host->setActiveProfil(stranger->dispatch());
  EXPECT_EQ(referencesOf(second.Get()), 1U);
  host->setActiveProfil(second->dispatch());
  host->setActiveProfil(nullptr);
  EXPECT_EQ(referencesOf(second.Get()), 1U);
  host.send(WM_LBUTTONDOWN, 300, 50, MK_LBUTTON);
  EXPECT_TRUE(first->asked.empty() && second->asked.empty());
}

TEST_F(View2DMouse, OnlyModeThreeAsksTheTrace) {
  const auto profile = makeForeign<ForeignProfile>();
  host->setActiveProfil(profile->dispatch());
  for (const long mode : {-2L, -1L, 0L, 1L, 2L, 4L, 5L}) {
    host->put_Mode(mode);
    host.drag({{300, 50}, {300, 50}});
  }
  EXPECT_TRUE(profile->asked.empty());
}

// Drags.

TEST_F(View2DMouse, Mode1PansExactly) {
  host->put_Mode(1);
  host.drag({{100, 100}, {140, 80}, {120, 120}});
  expectShown(-1, 1, 20);
  host->LastView();
  expectUnmoved();
}

TEST_F(View2DMouse, MovesWithoutAPressMoveNothing) {
  host->put_Mode(1);
  host.move(10, 10, MK_LBUTTON);
  host.move(90, 90, MK_LBUTTON);
  expectUnmoved();
}

TEST_F(View2DMouse, OtherModesMoveNothing) {
  for (const long other : {0L, 2L, 3L, 5L, -3L, -1L, -2L}) {
    host->put_Mode(other);
    host.drag({{100, 100}, {140, 80}});
    expectUnmoved();
  }
}

TEST_F(View2DMouse, DragsCaptureTheMouseButModeThreeDoesNot) {
  for (const long mode : {0L, 1L, 2L, 4L, 5L}) {
    host->put_Mode(mode);
    host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
    EXPECT_EQ(GetCapture(), host.window()) << mode;
    host.send(WM_LBUTTONUP, 100, 100);
    EXPECT_EQ(GetCapture(), nullptr) << mode;
  }
  for (const long mode : {3L, -1L, -2L}) {
    host->put_Mode(mode);
    host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
    EXPECT_EQ(GetCapture(), nullptr) << mode;
    host.send(WM_LBUTTONUP, 100, 100);
  }
  host->put_WindowSelection(VARIANT_TRUE);
  host->put_Mode(-1);
  host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
  EXPECT_EQ(GetCapture(), host.window());
  ReleaseCapture();
}

TEST_F(View2DMouse, TheRightPressesAreUndoable) {
  struct {
    long mode;
    bool kept;
  } const cases[] = {{1, true},  {2, true},  {5, true},   {100, true}, {0, false},
                     {3, false}, {4, false}, {-1, false}, {-3, false}};
  for (const auto& one : cases) {
    // A graph empties the history.
    host->GraphView(0, 0, 0, nullptr, nullptr, nullptr, 0, 20, 0, 0, 1, nullptr, nullptr, nullptr,
                    0, 10, 0, 0, 1);
    const double width = host.params().width;
    host->put_Mode(one.mode);
    host.drag({{100, 100}, {100, 100}});
    host->ViewRect(0, 1, 0, 1);
    const double other = host.params().width;
    host->LastView();
    EXPECT_EQ(host.params().width, one.kept ? width : other) << one.mode;
  }
}

TEST_F(View2DMouse, Mode4ZoomsToTheRectangleOnce) {
  host->put_Mode(1);
  host->put_Mode(4);
  host.drag({{240, 80}, {210, 90}, {200, 100}});
  expectShown(1, 0.5, 2);
  EXPECT_EQ(host.mode(), 1);
  host->LastView();
  expectUnmoved();
}

TEST_F(View2DMouse, TheZoomShowsTheWholeRectangle) {
  host->put_Mode(4);
  host.drag({{200, 20}, {240, 180}});
  const VueParams p = host.params();
  EXPECT_NEAR(p.x, 1, 1e-9);
  EXPECT_NEAR(p.y, 0, 1e-9);
  EXPECT_NEAR(p.height, 8, 1e-9);
  EXPECT_NEAR(p.width, 16, 1e-9);
}

TEST_F(View2DMouse, AClickZoomsNowhere) {
  host->put_Mode(4);
  host.drag({{240, 80}, {240, 80}});
  expectUnmoved();
  host->put_Mode(4);
  host.drag({{240, 80}, {300, 120}, {240, 120}});
  expectUnmoved();
  host->LastView();
  expectShown(0, 0, 1);  // the view before the test's
}

TEST_F(View2DMouse, Mode4StaysWhereItIsMaintained) {
  host->put_MaintainWindowZoom(VARIANT_TRUE);
  host->put_Mode(4);
  host.drag({{240, 80}, {200, 100}});
  EXPECT_EQ(host.mode(), 4);
  host.drag({{100, 50}, {300, 150}});
  expectShown(1, 0.5, 1);
  EXPECT_EQ(host.mode(), 4);
}

TEST_F(View2DMouse, Mode4SetTwiceKeepsTheModeBefore) {
  host->put_Mode(5);
  host->put_Mode(4);
  host->put_Mode(4);
  host.drag({{240, 80}, {200, 100}});
  EXPECT_EQ(host.mode(), 5);
}

// The middle button and the wheel.

TEST_F(View2DMouse, TheMiddleButtonSleepsAtFirst) {
  host.middleDrag({{100, 100}, {140, 80}});
  host.wheel(120);
  expectUnmoved();
  EXPECT_EQ(host.mode(), 3);
}

TEST_F(View2DMouse, TheMiddleButtonPans) {
  host->put_MiddleButtonActive(VARIANT_TRUE);
  host.send(WM_MBUTTONDOWN, 100, 100, MK_MBUTTON);
  EXPECT_EQ(host.mode(), 1);
  EXPECT_EQ(GetCapture(), host.window());
  host.move(140, 80, MK_MBUTTON);
  host.send(WM_MBUTTONUP, 140, 80);
  EXPECT_EQ(host.mode(), 3);
  EXPECT_EQ(GetCapture(), nullptr);
  expectShown(-2, -1, 20);
  EXPECT_TRUE(host.events(GraphEvent::MouseDown).empty());
  EXPECT_TRUE(host.events(GraphEvent::MouseUp).empty());
}

TEST_F(View2DMouse, AfterThePanEveryModeIsReturnedTo) {
  host->put_MiddleButtonActive(VARIANT_TRUE);
  for (const long mode : {-2L, -1L, 0L, 1L, 2L, 3L, 4L, 5L}) {
    host->put_Mode(mode);
    host.middleDrag({{100, 100}, {140, 80}});
    EXPECT_EQ(host.mode(), mode);
  }
}

TEST_F(View2DMouse, APanMakesModeFourTheOneBefore) {
  host->put_MiddleButtonActive(VARIANT_TRUE);
  host->put_Mode(-1);
  host->put_Mode(4);
  host.middleDrag({{100, 100}, {140, 80}});
  host.drag({{100, 50}, {300, 150}});
  EXPECT_EQ(host.mode(), 4);
}

TEST_F(View2DMouse, ANotchZoomsAboutTheMouse) {
  host->put_MiddleButtonActive(VARIANT_TRUE);
  host.move(300, 50);
  const auto before = host.pointOf(300, 50);
  host.wheel(120);
  const VueParams p = host.params();
  EXPECT_DOUBLE_EQ(p.halfHeight, 5 * (1 + 120.0 / 400 * 0.5));
  EXPECT_DOUBLE_EQ(p.height, 2 * p.halfHeight);
  EXPECT_DOUBLE_EQ(p.width, 2 * p.height);
  const auto after = host.pointOf(300, 50);
  EXPECT_NEAR(after[0], before[0], 1e-5);
  EXPECT_NEAR(after[1], before[1], 1e-5);
  EXPECT_EQ(host.events().size(), 1U) << "the move only";
  host->put_MiddleButtonInverse(VARIANT_TRUE);
  host->put_MiddleButtonAcceleration(2.5);
  host.wheel(-40);
  EXPECT_DOUBLE_EQ(host.params().halfHeight, p.halfHeight * (1 + 100.0 / 400 * 0.5));
  host->LastView();
  expectShown(0, 0, 1);  // the wheel keeps no history
}

TEST_F(View2DMouse, WildWheelsAreRecovered) {
  for (const double wild : {1e300, -1e300, double(NAN)}) {
    host->put_MiddleButtonActive(VARIANT_TRUE);
    host->put_MiddleButtonAcceleration(wild);
    host.wheel(120);
    host.wheel(-120);
  }
  host->initView();
  host.look({-10, 10, -5, 5});
  expectUnmoved();
}

// Selection.

TEST_F(View2DMouse, APressInASelectionModeFiresBothEvents) {
  const auto left = addSelectable(7, 50, 50, 100, 150);
  const auto right = addSelectable(9, 300, 50, 350, 150);
  for (const long mode : {-1L, -2L}) {
    host->put_Mode(mode);
    host.forgetEvents();
    host.send(WM_LBUTTONDOWN, 320, 100, MK_LBUTTON | MK_SHIFT);
    ASSERT_EQ(host.events().size(), 3U);
    EXPECT_EQ(host.events()[0].event, DISPID{GraphEvent::MouseDown});
    EXPECT_EQ(host.events()[1].event, DISPID{GraphEvent::MouseSelection});
    EXPECT_EQ(host.events()[2].event, DISPID{GraphEvent::MouseSelection2});
    EXPECT_EQ(namesIn(host.events()[1].arguments[0]), Names{9});
    EXPECT_EQ(long(host.events()[2].arguments[0]), 2);
    EXPECT_EQ(double(host.events()[2].arguments[1]), 6);
    EXPECT_EQ(double(host.events()[2].arguments[2]), 0);
    EXPECT_EQ(namesIn(host.events()[2].arguments[3]), Names{9});
    host.send(WM_LBUTTONUP, 320, 100);
  }
  EXPECT_EQ(left->modes2D.back(), -1) << "the selection list keeps its own mode";
}

TEST_F(View2DMouse, APressBesideEverythingSelectsNothing) {
  const auto object = addSelectable(7, 50, 50, 100, 150);
  host->put_Mode(-1);
  host.send(WM_LBUTTONDOWN, 200, 100, MK_LBUTTON);
  ASSERT_EQ(host.events(GraphEvent::MouseSelection).size(), 1U);
  EXPECT_EQ(host.events(GraphEvent::MouseSelection)[0].arguments[0].vt, VT_EMPTY);
}

TEST_F(View2DMouse, AHitWithoutNamesIsAnArrayWithoutElements) {
  const auto nameless = makePlate({-10, 0, -5, 5}, {});
  host->AddSelection(nameless->dispatch());
  host->put_Mode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.move(100, 100);
  host.drag({{20, 20}, {180, 180}});
  host.send(WM_LBUTTONDBLCLK, 100, 100, MK_LBUTTON);
  for (const DISPID event : {GraphEvent::MouseOn, GraphEvent::MouseOn2, GraphEvent::MouseSelection,
                             GraphEvent::MouseSelection2, GraphEvent::WindowSelection,
                             GraphEvent::MouseSelectionDblClick}) {
    const auto fired = host.events(event);
    ASSERT_EQ(fired.size(), 1U) << event;
    EXPECT_EQ(fired[0].arguments.back().vt, VT_ARRAY | VT_I4) << event;
    EXPECT_EQ(namesIn(fired[0].arguments.back()), Names{}) << event;
  }
}

TEST_F(View2DMouse, WithoutSelectablesNoSelectionIsReported) {
  host->put_Mode(-1);
  host.send(WM_LBUTTONDOWN, 200, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 200, 100);
  host.send(WM_LBUTTONDBLCLK, 200, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 200, 100);
  host.move(100, 100);
  EXPECT_EQ(log(), (Log{{GraphEvent::MouseDown, 0, 0, 0},
                        {GraphEvent::MouseUp, 0, 0, 0},
                        {GraphEvent::MouseUp, 0, 0, 0},
                        {GraphEvent::MouseMove, -5, 0}}));
}

TEST_F(View2DMouse, KeyTellsWhatIsHeld) {
  const auto object = addSelectable(7, 0, 0, 400, 200);
  struct {
    WPARAM held;
    long key;
  } const cases[] = {
      {0, 0}, {MK_CONTROL, 1}, {MK_SHIFT, 2}, {MK_CONTROL | MK_SHIFT, 1}, {MK_LBUTTON, 0}};
  host->put_Mode(-1);
  int x = 10;
  for (const auto& one : cases) {
    host.forgetEvents();
    host.send(WM_LBUTTONDOWN, 30, 40, one.held);
    EXPECT_EQ(long(host.events(GraphEvent::MouseSelection2)[0].arguments[0]), one.key);
    host.send(WM_LBUTTONUP, 30, 40);
    host.move(++x, 10, one.held & ~WPARAM{MK_LBUTTON});
    EXPECT_EQ(long(host.events(GraphEvent::MouseOn2)[0].arguments[0]), one.key);
  }
}

TEST_F(View2DMouse, SuperposedSelectionReportsEveryHit) {
  const auto lower = addSelectable(5, 0, 0, 400, 200);
  const auto upper = addSelectable(6, 0, 0, 400, 200);
  host->put_Mode(-1);
  host.send(WM_LBUTTONDOWN, 30, 40, MK_LBUTTON);
  EXPECT_EQ(namesIn(host.events(GraphEvent::MouseSelection)[0].arguments[0]), Names{5});
  host->put_SelectSuperpose(VARIANT_TRUE);
  host.forgetEvents();
  host.send(WM_LBUTTONDOWN, 30, 40, MK_LBUTTON);
  EXPECT_EQ(namesIn(host.events(GraphEvent::MouseSelection)[0].arguments[0]), (Names{5, 6}));
  EXPECT_EQ(namesIn(host.events(GraphEvent::MouseSelection2)[0].arguments[3]), (Names{5, 6}));
}

TEST_F(View2DMouse, ADoubleClickSelects) {
  const auto object = addSelectable(7, 50, 50, 100, 150);
  host.send(WM_LBUTTONDOWN, 70, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 70, 100);
  host.send(WM_LBUTTONDBLCLK, 70, 100, MK_LBUTTON);
  host.send(WM_LBUTTONUP, 70, 100);
  std::vector<DISPID> order;
  for (const auto& event : host.events()) order.push_back(event.event);
  EXPECT_EQ(order, (std::vector<DISPID>{GraphEvent::MouseDown, GraphEvent::MouseUp,
                                        GraphEvent::MouseSelectionDblClick, GraphEvent::MouseUp}));
  EXPECT_EQ(namesIn(host.events()[2].arguments[0]), Names{7});
  host.send(WM_LBUTTONDBLCLK, 200, 100, MK_LBUTTON);
  EXPECT_EQ(host.events().back().arguments[0].vt, VT_EMPTY);
}

TEST_F(View2DMouse, HoveringReportsWhatLiesThere) {
  const auto object = addSelectable(7, 50, 50, 100, 150);
  host.move(70, 100);
  ASSERT_EQ(host.events().size(), 3U);
  EXPECT_EQ(host.events()[0].event, DISPID{GraphEvent::MouseMove});
  EXPECT_EQ(host.events()[1].event, DISPID{GraphEvent::MouseOn});
  EXPECT_EQ(namesIn(host.events()[1].arguments[0]), Names{7});
  EXPECT_EQ(host.events()[2].event, DISPID{GraphEvent::MouseOn2});
  EXPECT_EQ(double(host.events()[2].arguments[1]), -6.5);
  EXPECT_EQ(namesIn(host.events()[2].arguments[3]), Names{7});
  host.move(200, 100);
  EXPECT_EQ(host.events(GraphEvent::MouseOn)[1].arguments[0].vt, VT_EMPTY);
}

TEST_F(View2DMouse, ARubberBandSelectsWhatItTouches) {
  const auto left = addSelectable(7, 50, 50, 100, 150);
  const auto right = addSelectable(9, 300, 50, 350, 150);
  const auto off = addSelectable(11, 180, 0, 220, 20);
  host->put_Mode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{360, 180}, {80, 60}, {90, 40}}, MK_CONTROL);
  const auto found = host.events(GraphEvent::WindowSelection);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(long(found[0].arguments[0]), 1);
  Names names = namesIn(found[0].arguments[2]);
  std::ranges::sort(names);
  EXPECT_EQ(names, (Names{7, 9}));
  ASSERT_EQ(found[0].arguments[1].vt, VT_DISPATCH);
  const auto rectangle = queryFor<IZYNRectangle>(found[0].arguments[1].pdispVal);
  double bounds[4] = {};
  rectangle->get_XMin(&bounds[0]);
  rectangle->get_XMax(&bounds[1]);
  rectangle->get_YMin(&bounds[2]);
  rectangle->get_YMax(&bounds[3]);
  EXPECT_DOUBLE_EQ(bounds[0], -5.5);
  EXPECT_DOUBLE_EQ(bounds[1], 8);
  EXPECT_DOUBLE_EQ(bounds[2], -4);
  EXPECT_DOUBLE_EQ(bounds[3], 3);
  expectUnmoved();
  EXPECT_EQ(host.mode(), -1);
}

TEST_F(View2DMouse, ABandWithoutAPixelSelectsNothing) {
  const auto object = addSelectable(7, 0, 0, 400, 200);
  host->put_Mode(-1);
  host->put_WindowSelection(VARIANT_TRUE);
  host.drag({{100, 100}, {150, 150}, {150, 100}});
  host.drag({{100, 100}, {100, 100}});
  EXPECT_TRUE(host.events(GraphEvent::WindowSelection).empty());
}

TEST_F(View2DMouse, PickSizeReachesFurther) {
  const auto thin = makeForeign<ForeignObject>();
  thin->onDraw2D = [](int) {
    glPushName(3);
    glBegin(GL_LINES);
    glVertex2d(0.05, -5);
    glVertex2d(0.05, 5);
    glEnd();
    glPopName();
    return S_OK;
  };
  host->AddSelection(thin->dispatch());
  const auto under = [&](int x) {
    host.forgetEvents();
    host.send(WM_LBUTTONDBLCLK, x, 100, MK_LBUTTON);
    return namesIn(host.events(GraphEvent::MouseSelectionDblClick)[0].arguments[0]);
  };
  EXPECT_EQ(under(201), Names{3});
  EXPECT_EQ(under(203), Names{});
  host->put_PickSize(5);
  EXPECT_EQ(under(203), Names{3});
  EXPECT_EQ(under(205), Names{});
  for (const double none : {0.0, -3.0, double(NAN)}) {
    host->put_PickSize(none);
    EXPECT_EQ(under(201), Names{});
  }
}

TEST_F(View2DMouse, PicksFollowTheView) {
  const auto object = addSelectable(7, 50, 50, 100, 150);
  host.look({-7, -6, -0.25, 0.25});
  host.send(WM_LBUTTONDBLCLK, 200, 100, MK_LBUTTON);
  EXPECT_EQ(namesIn(host.events(GraphEvent::MouseSelectionDblClick)[0].arguments[0]), Names{7});
}

TEST_F(View2DMouse, AFailingObjectFindsNothing) {
  const auto object = addSelectable(7, 0, 0, 400, 200);
  object->onDraw2D = [](int) { return E_FAIL; };
  host.send(WM_LBUTTONDBLCLK, 200, 100, MK_LBUTTON);
  EXPECT_EQ(host.events(GraphEvent::MouseSelectionDblClick)[0].arguments[0].vt, VT_EMPTY);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST_F(View2DMouse, ARepaintAskedForWhilePickingComesAfterwards) {
  int painted = 0;
  const auto trace = makeForeign<ForeignObject>();
  trace->onDraw2D = [&](int) {
    ++painted;
    return S_OK;
  };
  host->Add(trace->dispatch(), 0);
  host->GraphView(0, 0, 0, nullptr, nullptr, nullptr, 0, 2, 1, 1, 1, nullptr, nullptr, nullptr, 0,
                  1, 1, 1, 1);
  host.paint();
  const auto object = addSelectable(7, 0, 0, 400, 200);
  int paintedMeanwhile = -1;
  object->onDraw2D = [&, draw = object->onDraw2D](int mode) {
    const int before = painted;
    host.paint();
    paintedMeanwhile = painted - before;
    return draw(mode);
  };
  const int before = painted;
  host.send(WM_LBUTTONDBLCLK, 200, 100, MK_LBUTTON);
  EXPECT_EQ(paintedMeanwhile, 0);
  EXPECT_EQ(namesIn(host.events(GraphEvent::MouseSelectionDblClick)[0].arguments[0]), (Names{7}));
  UpdateWindow(host.window());
  EXPECT_EQ(painted, before + 1);
}

TEST_F(View2DMouse, ManyNamesAreAllFound) {
  std::vector<ComPtr<ForeignObject>> objects;
  for (unsigned name = 0; name < 1000; ++name) {
    objects.push_back(addSelectable(name, 0, 0, 400, 200));
  }
  host->put_SelectSuperpose(VARIANT_TRUE);
  host.send(WM_LBUTTONDBLCLK, 200, 100, MK_LBUTTON);
  EXPECT_EQ(namesIn(host.events(GraphEvent::MouseSelectionDblClick)[0].arguments[0]).size(), 1000U);
}

// Ends.

TEST_F(View2DMouse, ALostCaptureEndsTheDrag) {
  host->put_Mode(1);
  host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
  ReleaseCapture();
  host.move(140, 80, MK_LBUTTON);
  expectUnmoved();
  host->put_Mode(4);
  host.send(WM_LBUTTONDOWN, 100, 100, MK_LBUTTON);
  SendMessageW(host.window(), WM_CANCELMODE, 0, 0);
  host.send(WM_LBUTTONUP, 200, 180);
  expectUnmoved();
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(View2DMouse, FrozenEventsStayAway) {
  const auto control = queryFor<IOleControl>(host.get());
  control->FreezeEvents(TRUE);
  host.move(10, 10);
  EXPECT_TRUE(host.events().empty());
  control->FreezeEvents(FALSE);
  host.move(11, 10);
  EXPECT_EQ(host.events().size(), 1U);
}

}  // namespace
}  // namespace zyn::test
