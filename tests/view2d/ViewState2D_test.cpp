#include "view2d/ViewState2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kIntMin = std::numeric_limits<int>::min();
constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr ClientSize kWindow{200, 100};
const double kTenthMore = 1.0F + 0.1F;

void expectView(const CParamsVue2D& view, double x, double y, double width, double height) {
  EXPECT_DOUBLE_EQ(view.centreX(), x);
  EXPECT_DOUBLE_EQ(view.centreY(), y);
  EXPECT_DOUBLE_EQ(view.width(), width);
  EXPECT_DOUBLE_EQ(view.height(), height);
  EXPECT_DOUBLE_EQ(view.halfHeight(), height / 2);
}

void expectSame(const CParamsVue2D& a, const CParamsVue2D& b) {
  EXPECT_EQ(a.bounds(), b.bounds());
  EXPECT_EQ(a.halfHeight(), b.halfHeight());
}

void expectNear(const Rect2& a, const Rect2& b, double tolerance) {
  EXPECT_NEAR(a.xMin, b.xMin, tolerance);
  EXPECT_NEAR(a.xMax, b.xMax, tolerance);
  EXPECT_NEAR(a.yMin, b.yMin, tolerance);
  EXPECT_NEAR(a.yMax, b.yMax, tolerance);
}

class ViewState2DTest : public testing::Test {
 protected:
  ViewState2DTest() { state.resize(kWindow); }

  void show(const Rect2& rectangle, double surplus = 0) { state.view(rectangle, surplus); }

  ViewState2D state;
};

TEST_F(ViewState2DTest, ANewViewIsFittedToNoRectangle) {
  const ViewState2D fresh;
  expectView(fresh.current(), 0, 0, 0, 0);
  for (const ClientSize client : {ClientSize{200, 100}, {300, 50}, {64, 64}}) {
    state.resize({0, 0});
    state.resize(client);
    expectView(state.current(), 0, 0, 2.0 * client.height / client.width, 2);
    expectView(state.home(), 0, 0, 0, 0);
    EXPECT_EQ(state.visible(), Rect2());
  }
  EXPECT_FALSE(state.lastView());
  state.initView();
  expectView(state.current(), 0, 0, 0, 0);
  state.resize({100, 50});
  expectView(state.current(), 0, 0, 1, 2);
}

TEST_F(ViewState2DTest, AfterViewRectAloneAResizeIsFittedToNoRectangle) {
  state.viewRect({0, 10, 0, 5});
  for (const ClientSize client : {ClientSize{100, 100}, {400, 100}, {100, 100}, {400, 100}}) {
    state.resize(client);
    expectView(state.current(), 0, 0, 2.0 * client.height / client.width, 2);
  }
}

TEST_F(ViewState2DTest, FitsTheHomeViewToTheObjects) {
  state.fitHome(Rect2{0, 10, 0, 5});
  expectView(state.home(), 5, 2.5, 10 * kTenthMore, 5 * kTenthMore);
  expectView(state.current(), 0, 0, 1, 2);
  state.fitHome(std::nullopt);
  expectView(state.home(), 5, 2.5, 10 * kTenthMore, 5 * kTenthMore);
}

TEST_F(ViewState2DTest, InitViewShowsTheHomeViewAndKeepsTheHistory) {
  state.fitHome(Rect2{0, 10, 0, 5});
  show({100, 110, 100, 105});
  state.initView();
  expectSame(state.current(), state.home());
  EXPECT_EQ(state.visible(), state.home().bounds());
  EXPECT_EQ(state.history().count(), 1U);
}

TEST_F(ViewState2DTest, ViewsAreFittedAndRemembered) {
  show({0, 10, 0, 5}, 0.1);
  expectView(state.current(), 5, 2.5, 10 * kTenthMore, 5 * kTenthMore);
  expectNear(
      state.visible(),
      {5 - 5 * kTenthMore, 5 + 5 * kTenthMore, 2.5 - 2.5 * kTenthMore, 2.5 + 2.5 * kTenthMore},
      1e-12);
  show({0, 2, 0, 2});
  EXPECT_EQ(state.visible(), (Rect2{-1, 3, 0, 2}));
  ASSERT_EQ(state.history().count(), 2U);
  EXPECT_EQ(state.history().head()->value->centreX(), 5);
  EXPECT_EQ(state.history().head()->next->value->width(), 1);
}

