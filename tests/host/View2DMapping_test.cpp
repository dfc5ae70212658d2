#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

/// What getVueParams should tell in a window of 400 by 200.
struct Expected {
  double width, height, x, y;
};

/// What a window of that size shows before anything else.
constexpr Expected kFirst = {1, 2, 0, 0};

class View2DMapping : public HostTest {
 protected:
  void expectView(const Expected& expected) const {
    const VueParams p = host.params();
    EXPECT_DOUBLE_EQ(p.width, expected.width);
    EXPECT_DOUBLE_EQ(p.height, expected.height);
    EXPECT_DOUBLE_EQ(p.halfHeight, expected.height / 2);
    EXPECT_DOUBLE_EQ(p.x, expected.x);
    EXPECT_DOUBLE_EQ(p.y, expected.y);
  }
  void showGraph(const Area& range, double xScale, double yScale) const {
    require(
        host->GraphView(0, 0, 0, nullptr, nullptr, nullptr, range.xMin, range.xMax, 0, 0, xScale,
                        nullptr, nullptr, nullptr, range.yMin, range.yMax, 0, 0, yScale),
        "GraphView");
  }

  /// From now on no object is the first, which would show itself.
  void keepView() {
    first_ = makeForeign<ForeignObject>();
    require(host->Add(first_->dispatch(), 0), "Add");
  }

  /// Draws plates that end exactly at four model points near the corners and looks where their
  /// pixels are: mapping and picture must agree to half a pixel.
  void expectPictureAgrees() const {
    const SIZE size = host.clientSize();
    const int margin = 10;
    for (const int left : {margin, int(size.cx) - margin}) {
      for (const int top : {margin, int(size.cy) - margin}) {
        const auto corner = host.pointOf(left, top);
        const auto centre = host.pointOf(int(size.cx) / 2, int(size.cy) / 2);
        const auto plate =
            makePlate({std::min(corner[0], centre[0]), std::max(corner[0], centre[0]),
                       std::min(corner[1], centre[1]), std::max(corner[1], centre[1])},
                      kRed);
        require(host->Add(plate->dispatch(), 0), "Add");
        const PixelBox box = boxOf(host.scene(), kRed);
        require(host->Remove(plate->dispatch()), "Remove");
        EXPECT_NEAR(left < size.cx / 2 ? box.left : box.right + 1, left, 0.5) << top;
        EXPECT_NEAR(top < size.cy / 2 ? box.top : box.bottom + 1, top, 0.5) << left;
        EXPECT_EQ(host.pixelOf(corner[0], corner[1]), (std::array{left, top}));
      }
    }
  }

  View2DHost host;

 private:
  ComPtr<ForeignObject> first_;
};

TEST_F(View2DMapping, ANewViewIsFittedToNoRectangle) {
  const View2DHost small({200, 100});
  const VueParams p = small.params();
  EXPECT_EQ(p.pixelWidth, 200);
  EXPECT_EQ(p.pixelHeight, 100);
  EXPECT_DOUBLE_EQ(p.width, 1);
  EXPECT_DOUBLE_EQ(p.height, 2);
  EXPECT_DOUBLE_EQ(p.halfHeight, 1);
  EXPECT_EQ(p.x, 0);
  EXPECT_EQ(p.y, 0);
  double size = 0;
  EXPECT_EQ(small->get_PixelSize(&size), S_OK);
  EXPECT_DOUBLE_EQ(size, 0.02);
  EXPECT_EQ(small.pointOf(0, 0), (std::array{-0.5, 1.0}));
  EXPECT_EQ(small.pointOf(200, 100), (std::array{0.5, -1.0}));
}

TEST_F(View2DMapping, ViewRectFitsWithATenthInSinglePrecision) {
  EXPECT_EQ(host->ViewRect(0, 10, 0, 5), S_OK);
  const double k = double{1.0F + 0.1F};
  expectView({5 * k * 2, 5 * k, 5, 2.5});
}

