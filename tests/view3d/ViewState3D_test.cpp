#include "view3d/ViewState3D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

#include "support/CameraChecks.h"
#include "support/GeometryChecks.h"

namespace zyn {
namespace {

constexpr Box3 kCube{-0.5, 0.5, -0.5, 0.5, -0.5, 0.5};
constexpr Box3 kBox{-1, 3, -1, 5, -3, 9};  // half-diagonal 7 around (1, 2, 3)

std::optional<Box3> noBox() { return std::nullopt; }
std::optional<Box3> cube() { return kCube; }
std::optional<Box3> box() { return kBox; }

std::optional<Box3> unexpected() { throw std::logic_error("the scene box was asked for"); }

/// Everything that changes the camera, in the order of the published members.
std::vector<std::function<bool(ViewState3D&)>> operations() {
  return {
      [](ViewState3D& v) { return v.showAxis(AxisView::kXYp, 0); },
      [](ViewState3D& v) { return v.showAxis(AxisView::kYZm, 0); },
      [](ViewState3D& v) { return v.translateH(1); },
      [](ViewState3D& v) { return v.translateV(1); },
      [](ViewState3D& v) { return v.translateP(1); },
      [](ViewState3D& v) { return v.zoom(2); },
      [](ViewState3D& v) { return v.rotateA(10); },
      [](ViewState3D& v) { return v.rotateH(10); },
      [](ViewState3D& v) { return v.rotateV(10); },
      [](ViewState3D& v) { return v.updateParams(cube); },
      [](ViewState3D& v) { return v.lastView(); },
      [](ViewState3D& v) { return v.vueTournage(0); },
      [](ViewState3D& v) { return v.setViewBox(box); },
      [](ViewState3D& v) { return v.fitWindow(); },
  };
}

class ViewState3DTest : public ::testing::Test {
 protected:
  ViewState3DTest() {
    view_.setClientSize({400, 200});
    view_.setSceneBox(kCube);
  }

  void start() { ASSERT_TRUE(view_.initView(0.0, cube)); }

  CParamsVue3D cameraNow() const { return CParamsVue3D(*view_.camera()); }