TEST_F(ViewState2DTest, LastViewGoesBackThroughTheHistory) {
  show({0, 10, 0, 5});
  show({0, 2, 0, 2});
  show({0, 1, 0, 1});
  const Rect2 visible = state.visible();
  EXPECT_TRUE(state.lastView());
  expectView(state.current(), 1, 1, 4, 2);
  EXPECT_TRUE(state.lastView());
  expectView(state.current(), 5, 2.5, 10, 5);
  EXPECT_TRUE(state.lastView());
  expectView(state.current(), 0, 0, 1, 2);
  EXPECT_FALSE(state.lastView());
  EXPECT_EQ(state.visible(), visible);
}

TEST_F(ViewState2DTest, ViewRectLeavesHistoryAndVisibleRectangle) {
  show({0, 2, 0, 2});
  const Rect2 visible = state.visible();
  state.viewRect({0, 10, 0, 5});
  expectView(state.current(), 5, 2.5, 10 * kTenthMore, 5 * kTenthMore);
  EXPECT_EQ(state.history().count(), 1U);
  EXPECT_EQ(state.visible(), visible);
}

TEST_F(ViewState2DTest, SurplusesBeyondSinglePrecisionShowNothing) {
  for (const double surplus : {1e300, -1e300, kInfinity, kNaN}) {
    show({0, 10, 0, 5}, surplus);
    EXPECT_FALSE(state.current().showsAnything());
  }
  show({0, 10, 0, 5});
  EXPECT_TRUE(state.current().showsAnything());
}

TEST_F(ViewState2DTest, ResizeFitsTheVisibleRectangle) {
  show({0, 10, 0, 5});
  state.resize({100, 100});
  expectView(state.current(), 5, 2.5, 10, 10);
  state.resize({400, 100});
  expectView(state.current(), 5, 2.5, 20, 5);
  state.resize(kWindow);
  expectView(state.current(), 5, 2.5, 10, 5);
  EXPECT_EQ(state.visible(), (Rect2{0, 10, 0, 5}));
}

TEST_F(ViewState2DTest, AnEmptyWindowSpoilsNothing) {
  state.fitHome(Rect2{0, 10, 0, 5});
  show({0, 20, 0, 10});
  for (const ClientSize client : {ClientSize{0, 0}, {200, 0}, {0, 100}}) {
    state.resize(client);
    expectView(state.current(), 10, 5, 20, 10);
    expectView(state.home(), 5, 2.5, 10 * kTenthMore, 5 * kTenthMore);
    EXPECT_EQ(state.visible(), (Rect2{0, 20, 0, 10}));
    EXPECT_EQ(state.pixelSize(), 0.0);
    EXPECT_FALSE(state.pan(1, 1));
    EXPECT_FALSE(state.turnWheel({1, 1}, 120, {}));
    EXPECT_FALSE(state.zoomTo({{1, 1}, {50, 50}}));
  }
  state.resize({200, 200});
  expectView(state.current(), 10, 5, 20, 20);
}

TEST_F(ViewState2DTest, WhatIsAskedForWithoutAWindowIsShownInTheNextOne) {
  for (const ClientSize before : {ClientSize{0, 0}, {0, 50}}) {
    ViewState2D waiting;
    waiting.resize(before);
    waiting.view(Rect2{0, 20, 0, 10}, 0.5);
    waiting.resize({200, 200});
    expectView(waiting.current(), 10, 5, 30, 30);
    EXPECT_EQ(waiting.visible(), (Rect2{-5, 25, -2.5, 12.5}));
  }
}

TEST_F(ViewState2DTest, ObjectsAddedWithoutAWindowAreShownInTheNextOne) {
  ViewState2D waiting;
  waiting.fitHome(Rect2{0, 10, 0, 5});
  waiting.initView();
  waiting.resize({100, 100});
  expectView(waiting.current(), 5, 2.5, 10 * kTenthMore, 10 * kTenthMore);
  expectSame(waiting.home(), waiting.current());
}

TEST_F(ViewState2DTest, ARectangleShownWithoutAWindowOrHistoryIsFittedToTheNextOne) {
  ViewState2D waiting;
  waiting.viewRect({0, 10, 0, 5});
  for (int times = 0; times < 2; ++times) {
    waiting.resize({100, 100});
    expectView(waiting.current(), 5, 2.5, 10 * kTenthMore, 10 * kTenthMore);
    waiting.resize({400, 100});
    expectView(waiting.current(), 5, 2.5, 20 * kTenthMore, 5 * kTenthMore);
  }
}