TEST_F(View2DMapping, ViewFitsAnyShape) {
  const double k = double{1.0F + 0.25F};
  struct {
    Area area;
    Expected expected;
  } const cases[] = {
      {{0, 20, 0, 10}, {20 * k, 10 * k, 10, 5}},  {{0, 40, 0, 10}, {40 * k, 20 * k, 20, 5}},
      {{0, 10, 0, 10}, {20 * k, 10 * k, 5, 5}},   {{2, 10, 3, 3}, {8 * k, 4 * k, 6, 3}},
      {{5, 5, -1, 3}, {8 * k, 4 * k, 5, 1}},      {{5, 5, 7, 7}, {1, 2, 5, 7}},
      {{10, 0, 5, 0}, {-10 * k, -5 * k, 5, 2.5}},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(host->View(makeArea(one.area).Get(), 0.25), S_OK);
    const VueParams p = host.params();
    SCOPED_TRACE(one.area.xMax);
    if (one.area.xMax < one.area.xMin) continue;  // the wrong way round: any view, no crash
    EXPECT_DOUBLE_EQ(p.width, one.expected.width);
    EXPECT_DOUBLE_EQ(p.height, one.expected.height);
    EXPECT_DOUBLE_EQ(p.x, one.expected.x);
    EXPECT_DOUBLE_EQ(p.y, one.expected.y);
  }
}

TEST_F(View2DMapping, ViewTakesRectanglesOnly) {
  host.look({0, 20, 0, 10});
  const auto box = createObject<IZYNBox2D>(L"ZYNModeleGeom.Box2D");
  EXPECT_EQ(host->View(box.Get(), 0), S_OK);
  EXPECT_EQ(host->View(nullptr, 0), S_OK);
  expectView({20, 10, 10, 5});
  host->LastView();
  expectView(kFirst);  // one entry in the history
}

TEST_F(View2DMapping, LastViewGoesBackThroughTheHistory) {
  host.look({0, 20, 0, 10});
  host.look({0, 40, 0, 20});
  host.look({0, 80, 0, 40});
  host->LastView();
  expectView({40, 20, 20, 10});
  host->LastView();
  expectView({20, 10, 10, 5});
  host->LastView();
  EXPECT_EQ(host->LastView(), S_OK);
  expectView(kFirst);
}

TEST_F(View2DMapping, ViewRectLeavesTheHistoryAlone) {
  host.look({0, 20, 0, 10});
  host->ViewRect(0, 200, 0, 100);
  host->LastView();
  expectView(kFirst);
}

TEST_F(View2DMapping, TheFirstObjectShowsItself) {
  host.addBox({0, 20, 0, 10});
  const double k = double{1.0F + 0.1F};
  expectView({20 * k, 10 * k, 10, 5});
}

TEST_F(View2DMapping, LaterObjectsChangeTheHomeViewOnly) {
  host.addBox({0, 20, 0, 10});
  host.look({0, 2, 0, 1});
  host.addBox({20, 40, 10, 20});
  expectView({2, 1, 1, 0.5});
  host->initView();
  const double k = double{1.0F + 0.1F};
  expectView({40 * k, 20 * k, 20, 10});
  host->LastView();
  EXPECT_NE(host.params().width, 2) << "initView leaves the history as it is";
}

TEST_F(View2DMapping, TheHomeViewFollowsTheObjects) {
  const double k = double{1.0F + 0.1F};
  auto area = std::make_shared<Area>(Area{0, 20, 0, 10});
  const auto changing = makeForeign<ForeignObject>();
  changing->onGetBox2D = [area](IDispatch** out) {
    const auto box = createObject<IZYNBox2D>(L"ZYNModeleGeom.Box2D");
    box->put_XMin(area->xMin);
    box->put_XMax(area->xMax);
    box->put_YMin(area->yMin);
    box->put_YMax(area->yMax);
    return handOut(box, out);
  };
  host->Add(changing->dispatch(), 0);
  const auto other = host.addBox({0, 200, 0, 100});
  host->initView();
  expectView({200 * k, 100 * k, 100, 50});
  host->Remove(other->dispatch());
  host->initView();
  expectView({20 * k, 10 * k, 10, 5});
  *area = {0, 40, 0, 20};
  host->initView();
  expectView({20 * k, 10 * k, 10, 5});
  host->UpdateParams();
  expectView({20 * k, 10 * k, 10, 5});
  host->initView();
  expectView({40 * k, 20 * k, 20, 10});
  host->RemoveAll();
  host->UpdateParams();
  host->initView();
  expectView({40 * k, 20 * k, 20, 10});
}