  ViewState3D view_;
};

TEST_F(ViewState3DTest, WithoutACameraNothingHappens) {
  for (const auto& operation : operations()) {
    EXPECT_FALSE(operation(view_));
  }
  view_.pushHistory();
  EXPECT_EQ(view_.camera(), nullptr);
  EXPECT_EQ(view_.lastParams(), nullptr);
  EXPECT_EQ(view_.history().count(), 0U);
  EXPECT_EQ(view_.sceneBox(), kCube);
  EXPECT_EQ(view_.getWindowScale(), 0.0);
  EXPECT_FALSE(view_.xFormView());
  EXPECT_FALSE(view_.getPixelPlanIntersection(1, 1, std::vector<double>{0, 0, 1, 0}));
}

TEST_F(ViewState3DTest, WithoutACameraTheSceneIsNotAskedForItsBox) {
  EXPECT_FALSE(view_.updateParams(unexpected));
}

TEST_F(ViewState3DTest, EveryChangeIsReportedAndKept) {
  start();
  for (const auto& operation : operations()) {
    EXPECT_TRUE(operation(view_));
    ASSERT_NE(view_.lastParams(), nullptr);
    EXPECT_NE(view_.lastParams(), view_.camera());
    expectSameView(*view_.lastParams(), *view_.camera());
  }
}

TEST_F(ViewState3DTest, InitViewCreatesTheCameraWithoutHistory) {
  start();
  EXPECT_EQ(view_.history().count(), 0U);
  CParamsVue3D expected;
  expected.fitDefault(kCube, {400, 200}, 0.0, 0.0);
  expectSameView(*view_.camera(), expected);
  EXPECT_EQ(view_.camera()->pixelWidth(), 400U);
}

TEST_F(ViewState3DTest, InitViewOfAnExistingCameraPushesHistory) {
  start();
  EXPECT_TRUE(view_.initView(0.5, cube));
  EXPECT_EQ(view_.history().count(), 1U);
}

TEST_F(ViewState3DTest, InitViewAndZoomTotalNeedAClientArea) {
  for (const ClientSize empty :
       {ClientSize{0, 0}, ClientSize{0, 1}, ClientSize{1, 0}, ClientSize{-5, 5}}) {
    view_.setClientSize(empty);
    EXPECT_FALSE(view_.initView(0.0, unexpected));
    EXPECT_FALSE(view_.zoomTotal(0.0, unexpected));
    EXPECT_EQ(view_.camera(), nullptr);
  }
  view_.setClientSize({1, 1});
  EXPECT_TRUE(view_.initView(0.0, cube));
}

TEST_F(ViewState3DTest, AWindowThatVanishesWhileTheSceneIsAskedIsNotFittedTo) {
  const auto shrinking = [this]() -> std::optional<Box3> {
    view_.setClientSize({0, 0});
    return kCube;
  };
  EXPECT_FALSE(view_.initView(0.0, shrinking));
  EXPECT_EQ(view_.camera(), nullptr);
}

TEST_F(ViewState3DTest, FitsToTheWholeMeasureTheSceneOnceEach) {
  int asked = 0;
  const auto source = [&] { return std::optional(++asked % 2 == 1 ? kBox : kCube); };
  EXPECT_TRUE(view_.zoomTotal(0.0, source));
  EXPECT_EQ(view_.sceneBox(), kBox);
  EXPECT_EQ(view_.camera()->target(), Point(1, 2, 3));
  EXPECT_TRUE(view_.zoomTotal(0.0, source));
  EXPECT_EQ(view_.camera()->target(), Point());
  EXPECT_TRUE(view_.initView(0.0, source));
  EXPECT_EQ(view_.camera()->target(), Point(1, 2, 3));
  EXPECT_EQ(asked, 3);
}

TEST_F(ViewState3DTest, InitViewOfAnEmptySceneIsAllZero) {
  EXPECT_TRUE(view_.initView(0.0, noBox));
  EXPECT_EQ(view_.camera()->width(), 0.0);
  EXPECT_EQ(view_.camera()->zFar(), 0.0);
  EXPECT_EQ(view_.camera()->eye(), Point());
}

TEST_F(ViewState3DTest, AFailingSceneLeavesTheViewAsItWas) {
  EXPECT_THROW(view_.initView(0.0, unexpected), std::logic_error);
  EXPECT_EQ(view_.camera(), nullptr);
  view_.setSceneBox(kCube);
  start();
  const CParamsVue3D before = cameraNow();
  EXPECT_THROW(view_.updateParams(unexpected), std::logic_error);
  EXPECT_EQ(view_.sceneBox(), kCube);
  expectSameView(*view_.camera(), before);
}

TEST_F(ViewState3DTest, ZoomTotalWithoutACameraIsInitView) {
  EXPECT_TRUE(view_.zoomTotal(0.5, cube));
  CParamsVue3D expected;
  expected.fitDefault(kCube, {400, 200}, 0.5, 0.0);
  expectSameView(*view_.camera(), expected);
  EXPECT_EQ(view_.history().count(), 0U);
}

TEST_F(ViewState3DTest, ZoomTotalWithoutABoxDoesNothing) {
  EXPECT_FALSE(view_.zoomTotal(0.5, noBox));
  EXPECT_EQ(view_.camera(), nullptr);
  EXPECT_TRUE(view_.initView(0.0, cube));
  const CParamsVue3D before = cameraNow();
  EXPECT_FALSE(view_.zoomTotal(0.5, noBox));
  expectSameView(*view_.camera(), before);
  EXPECT_EQ(view_.history().count(), 0U);
}

TEST_F(ViewState3DTest, ZoomTotalKeepsTheDirectionAndPushesHistory) {
  start();
  view_.showAxis(AxisView::kXZm, 0.0);
  EXPECT_TRUE(view_.zoomTotal(0.0, box));
  EXPECT_EQ(view_.history().count(), 2U);
  const double oldDepth = 2.0 * std::sqrt(0.75);
  expectNear(view_.camera()->eye(), Point(1, 2 - oldDepth, 3));
  EXPECT_EQ(view_.camera()->depth(), 14.0);
  EXPECT_DOUBLE_EQ(view_.camera()->width(), 28.0);
  EXPECT_DOUBLE_EQ(view_.camera()->height(), 14.0);
}

TEST_F(ViewState3DTest, WindowScale) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_EQ(view_.getWindowScale(), 0.005);
}

TEST_F(ViewState3DTest, DrawingDepthHoldsFromTheNextFit) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_EQ(view_.drawingDepth(), 0.0);
  view_.setDrawingDepth(10.0);
  EXPECT_EQ(view_.drawingDepth(), 10.0);
  EXPECT_NEAR(view_.camera()->eye().z, 1.7321, 5e-5);
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_EQ(view_.camera()->eye(), Point(0, 0, 10));
  EXPECT_DOUBLE_EQ(view_.camera()->zNear(), 4.5);
  EXPECT_DOUBLE_EQ(view_.camera()->zFar(), 15.5);
  view_.vueTournage(0.0);
  EXPECT_NEAR(view_.camera()->eye().y, 1.7321, 5e-5);
  view_.initView(0.0, cube);
  EXPECT_EQ(view_.camera()->eye(), Point(10, 0, 0));
  view_.zoomTotal(0.0, cube);
  EXPECT_EQ(view_.camera()->depth(), 10.0);
  view_.setDrawingDepth(30.0);
  view_.updateParams(cube);
  EXPECT_EQ(view_.camera()->eye(), Point(30, 0, 0));
  view_.setDrawingDepth(40.0);
  view_.setViewBox(cube);
  EXPECT_EQ(view_.camera()->eye(), Point(40, 0, 0));
}