TEST_F(ViewState2DTest, AGraphWithoutAWindowIsRightInTheNextOne) {
  ViewState2D waiting;
  waiting.showGraph({0, 10, 0, 10}, 1, 1);
  EXPECT_FALSE(waiting.graphPlacement());
  waiting.resize({0, 0});
  waiting.resize({280, 140});
  state.resize({280, 140});
  state.showGraph({0, 10, 0, 10}, 1, 1);
  expectSame(waiting.current(), state.current());
  expectSame(waiting.home(), state.home());
  ASSERT_TRUE(waiting.graphPlacement());
  EXPECT_DOUBLE_EQ(waiting.graphPlacement()->unitsPerPixelX, 0.1);
}

TEST_F(ViewState2DTest, GraphsHaveAMarginOfAFifth) {
  show({0, 1, 0, 1});
  state.showGraph({0, 10, 0, 5}, 1, 1);
  expectView(state.current(), 5, 2.5, 14, 7);
  expectSame(state.home(), state.current());
  EXPECT_EQ(state.history().count(), 0U);
  EXPECT_FALSE(state.lastView());
  EXPECT_EQ(state.visible(), (Rect2{-2, 12, -1, 6}));
  EXPECT_TRUE(state.hasGraph());
}

TEST_F(ViewState2DTest, GraphsKeepTheHomeView) {
  state.showGraph({0, 10, 0, 5}, 1, 1);
  state.fitHome(Rect2{0, 1, 0, 1});
  state.resize({100, 100});
  expectView(state.home(), 5, 2.5, 14, 7);
  expectView(state.current(), 5, 2.5, 14, 14);
  state.initView();
  expectView(state.current(), 5, 2.5, 14, 7);
}

TEST_F(ViewState2DTest, ScalesStretchGraphs) {
  state.showGraph({0, 10, 0, 5000}, 3, 0.003);
  expectView(state.current(), 15, 7.5, 42, 21);
  EXPECT_EQ(state.xScale(), 3);
  EXPECT_EQ(state.yScale(), 0.003);
  const GraphPlacement placement = state.graphPlacement().value();
  expectNear(placement.visible, {-2, 12, -1000, 6000}, 1e-9);
  EXPECT_DOUBLE_EQ(placement.unitsPerPixelX, 14.0 / 200);
  EXPECT_DOUBLE_EQ(placement.unitsPerPixelY, 70.0);
}

TEST_F(ViewState2DTest, PlacementsFollowTheWindow) {
  state.showGraph({0, 10, 0, 5}, 1, 0.5);
  state.resize({200, 400});
  const GraphPlacement placement = state.graphPlacement().value();
  expectNear(placement.visible, {-2, 12, -25.5, 30.5}, 1e-9);
  EXPECT_DOUBLE_EQ(placement.unitsPerPixelX, 0.07);
  EXPECT_DOUBLE_EQ(placement.unitsPerPixelY, 0.14);
  state.view(Rect2{4, 5, 1, 2}, 0);  // of the whole graph, whatever part of it is shown
  expectNear(state.graphPlacement()->visible, placement.visible, 1e-9);
  const GraphPlacement other = state.graphPlacement({100, 200}).value();
  expectNear(other.visible, placement.visible, 1e-9);
  EXPECT_DOUBLE_EQ(other.unitsPerPixelX, 0.14);
  state.resize({0, 400});
  EXPECT_FALSE(state.graphPlacement());
}

TEST_F(ViewState2DTest, WithScalesNothingJumps) {
  state.showGraph({0, 10, 0, 5000}, 3, 0.003);
  const CParamsVue2D graph(state.current());
  state.resize({300, 200});
  state.resize(kWindow);
  expectView(state.current(), 15, 7.5, 42, 21);
  state.initView();
  expectSame(state.current(), graph);
  const Point before = state.getPoint({30, 60});
  state.turnWheel({30, 60}, 120, {});
  EXPECT_NEAR(state.getPoint({30, 60}).x, before.x, 1e-5);
  EXPECT_NEAR(state.getPoint({30, 60}).y, before.y, 1e-2);
  EXPECT_EQ(state.getPixelPoint(before.x, before.y), (PixelPoint{30, 60}));
  state.initView();
  expectSame(state.current(), graph);
}