TEST_F(View2DMapping, ObjectsOfOurOwnAreMeasuredToo) {
  const double k = double{1.0F + 0.1F};
  const auto triangle = makeTriangle({0, 0, 5}, {20, 0, -5}, {10, 10, 0});
  host->Add(triangle.Get(), 0);
  expectView({20 * k, 10 * k, 10, 5});
  triangle->setPoint(2, 10, 20, 0);
  host->initView();
  expectView({20 * k, 10 * k, 10, 5});
  host->UpdateParams();
  host->initView();
  expectView({40 * k, 20 * k, 10, 10});
}

TEST_F(View2DMapping, ObjectsWithoutABoxAreSkipped) {
  const double k = double{1.0F + 0.1F};
  const auto empty = makeForeign<ForeignObject>();
  host->Add(empty->dispatch(), 0);
  EXPECT_EQ(host.params().width, 0);
  const auto failing = makeForeign<ForeignObject>();
  failing->onGetBox2D = [](IDispatch**) { return E_FAIL; };
  EXPECT_EQ(host->Add(failing->dispatch(), 0), S_OK);
  host.addBox({0, 20, 0, 10});
  EXPECT_EQ(host.params().width, 0) << "only the first object shows the home view";
  host->initView();
  expectView({20 * k, 10 * k, 10, 5});
}

TEST_F(View2DMapping, AGraphKeepsTheHomeView) {
  showGraph({0, 20, 0, 10}, 1, 1);
  const Expected graph = {28, 14, 10, 5};
  expectView(graph);
  const auto object = host.addBox({0, 2000, 0, 1000});
  expectView(graph);
  host->UpdateParams();
  host.look({0, 2, 0, 1});
  host->Remove(object->dispatch());
  host->initView();
  expectView(graph);
}

TEST_F(View2DMapping, AGraphEmptiesTheHistory) {
  host.look({0, 20, 0, 10});
  host.look({0, 2, 0, 1});
  showGraph({0, 20, 0, 10}, 1, 1);
  host->LastView();
  expectView({28, 14, 10, 5});
}

TEST_F(View2DMapping, PixelsOfACornerAndTheCentre) {
  host.look({-10, 10, -5, 5});
  EXPECT_EQ(host.pointOf(0, 0), (std::array{-10.0, 5.0}));
  EXPECT_EQ(host.pointOf(400, 200), (std::array{10.0, -5.0}));
  EXPECT_EQ(host.pixelOf(0, 0), (std::array{200, 100}));
  double size = 0;
  host->get_PixelSize(&size);
  EXPECT_DOUBLE_EQ(size, 0.05);
}

TEST_F(View2DMapping, NegativePixelsRoundDown) {
  host.look({-200, 200, -100, 100});
  EXPECT_EQ(host.pixelOf(-201.2, 101.2), (std::array{-2, -2}));
  EXPECT_EQ(host.pixelOf(-201.6, 101.6), (std::array{-3, -3}));
  EXPECT_EQ(host.pixelOf(-198.6, 98.6), (std::array{1, 1}));
  EXPECT_EQ(host.pixelOf(-198.4, 98.4), (std::array{2, 2}));
}

TEST_F(View2DMapping, WildNumbersGiveDefinedPixels) {
  host.look({-200, 200, -100, 100});
  const double nan = std::nan("");
  EXPECT_EQ(host.pixelOf(nan, nan), (std::array{0, 0}));
  EXPECT_EQ(host.pixelOf(1e300, -1e300), (std::array{INT_MAX, INT_MAX}));
  EXPECT_EQ(host.pixelOf(-HUGE_VAL, HUGE_VAL), (std::array{INT_MIN, INT_MIN}));
}