TEST_F(ViewState3DTest, ZoomAndBack) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  const CParamsVue3D before = cameraNow();
  const std::size_t entries = view_.history().count();
  EXPECT_TRUE(view_.zoom(2.0));
  EXPECT_EQ(view_.camera()->width(), 1.0);
  EXPECT_EQ(view_.camera()->height(), 0.5);
  EXPECT_EQ(view_.history().count(), entries + 1);
  EXPECT_TRUE(view_.lastView());
  expectSameView(*view_.camera(), before);
}

TEST_F(ViewState3DTest, LastViewGoesBackThroughEveryEntry) {
  start();
  std::vector<CParamsVue3D> earlier;
  earlier.reserve(3);
  for (const double surplus : {0.1, 0.2, 0.3}) {
    earlier.push_back(cameraNow());
    EXPECT_TRUE(view_.showAxis(AxisView::kXYp, surplus));
  }
  for (auto camera = earlier.rbegin(); camera != earlier.rend(); ++camera) {
    EXPECT_TRUE(view_.lastView());
    expectSameView(*view_.camera(), *camera);
    expectSameView(*view_.lastParams(), *camera);
  }
  EXPECT_FALSE(view_.lastView());
  expectSameView(*view_.camera(), earlier.front());
}

TEST_F(ViewState3DTest, MovesLeaveTheHistoryAlone) {
  start();
  view_.zoom(2.0);
  view_.translateH(1);
  view_.translateV(1);
  view_.translateP(1);
  view_.rotateA(10);
  view_.rotateH(10);
  view_.rotateV(10);
  view_.updateParams(cube);
  view_.setViewBox(box);
  view_.fitWindow();
  EXPECT_EQ(view_.history().count(), 1U);
  EXPECT_TRUE(view_.lastView());
  CParamsVue3D first;
  first.fitDefault(kCube, {400, 200}, 0.0, 0.0);
  expectSameView(*view_.camera(), first);
}