TEST_F(ViewState2DTest, RectanglesAreInPlottingUnits) {
  state.showGraph({0, 1, 0, 1}, 2, 4);
  show({0, 20, 0, 10});
  expectView(state.current(), 10, 5, 20, 10);
  EXPECT_EQ(state.getPoint({0, 0}), Point(0, 2.5, 0));
  EXPECT_EQ(state.getPoint({200, 100}), Point(10, 0, 0));
}

TEST_F(ViewState2DTest, NegativeScalesMirrorAGraph) {
  state.showGraph({0, 10, 0, 5}, -1, 1);
  expectView(state.current(), -5, 2.5, 14, 7);
  EXPECT_EQ(state.getPixelPoint(0, 0).x, 171);
  EXPECT_EQ(state.getPixelPoint(10, 0).x, 29);
  const GraphPlacement placement = state.graphPlacement().value();
  EXPECT_DOUBLE_EQ(placement.unitsPerPixelX, -0.07);
  expectNear(placement.visible, {12, -2, -1, 6}, 1e-12);
}

TEST_F(ViewState2DTest, ReversedRangesShowTheSameArea) {
  state.showGraph({10, 0, 5, 0}, 1, 1);
  expectView(state.current(), 5, 2.5, 14, 7);
}

TEST_F(ViewState2DTest, UselessScalesGiveNoPlacement) {
  for (const double scale : {0.0, kNaN, kInfinity}) {
    state.showGraph({0, 10, 0, 5}, scale, 1);
    EXPECT_FALSE(state.graphPlacement()) << scale;
    state.showGraph({0, 10, 0, 5}, 1, scale);
    EXPECT_FALSE(state.graphPlacement()) << scale;
    state.getPixelPoint(1, 1);
    state.resize({50, 50});
    state.resize(kWindow);
  }
  state.showGraph({0, 10, 0, 5}, 1, 1);
  EXPECT_TRUE(state.graphPlacement());
}

TEST_F(ViewState2DTest, ThereIsNoPlacementWithoutAGraph) {
  state.fitHome(Rect2{0, 10, 0, 5});
  state.initView();
  EXPECT_FALSE(state.graphPlacement());
}

TEST_F(ViewState2DTest, MapsPixelsToPoints) {
  show({0, 20, 0, 10});
  EXPECT_EQ(state.getPoint({0, 0}), Point(0, 10, 0));
  EXPECT_EQ(state.getPoint({200, 100}), Point(20, 0, 0));
  EXPECT_EQ(state.getPoint({50, 75}), Point(5, 2.5, 0));
  EXPECT_EQ(state.getPoint({-50, 150}), Point(-5, -5, 0));
  EXPECT_EQ(state.pixelSize(), 0.1);
}

TEST_F(ViewState2DTest, MapsPointsToPixels) {
  show({0, 20, 0, 10});
  EXPECT_EQ(state.getPixelPoint(10, 5), (PixelPoint{100, 50}));
  EXPECT_EQ(state.getPixelPoint(0, 10), (PixelPoint{-1, -1}));  // 0 counts as negative
  EXPECT_EQ(state.getPixelPoint(0.04, 9.96), (PixelPoint{0, 0}));
  EXPECT_EQ(state.getPixelPoint(0.06, 9.94), (PixelPoint{1, 1}));
  EXPECT_EQ(state.getPixelPoint(-0.12, 10.12), (PixelPoint{-2, -2}));
  EXPECT_EQ(state.getPixelPoint(-0.17, 10.17), (PixelPoint{-3, -3}));
}

TEST_F(ViewState2DTest, AnOddWindowHasItsCentreInTheMiddleOfAPixel) {
  state.resize({101, 51});
  show({0, 10.1, 0, 5.1});
  EXPECT_EQ(state.getPixelPoint(5.05, 2.55), (PixelPoint{51, 26}));
  EXPECT_NEAR(state.getPoint({0, 0}).x, 0, 1e-12);
  EXPECT_NEAR(state.getPoint({101, 51}).x, 10.1, 1e-12);
  EXPECT_NEAR(state.getPoint({101, 51}).y, 0, 1e-12);
}