TEST_F(View2DMapping, AResizeKeepsTheVisibleArea) {
  keepView();
  host.look({-10, 10, -5, 5});
  host.resize({200, 200});
  VueParams p = host.params();
  EXPECT_EQ(p.pixelWidth, 200);
  EXPECT_EQ(p.pixelHeight, 200);
  EXPECT_DOUBLE_EQ(p.width, 20);
  EXPECT_DOUBLE_EQ(p.height, 20);
  host.resize({400, 200});
  expectView({20, 10, 0, 0});
  expectPictureAgrees();
}

TEST_F(View2DMapping, AnEmptyWindowSpoilsNothing) {
  host.look({-10, 10, -5, 5});
  host.resize({0, 0});
  double size = 77;
  host->get_PixelSize(&size);
  EXPECT_EQ(size, 0.0);
  host->initView();
  host.look({-10, 10, -5, 5});
  host.resize({400, 0});
  host.resize({400, 200});
  expectView({20, 10, 0, 0});
}

TEST_F(View2DMapping, AResizeRefitsToNoRectangleWhereNoneWasShown) {
  host.resize({100, 200});
  EXPECT_DOUBLE_EQ(host.params().width, 4);
  EXPECT_DOUBLE_EQ(host.params().height, 2);
  host->ViewRect(0, 10, 0, 5);
  for (const SIZE size : {SIZE{200, 200}, SIZE{400, 100}, SIZE{200, 200}, SIZE{400, 200}}) {
    host.resize(size);
    const VueParams p = host.params();
    EXPECT_DOUBLE_EQ(p.width, 2.0 * size.cy / size.cx);
    EXPECT_DOUBLE_EQ(p.height, 2);
    EXPECT_EQ(p.x, 0);
  }
}

TEST_F(View2DMapping, AResizeAfterViewRectReturnsToWhatWasShownBefore) {
  host.look({-10, 10, -5, 5});
  host->ViewRect(0, 100, 0, 50);
  host.resize({400, 400});
  host.resize({400, 200});
  expectView({20, 10, 0, 0});
}

TEST_F(View2DMapping, AResizeRefitsTheHomeViewToTheObjects) {
  host.addBox({0, 20, 0, 10});
  host.look({0, 2, 0, 1});
  host.resize({200, 200});
  host->initView();
  const double k = double{1.0F + 0.1F};
  const VueParams p = host.params();
  EXPECT_DOUBLE_EQ(p.width, 20 * k);
  EXPECT_DOUBLE_EQ(p.height, 20 * k);
}

TEST_F(View2DMapping, AHomeViewFittedWithoutARoomIsFittedLater) {
  const double k = double{1.0F + 0.1F};
  host.resize({0, 0});
  host.addBox({0, 40, 0, 20});
  host.resize({400, 200});
  expectView({40 * k, 20 * k, 20, 10});
}

TEST_F(View2DMapping, PictureAndMappingAgree) {
  keepView();
  host.look({-10, 10, -5, 5});
  expectPictureAgrees();
}

TEST_F(View2DMapping, PictureAndMappingAgreeAfterPanZoomAndResize) {
  keepView();
  host.look({-10, 10, -5, 5});
  host->put_MiddleButtonActive(VARIANT_TRUE);
  host->put_Mode(1);
  host.drag({{100, 100}, {147, 61}});
  expectPictureAgrees();
  host.move(37, 150);
  host.wheel(120);
  host.wheel(-360);
  expectPictureAgrees();
  host.resize({333, 257});
  expectPictureAgrees();
  host->put_Mode(4);
  host.drag({{100, 50}, {180, 170}});
  expectPictureAgrees();
}

TEST_F(View2DMapping, PictureAndMappingAgreeAtOtherScales) {
  keepView();
  showGraph({0, 1000, 0, 5}, 0.01, 2);
  expectPictureAgrees();
  host->put_Mode(1);
  host.drag({{100, 100}, {120, 61}});
  expectPictureAgrees();
  host->put_MiddleButtonActive(VARIANT_TRUE);
  host.wheel(-240);
  expectPictureAgrees();
  host.resize({257, 333});
  expectPictureAgrees();
  host->initView();
  expectPictureAgrees();
}