TEST_F(ViewState3DTest, HistoryIsNewestFirst) {
  start();
  const double width = view_.camera()->width();
  view_.zoom(2.0);
  view_.zoom(2.0);
  ASSERT_EQ(view_.history().count(), 2U);
  EXPECT_EQ(view_.history().head()->value->width(), width / 2);
  EXPECT_EQ(view_.history().head()->next->value->width(), width);
}

TEST_F(ViewState3DTest, APushWithoutAChangeIsAnEntry) {
  start();
  view_.pushHistory();
  view_.rotateH(45.0);
  EXPECT_TRUE(view_.lastView());
  EXPECT_EQ(view_.camera()->eye().y, 0.0);
}

TEST_F(ViewState3DTest, LastViewAfterAResizeFitsTheWindow) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);  // 2 x 1
  view_.zoom(2.0);
  view_.setClientSize({900, 300});
  EXPECT_TRUE(view_.lastView());
  EXPECT_EQ(view_.camera()->width(), 3.0);
  EXPECT_EQ(view_.camera()->height(), 1.0);
  EXPECT_EQ(view_.camera()->pixelWidth(), 900U);
  EXPECT_EQ(view_.camera()->pixelHeight(), 300U);
  EXPECT_EQ((*view_.xFormView())[12], 3.0 / 900);

  view_.showAxis(AxisView::kXYp, 0.0);
  view_.setClientSize({300, 300});
  EXPECT_TRUE(view_.lastView());
  EXPECT_EQ(view_.camera()->width(), 3.0);
  EXPECT_EQ(view_.camera()->height(), 3.0);
}

TEST_F(ViewState3DTest, WindowFit) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  view_.setClientSize({200, 200});
  EXPECT_TRUE(view_.fitWindow());
  EXPECT_EQ(view_.camera()->width(), 2.0);
  EXPECT_EQ(view_.camera()->height(), 2.0);
  EXPECT_EQ(view_.camera()->pixelWidth(), 200U);
}

TEST_F(ViewState3DTest, FrameOfTheView) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  const CParamsVue3D::Frame expected{-1, 0, 0, 0, 1, 0, 0, 0, -1, 1, -0.5, 0, 0.005, 0, 0, 0};
  EXPECT_EQ(view_.xFormView(), expected);
}

TEST_F(ViewState3DTest, UpdateParamsTakesTheNewBoxAndRefitsTheDepth) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_TRUE(view_.updateParams(box));
  EXPECT_EQ(view_.sceneBox(), kBox);
  const double distance = 2.0 * (7.0 + std::sqrt(14.0));
  EXPECT_DOUBLE_EQ(view_.camera()->depth(), distance);
  expectNear(view_.camera()->eye(), Point(0, 0, distance));
  EXPECT_EQ(view_.camera()->width(), 2.0);
}

TEST_F(ViewState3DTest, UpdateParamsOfAnEmptySceneForgetsTheBox) {
  start();
  const CParamsVue3D before = cameraNow();
  EXPECT_FALSE(view_.updateParams(noBox));
  EXPECT_FALSE(view_.sceneBox());
  expectSameView(*view_.camera(), before);
}

TEST_F(ViewState3DTest, SetViewBoxReplacesTheBoxAndRefitsTheDepth) {
  start();
  view_.showAxis(AxisView::kYZm, 0.0);
  EXPECT_TRUE(view_.setViewBox(box));
  EXPECT_EQ(view_.sceneBox(), kBox);
  const double distance = 2.0 * (7.0 + std::sqrt(14.0));
  expectNear(view_.camera()->eye(), Point(-distance, 0, 0));
  EXPECT_DOUBLE_EQ(view_.camera()->zNear(), 0.45 * distance);
  EXPECT_DOUBLE_EQ(view_.camera()->zFar(), 1.55 * distance);
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_EQ(view_.camera()->target(), Point(1, 2, 3));
}