TEST_F(ViewState2DTest, PixelsStayWithinTheRangeOfIntegers) {
  show({0, 20, 0, 10});
  EXPECT_EQ(state.getPixelPoint(1e300, 1e300), (PixelPoint{kIntMax, kIntMin}));
  EXPECT_EQ(state.getPixelPoint(-kInfinity, -kInfinity), (PixelPoint{kIntMin, kIntMax}));
  EXPECT_EQ(state.getPixelPoint(kNaN, kNaN), (PixelPoint{0, 0}));
  EXPECT_TRUE(std::isfinite(state.getPoint({kIntMin, kIntMax}).x));
}

TEST_F(ViewState2DTest, WithoutAWindowOrViewPixelsAreStillIntegers) {
  for (const ClientSize client : {ClientSize{0, 0}, {200, 0}, {0, 100}}) {
    ViewState2D empty;
    empty.resize(client);
    EXPECT_EQ(empty.getPixelPoint(0, 0), (PixelPoint{0, 0}));
    empty.getPixelPoint(1, -1);
    empty.getPixelPoint(-kInfinity, kNaN);
    empty.getPoint({1, 1});
  }
  ViewState2D shapeless;
  shapeless.resize(kWindow);
  shapeless.initView();
  EXPECT_EQ(shapeless.getPixelPoint(0, 0), (PixelPoint{0, 0}));
  shapeless.getPoint({1, 1});
}

TEST_F(ViewState2DTest, TheWheelZoomsAboutThePixel) {
  state.resize({400, 400});
  show({0, 400, 0, 400});
  EXPECT_TRUE(state.turnWheel({100, 100}, 120, {}));
  EXPECT_DOUBLE_EQ(state.current().halfHeight(), 200 * 1.075);
  EXPECT_DOUBLE_EQ(state.current().width(), 430);
  EXPECT_DOUBLE_EQ(state.current().height(), 430);
  EXPECT_DOUBLE_EQ(state.current().centreX(), 100 - 0.25 * 430 + 215);
  EXPECT_DOUBLE_EQ(state.current().centreY(), 300 + 0.25 * 430 - 215);
  EXPECT_EQ(state.getPixelPoint(100, 300), (PixelPoint{100, 100}));
  EXPECT_EQ(state.history().count(), 1U);
  EXPECT_EQ(state.visible(), (Rect2{0, 400, 0, 400}));
}

TEST_F(ViewState2DTest, TheWheelTakesThePixelsShareInSinglePrecision) {
  state.resize({300, 300});
  show({0, 300, 0, 300});
  state.turnWheel({100, 100}, 60, {});
  const double width = 300 * (1 + 60 / 600.0 * 0.5);
  const double share = 100.0F / 300.0F;
  EXPECT_NE(share, 100.0 / 300.0);
  EXPECT_DOUBLE_EQ(state.current().centreX(), 100 - share * width + width / 2);
  EXPECT_NE(state.current().centreX(), 100 - 100.0 / 300.0 * width + width / 2);
}

TEST_F(ViewState2DTest, TheWheelCanBeInvertedAndAccelerated) {
  state.resize({400, 400});
  show({0, 400, 0, 400});
  state.turnWheel({200, 200}, 120, {.inverse = true, .acceleration = 0.5});
  EXPECT_DOUBLE_EQ(state.current().halfHeight(), 200 * (1 - 60 / 800.0 * 0.5));
  show({0, 400, 0, 400});
  state.turnWheel({200, 200}, -120, {.inverse = false, .acceleration = 0.33});
  EXPECT_DOUBLE_EQ(state.current().halfHeight(), 200 * (1 - 39 / 800.0 * 0.5));  // 39.6 is cut
}

TEST_F(ViewState2DTest, TheWheelNeverTurnsTheViewOver) {
  state.resize({400, 400});
  show({0, 400, 0, 400});
  for (const double acceleration : {1000.0, 1e300, kInfinity}) {
    show({0, 400, 0, 400});
    EXPECT_TRUE(state.turnWheel({100, 100}, -120, {.acceleration = acceleration}));
    EXPECT_DOUBLE_EQ(state.current().halfHeight(), 200.0 / 64);
    EXPECT_EQ(state.getPixelPoint(100, 300), (PixelPoint{100, 100}));
  }
  show({0, 400, 0, 400});
  state.turnWheel({100, 100}, -120, {.acceleration = kNaN});
  EXPECT_DOUBLE_EQ(state.current().halfHeight(), 200);
}