TEST_F(View2DMapping, ScalesNeverMakeTheViewJump) {
  showGraph({0, 1000, 0, 5}, 0.01, 1);
  const VueParams before = host.params();
  EXPECT_DOUBLE_EQ(before.x, 5);
  EXPECT_DOUBLE_EQ(before.y, 2.5);
  host.resize({200, 100});
  host.resize({400, 200});
  VueParams after = host.params();
  EXPECT_DOUBLE_EQ(after.x, before.x);
  EXPECT_DOUBLE_EQ(after.width, before.width);
  host->initView();
  after = host.params();
  EXPECT_DOUBLE_EQ(after.x, before.x);
  EXPECT_DOUBLE_EQ(after.width, before.width);
  EXPECT_NEAR(host.pointOf(200, 100)[0], 500, 1e-9);
}

TEST_F(View2DMapping, FarFromTheOriginPixelsStayRight) {
  host.look({1e9, 1e9 + 20, -1e9, -1e9 + 10});
  EXPECT_EQ(host.pixelOf(1e9 + 10, -1e9 + 5), (std::array{200, 100}));
  EXPECT_NEAR(host.pointOf(100, 50)[0], 1e9 + 5, 1e-6);
}

TEST_F(View2DMapping, CirclesStayRound) {
  for (const SIZE size : {SIZE{400, 200}, SIZE{150, 300}, SIZE{301, 299}}) {
    host.resize(size);
    host.look({-5, 5, -5, 5});
    const VueParams p = host.params();
    EXPECT_NEAR(p.width / p.pixelWidth, p.height / p.pixelHeight, 1e-12);
    const auto plate = makePlate({-2, 2, -2, 2}, kRed);
    host->Add(plate->dispatch(), 0);
    host.look({-5, 5, -5, 5});
    const PixelBox box = boxOf(host.scene(), kRed);
    EXPECT_NEAR(box.right - box.left, box.bottom - box.top, 1);
    host->Remove(plate->dispatch());
  }
}

TEST_F(View2DMapping, TracesAreMeasuredAsTheyAre) {
  const double k = double{1.0F + 0.1F};
  const auto add = [&](const std::vector<double>& x, const std::vector<double>& y) {
    auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    require(trace->setPoints(doubleArray(x), doubleArray(y)), "setPoints");
    require(host->Add(trace.Get(), 0), "Add");
    return trace;
  };
  const auto first = add({0, 20}, {0, 10});
  expectView({20 * k, 10 * k, 10, 5});
  const auto empty = add({}, {});
  const auto gaps = add({0, NAN, 40}, {0, 1000, 20});
  const auto triangle = makeTriangle({0, 0, 0}, {20, 0, 0}, {10, 10, 0});
  host->Add(triangle.Get(), 0);
  host->initView();
  expectView({40 * k, 20 * k, 20, 10});
  // What changed since it was measured is seen with the next object, of whichever kind.
  first->setPoints(doubleArray({0, 80}), doubleArray({0, 40}));
  host->initView();
  expectView({40 * k, 20 * k, 20, 10});
  const auto last = add({1, 2}, {1, 2});
  host->initView();
  expectView({80 * k, 40 * k, 40, 20});
  triangle->setPoint(2, 0, 80, 0);
  host->Add(triangle.Get(), 0);
  host->initView();
  expectView({160 * k, 80 * k, 40, 40});
  host->Remove(triangle.Get());
  host->Remove(first.Get());
  host->initView();
  expectView({40 * k, 20 * k, 20, 10});
}

TEST_F(View2DMapping, ManyObjectsWidenTheHomeView) {
  constexpr int kObjects = 5000;
  for (int i = 0; i < kObjects; ++i) {
    host->Add(makeTriangle({0, 0, 0}, {1.0 + i, 0, 0}, {0, 1, 0}).Get(), 0);
    const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    trace->setPoints(doubleArray({0, 2.0 * i}), doubleArray({0, 1}));
    host->Add(trace.Get(), 0);
  }
  host->initView();
  EXPECT_DOUBLE_EQ(host.params().width, 2 * (kObjects - 1) * double{1.0F + 0.1F});
}

}  // namespace
}  // namespace zyn::test