TEST_F(ViewState3DTest, TheViewBoxIsAskedAtEachFitUntilTheSceneIsMeasured) {
  const std::vector<std::function<void()>> measurements = {
      [&] { view_.setSceneBox(kCube); }, [&] { view_.initView(0.0, cube); },
      [&] { view_.zoomTotal(0.0, cube); }, [&] { view_.updateParams(cube); }};
  start();
  for (const auto& measure : measurements) {
    Box3 now = kCube;
    EXPECT_TRUE(view_.setViewBox([&] { return std::optional(now); }));
    now = kBox;
    EXPECT_EQ(view_.sceneBox(), kBox);
    EXPECT_TRUE(view_.vueTournage(0.0));
    EXPECT_EQ(view_.camera()->target(), Point(1, 2, 3));
    measure();
    EXPECT_EQ(view_.sceneBox(), kCube);
  }
}

TEST_F(ViewState3DTest, AViewBoxThatFailsChangesNothing) {
  start();
  view_.setViewBox(box);
  const CParamsVue3D before = cameraNow();
  const auto history = view_.history().count();
  EXPECT_THROW(view_.setViewBox(unexpected), std::logic_error);
  EXPECT_EQ(view_.sceneBox(), kBox);
  bool fails = false;
  view_.setViewBox([&] { return fails ? unexpected() : box(); });
  fails = true;
  EXPECT_THROW(view_.showAxis(AxisView::kXYp, 0.0), std::logic_error);
  EXPECT_THROW(view_.vueTournage(0.0), std::logic_error);
  expectSameView(*view_.camera(), before);
  EXPECT_EQ(view_.history().count(), history);
}

TEST_F(ViewState3DTest, AViewBoxMayBeReplacedWhileItIsAsked) {
  start();
  int asked = 0;
  view_.setViewBox([this, &asked, kept = std::vector<int>(100, 1)] {
    if (++asked > 1) {
      view_.setSceneBox(kCube);
    }
    return kept[99] == 1 ? std::optional(kBox) : std::nullopt;
  });
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_EQ(view_.camera()->target(), Point(1, 2, 3));
  EXPECT_EQ(view_.sceneBox(), kCube);
}

TEST_F(ViewState3DTest, PixelPlaneIntersectionTakesFourValuesOnly) {
  start();
  view_.showAxis(AxisView::kXYp, 0.0);
  EXPECT_TRUE(view_.getPixelPlanIntersection(3, 4, std::vector<double>{0, 0, 1, 0}));
  EXPECT_FALSE(view_.getPixelPlanIntersection(3, 4, std::vector<double>{0, 0, 1}));
  EXPECT_FALSE(view_.getPixelPlanIntersection(3, 4, std::vector<double>{0, 0, 1, 0, 0}));
  EXPECT_FALSE(view_.getPixelPlanIntersection(3, 4, {}));
  const auto hit = view_.getPixelPlanIntersection(399, 0, std::vector<double>{0, 0, 2, -1});
  ASSERT_TRUE(hit);
  expectNear(*hit, Point(1 - 0.0025, 0.5 - 0.0025, 0.5));
}

TEST_F(ViewState3DTest, RecoversFromValuesThatAreNoNumbers) {
  start();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double odd : {nan, std::numeric_limits<double>::infinity(), 0.0, -1e300}) {
    view_.zoom(odd);
    view_.rotateH(odd);
    view_.translateV(odd);
    view_.setDrawingDepth(nan);
    view_.zoomTotal(odd, cube);
    view_.setViewBox([odd] { return std::optional(Box3{odd, odd, odd, odd, odd, odd}); });
    view_.lastView();
    view_.setSceneBox(kCube);
    view_.showAxis(AxisView::kXYp, 0.0);
    EXPECT_EQ(view_.camera()->width(), 2.0);
    EXPECT_NEAR(view_.camera()->eye().z, 1.7321, 5e-5);
  }
}

}  // namespace
}  // namespace zyn