TEST_F(ViewState2DTest, TheWheelCannotReachTheEndOfTheNumbers) {
  show({0, 20, 0, 10});
  for (int i = 0; i < 3000; ++i) {
    state.turnWheel({10, 10}, 32767, {.acceleration = 1e6});
  }
  EXPECT_TRUE(state.current().showsAnything());
  for (int i = 0; i < 3000; ++i) {
    state.turnWheel({10, 10}, -32767, {.acceleration = 1e6});
  }
  EXPECT_TRUE(state.current().showsAnything());
}

TEST_F(ViewState2DTest, PansFollowThePointer) {
  show({0, 20, 0, 10});
  const Point grabbed = state.getPoint({40, 60});
  EXPECT_TRUE(state.pan(13, -27));
  const Point now = state.getPoint({53, 33});
  EXPECT_DOUBLE_EQ(now.x, grabbed.x);
  EXPECT_DOUBLE_EQ(now.y, grabbed.y);
  EXPECT_EQ(state.history().count(), 1U);
  EXPECT_EQ(state.visible(), state.current().bounds());
  state.resize({200, 200});
  EXPECT_DOUBLE_EQ(state.getPoint({100, 100}).x, 10 - 1.3);
}

TEST_F(ViewState2DTest, PansOfManySteps) {
  show({0, 20, 0, 10});
  const CParamsVue2D before(state.current());
  for (int i = 0; i < 1000; ++i) {
    state.pan(3, 7);
  }
  for (int i = 0; i < 1000; ++i) {
    state.pan(-3, -7);
  }
  expectNear(state.current().bounds(), before.bounds(), 1e-9);
}

TEST_F(ViewState2DTest, ZoomsToARectangleOfPixels) {
  show({0, 20, 0, 10});
  EXPECT_TRUE(state.zoomTo({{120, 30}, {20, 80}}));
  expectView(state.current(), 7, 4.5, 10, 5);
  EXPECT_EQ(state.visible(), (Rect2{2, 12, 2, 7}));
  EXPECT_EQ(state.history().count(), 2U);
  state.lastView();
  expectView(state.current(), 10, 5, 20, 10);
  EXPECT_TRUE(state.zoomTo({{0, 0}, {10, 100}}));  // the whole height
  expectView(state.current(), 0.5, 5, 20, 10);
}

TEST_F(ViewState2DTest, AClickZoomsNowhere) {
  show({0, 20, 0, 10});
  for (const RubberBand& band :
       {RubberBand{{20, 20}, {20, 20}}, {{20, 20}, {20, 60}}, {{20, 20}, {60, 20}}}) {
    EXPECT_FALSE(state.zoomTo(band));
  }
  expectView(state.current(), 10, 5, 20, 10);
  EXPECT_EQ(state.history().count(), 1U);
}

TEST_F(ViewState2DTest, ZoomsFarFromTheOriginAndFarIn) {
  show({1e6, 1e6 + 1, 0, 1});
  for (int i = 0; i < 40; ++i) {
    EXPECT_TRUE(state.zoomTo({{50, 25}, {150, 75}}));
  }
  EXPECT_NEAR(state.current().height(), std::ldexp(1.0, -40), 1e-20);
  EXPECT_DOUBLE_EQ(state.current().centreX(), 1e6 + 0.5);
  EXPECT_TRUE(state.zoomTo({{kIntMin, kIntMin}, {kIntMax, kIntMax}}));
}

TEST_F(ViewState2DTest, TellsTheRectangleBetweenPixels) {
  state.showGraph({0, 10, 0, 5}, 2, 4);
  show({0, 20, 0, 10});
  EXPECT_EQ(state.getRectangle({{100, 10}, {20, 60}}), (Rect2{1, 5, 1, 2.25}));
}

TEST_F(ViewState2DTest, TellsItsParameters) {
  show({0, 40, 0, 10});
  EXPECT_EQ(state.params(), (std::array<double, 7>{200, 100, 40, 20, 10, 20, 5}));
  const ViewState2D empty;
  EXPECT_EQ(empty.params(), (std::array<double, 7>{}));
}

}  // namespace
}  // namespace zyn::test
