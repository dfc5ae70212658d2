#include <cmath>
#include <numbers>

#include "support/ArrayVariant_win.h"
#include "support/ForeignBounds_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

/// What the driver tells back is in single precision.
constexpr double kTolerance = 2e-6;

/// A unit cube around the origin.
constexpr Bounds kCube = {-0.5, 0.5, -0.5, 0.5, -0.5, 0.5};
const double kHalfDiagonal = std::sqrt(0.75);

#define EXPECT_VEC(actual, expected)                    \
  do {                                                  \
    const Vec a_ = (actual);                            \
    const Vec e_ = (expected);                          \
    EXPECT_NEAR(a_.x, e_.x, kTolerance * 30) << "in x"; \
    EXPECT_NEAR(a_.y, e_.y, kTolerance * 30) << "in y"; \
    EXPECT_NEAR(a_.z, e_.z, kTolerance * 30) << "in z"; \
  } while (false)

void expectSame(const DrawnCamera& a, const DrawnCamera& b) {
  EXPECT_VEC(a.eye, b.eye);
  EXPECT_VEC(a.up, b.up);
  EXPECT_VEC(a.forward, b.forward);
  EXPECT_NEAR(a.width, b.width, kTolerance * a.width);
  EXPECT_NEAR(a.height, b.height, kTolerance * a.height);
  EXPECT_NEAR(a.zNear, b.zNear, kTolerance * 30);
  EXPECT_NEAR(a.zFar, b.zFar, kTolerance * 30);
}

class View3DCamera : public HostTest {
 protected:
  double scale() const {
    double value = -1;
    EXPECT_EQ(host->getWindowScale(&value), S_OK);
    return value;
  }
  std::vector<double> frame() const {
    _variant_t value;
    EXPECT_EQ(host->XFormView(&value), S_OK);
    return value.vt == VT_EMPTY ? std::vector<double>{} : doublesIn(value);
  }
  void startWithCube() {
    host.addBox(kCube);
    require(host->initView(0), "initView");
  }
  void expectClipRange(const DrawnCamera& camera, double distance) {
    EXPECT_NEAR(camera.zNear, 0.45 * distance, 1e-4 * distance);
    EXPECT_NEAR(camera.zFar, 1.55 * distance, 1e-4 * distance);
  }
  View3DHost host;
};

TEST_F(View3DCamera, ThereIsNoneAtFirst) {
  EXPECT_EQ(scale(), 0.0);
  EXPECT_TRUE(frame().empty());
  host.addBox(kCube);
  for (auto call :
       {&IZYNVue3D::VueXYp, &IZYNVue3D::VueXYm, &IZYNVue3D::VueXZp, &IZYNVue3D::VueXZm,
        &IZYNVue3D::VueYZp, &IZYNVue3D::VueYZm, &IZYNVue3D::VueTournage, &IZYNVue3D::TranslateH,
        &IZYNVue3D::TranslateV, &IZYNVue3D::TranslateP, &IZYNVue3D::Zoom, &IZYNVue3D::RotateA,
        &IZYNVue3D::RotateH, &IZYNVue3D::RotateV}) {
    EXPECT_EQ((host.get()->*call)(0.5), S_OK);
    EXPECT_TRUE(frame().empty());
  }
  EXPECT_EQ(host->UpdateParams(), S_OK);
  EXPECT_EQ(host->LastView(), S_OK);
  EXPECT_TRUE(frame().empty());
}

TEST_F(View3DCamera, AViewWithoutSizeGetsNone) {
  View3DHost empty({0, 0});
  empty.addBox(kCube);
  EXPECT_EQ(empty->initView(0), S_OK);
  EXPECT_EQ(empty->ZoomTotal(0), S_OK);
  _variant_t value;
  empty->XFormView(&value);
  EXPECT_EQ(value.vt, VT_EMPTY);
  double scaled = -1;
  empty->getWindowScale(&scaled);
  EXPECT_EQ(scaled, 0);
}

TEST_F(View3DCamera, TheFirstFitLooksAlongXAtTheSphereAroundTheScene) {
  host.addBox({10, 12, -3, 3, 20, 29});
  host->initView(0.5);
  const double r = std::sqrt(1.0 + 9 + 20.25);
  const DrawnCamera camera = host.camera();
  EXPECT_VEC(camera.eye, (Vec{11 + 2 * r, 0, 24.5}));
  EXPECT_VEC(camera.forward, (Vec{-1, 0, 0}));
  EXPECT_VEC(camera.up, (Vec{0, 0, 1}));
  EXPECT_NEAR(camera.height, 2 * 1.5 * r, 1e-4);
  EXPECT_NEAR(camera.width, 4 * 1.5 * r, 1e-4);
  expectClipRange(camera, 2 * r);
}

TEST_F(View3DCamera, TheFirstFitOfATallWindowSpansItsWidth) {
  View3DHost tall({200, 400});
  tall.addBox(kCube);
  tall->initView(0);
  const DrawnCamera camera = tall.camera();
  EXPECT_NEAR(camera.width, 2 * kHalfDiagonal, 1e-5);
  EXPECT_NEAR(camera.height, 4 * kHalfDiagonal, 1e-5);
}

TEST_F(View3DCamera, ZoomTotalMakesTheFirstCameraAsInitViewDoes) {
  EXPECT_EQ(host->ZoomTotal(0), S_OK);
  EXPECT_TRUE(frame().empty()) << "there is nothing to fit";
  host.addBox(kCube);
  host->ZoomTotal(0.25);
  View3DHost other;
  other.addBox(kCube);
  other->initView(0.25);
  expectSame(host.camera(), other.camera());
}

TEST_F(View3DCamera, CubeSeenFromAbove) {
  startWithCube();
  host->VueXYp(0);
  const DrawnCamera camera = host.camera();
  EXPECT_NEAR(camera.width, 2, kTolerance);
  EXPECT_NEAR(camera.height, 1, kTolerance);
  EXPECT_VEC(camera.eye, (Vec{0, 0, 2 * kHalfDiagonal}));
  EXPECT_NEAR(camera.zNear, 0.7794, 1e-4);
  EXPECT_NEAR(camera.zFar, 2.6847, 1e-4);
  EXPECT_DOUBLE_EQ(scale(), 0.005);
}

TEST_F(View3DCamera, DrawingDepthIsTheLeastDistance) {
  startWithCube();
  host->VueXYp(0);
  const auto before = frame();
  host->put_ProfondeurDessin(10);
  EXPECT_EQ(frame(), before) << "nothing changes before the next fit";
  host->VueXYp(0);
  const DrawnCamera camera = host.camera();
  EXPECT_VEC(camera.eye, (Vec{0, 0, 10}));
  EXPECT_NEAR(camera.zNear, 4.5, 1e-4);
  EXPECT_NEAR(camera.zFar, 15.5, 1e-4);
}

TEST_F(View3DCamera, AxisViewsLookFromTheirSide) {
  const Bounds box = {0, 4, 0, 6, 0, 10};
  const Vec c = box.centre();
  const double s = 0.5;
  const double distance = 2 * std::sqrt(4.0 + 9 + 25) * (1 + s);
  struct {
    HRESULT (STDMETHODCALLTYPE IZYNVue3D::*show)(double);
    Vec side, up;
    double across, along;
  } const views[] = {
      {&IZYNVue3D::VueXYp, {0, 0, 1}, {0, 1, 0}, 4, 6},
      {&IZYNVue3D::VueXYm, {0, 0, -1}, {0, 1, 0}, 4, 6},
      {&IZYNVue3D::VueXZp, {0, 1, 0}, {0, 0, 1}, 4, 10},
      {&IZYNVue3D::VueXZm, {0, -1, 0}, {0, 0, 1}, 4, 10},
      {&IZYNVue3D::VueYZp, {1, 0, 0}, {0, 0, 1}, 6, 10},
      {&IZYNVue3D::VueYZm, {-1, 0, 0}, {0, 0, 1}, 6, 10},
  };
  host.addBox(box);
  host->initView(0);
  for (const auto& view : views) {
    EXPECT_EQ((host.get()->*view.show)(s), S_OK);
    const DrawnCamera camera = host.camera();
    EXPECT_VEC(camera.eye, c + distance * view.side);
    EXPECT_VEC(camera.forward, -1.0 * view.side);
    EXPECT_VEC(camera.up, view.up);
    // The window is twice as wide as high, every box here is narrower than that.
    EXPECT_NEAR(camera.height, view.along * (1 + s), 1e-4);
    EXPECT_NEAR(camera.width, 2 * view.along * (1 + s), 1e-4);
    expectClipRange(camera, distance);
  }
}

TEST_F(View3DCamera, AWideBoxFillsTheWidth) {
  host.addBox({0, 30, 0, 3, 0, 1});
  host->initView(0);
  host->VueXYp(0);
  const DrawnCamera camera = host.camera();
  EXPECT_NEAR(camera.width, 30, 1e-4);
  EXPECT_NEAR(camera.height, 15, 1e-4);
}

TEST_F(View3DCamera, FlatBoxesAreFittedByWhatTheyHave) {
  struct {
    Bounds box;
    double width, height;
  } const cases[] = {
      {{0, 8, 1, 1, 0, 1}, 12, 6},   // width only
      {{0, 0, 0, 8, 0, 1}, 24, 12},  // height only
      {{2, 2, 3, 3, 0, 1}, 0.5, 1},  // neither: the inverse of the aspect
  };
  for (const auto& flat : cases) {
    View3DHost view;
    view.addBox(flat.box);
    view->initView(0);
    view->VueXYp(0.5);
    const DrawnCamera camera = view.camera();
    EXPECT_NEAR(camera.width, flat.width, 1e-5);
    EXPECT_NEAR(camera.height, flat.height, 1e-5);
  }
}

TEST_F(View3DCamera, TurningView) {
  host.addBox({0, 4, 0, 6, 0, 10});
  host->initView(0);
  host->put_ProfondeurDessin(1000);
  host->VueTournage(0.5);
  const double distance = 2 * std::sqrt(4.0 + 9 + 25);
  const DrawnCamera camera = host.camera();
  EXPECT_VEC(camera.eye, (Vec{2, 3 + distance, 5}));
  EXPECT_VEC(camera.forward, (Vec{0, -1, 0}));
  EXPECT_VEC(camera.up, (Vec{1, 0, 0}));
  EXPECT_NEAR(camera.height, 15, 1e-4);
  EXPECT_NEAR(camera.width, 30, 1e-4);
  expectClipRange(camera, distance);
}

TEST_F(View3DCamera, WithoutASceneTheCameraStaysDegenerateUntilThereIsOne) {
  EXPECT_EQ(host->initView(0), S_OK);
  EXPECT_EQ(frame().size(), 16U);
  EXPECT_EQ(scale(), 0);
  EXPECT_EQ(host->VueXYp(0), S_OK);
  host.paint();
  host.addBox(kCube);
  host->VueXYp(0);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0, 2 * kHalfDiagonal}));
}

TEST_F(View3DCamera, FrameHoldsAxesCornerAndPixelSize) {
  host.addBox({0, 4, 0, 6, 0, 10});
  host->initView(0);
  host->VueXYp(0);
  const std::vector<double> f = frame();
  ASSERT_EQ(f.size(), 16U);
  const double expected[] = {-1, 0, 0, 0, 1, 0, 0, 0, -1, 2 + 6, 3 - 3, 5, 12.0 / 400, 0, 0, 0};
  for (size_t i = 0; i < 16; ++i) EXPECT_NEAR(f[i], expected[i], 1e-12) << i;
}

TEST_F(View3DCamera, ZoomDividesTheRectangleAndIsUndone) {
  startWithCube();
  host->VueXYp(0);
  const auto before = frame();
  host->Zoom(2);
  EXPECT_DOUBLE_EQ(scale(), 0.0025);
  host->LastView();
  EXPECT_EQ(frame(), before);
}

TEST_F(View3DCamera, ZoomingFarOutBacksOff) {
  startWithCube();
  host->VueXYp(0);
  host->Zoom(0.01);
  const DrawnCamera camera = host.camera();
  // The rectangle is 200 x 100: a sixth of it is more than the clip range held.
  EXPECT_NEAR(camera.height, 100, 1e-3);
  const double d = 100.0 / 12;
  EXPECT_VEC((1 / d * camera.eye), (Vec{0, 0, 2}));
  EXPECT_NEAR(camera.zNear, 0.9 * d, 1e-3);
  EXPECT_NEAR(camera.zFar, 3.1 * d, 1e-3);
}

TEST_F(View3DCamera, ZoomByNothingIsRecoveredByTheNextFit) {
  startWithCube();
  host->VueXYp(0);
  for (const double coefficient : {0.0, -1.0, 1e308, 1e-308, double(NAN), double(INFINITY)}) {
    EXPECT_EQ(host->Zoom(coefficient), S_OK);
    host.paint();
    EXPECT_EQ(host->VueXYp(0), S_OK);
    EXPECT_NEAR(host.camera().width, 2, kTolerance);
  }
}

TEST_F(View3DCamera, HistoryIsGoneThroughBackwards) {
  startWithCube();
  std::vector<std::vector<double>> earlier;
  for (const double surplus : {0.1, 0.2, 0.3}) {
    earlier.push_back(frame());
    host->VueXYp(surplus);
  }
  for (size_t i = earlier.size(); i-- > 0;) {
    host->LastView();
    EXPECT_EQ(frame(), earlier[i]) << i;
  }
  host->LastView();
  EXPECT_EQ(frame(), earlier[0]);
}

TEST_F(View3DCamera, MovesLeaveNoHistory) {
  startWithCube();
  const auto first = frame();
  host->VueXYp(0);
  host->TranslateH(1);
  host->TranslateV(1);
  host->TranslateP(1);
  host->RotateA(10);
  host->RotateH(10);
  host->RotateV(10);
  host->UpdateParams();
  host->LastView();
  EXPECT_EQ(frame(), first);
}

TEST_F(View3DCamera, EveryFitLeavesHistory) {
  startWithCube();
  const auto first = frame();
  for (auto fit : {&IZYNVue3D::VueXZm, &IZYNVue3D::VueTournage, &IZYNVue3D::initView,
                   &IZYNVue3D::ZoomTotal, &IZYNVue3D::Zoom}) {
    (host.get()->*fit)(0.7);
    host->LastView();
    EXPECT_EQ(frame(), first);
  }
}

TEST_F(View3DCamera, HistorySurvivesAnEmptyScene) {
  startWithCube();
  const auto first = frame();
  host->VueXYp(0);
  host->RemoveAll();
  host->LastView();
  EXPECT_EQ(frame(), first);
}

TEST_F(View3DCamera, AnEarlierViewIsAdaptedToThePresentWindow) {
  startWithCube();
  host->VueXYp(0);  // 2 x 1
  host->Zoom(2);
  host.resize({800, 200});
  host->LastView();
  DrawnCamera camera = host.camera();
  EXPECT_NEAR(camera.height, 1, kTolerance);
  EXPECT_NEAR(camera.width, 4, kTolerance * 4);
  host->Zoom(2);
  host.resize({400, 400});
  host->LastView();
  camera = host.camera();
  EXPECT_NEAR(camera.width, 4, kTolerance * 4) << "narrower: the width stays";
  EXPECT_NEAR(camera.height, 4, kTolerance * 4);
}

TEST_F(View3DCamera, ZoomTotalKeepsTheDirectionAndTheOldDistance) {
  startWithCube();
  host->VueXYp(0);
  host->RotateH(30);
  const DrawnCamera before = host.camera();
  host.addBox({-4, 4, -2, 2, -1, 1});
  host->ZoomTotal(0.5);
  const double r = std::sqrt(16.0 + 4 + 1);
  const DrawnCamera after = host.camera();
  EXPECT_VEC(after.forward, before.forward);
  EXPECT_NEAR(after.height, 2 * 1.5 * r, 1e-4);
  EXPECT_NEAR(after.width, 4 * 1.5 * r, 1e-4);
  const double oldDepth = 2 * kHalfDiagonal;
  EXPECT_VEC(after.eye, -oldDepth * before.forward);
  expectClipRange(after, oldDepth);
}

TEST_F(View3DCamera, TranslationsMoveEyeAndTarget) {
  startWithCube();
  host->VueXYp(0);
  const double depth = 2 * kHalfDiagonal;
  host->TranslateP(1);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0, depth - 1}));
  host->TranslateP(-1);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0, depth}));
  expectClipRange(host.camera(), depth);
  // up x u points to the left of the screen, and h moves against it.
  host->TranslateH(1);
  EXPECT_VEC(host.camera().eye, (Vec{1, 0, depth + 2}));
  expectClipRange(host.camera(), depth + 2);
  host->TranslateH(-1);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0, depth + 4}));
  host->TranslateV(0.5);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0.5, depth + 5}));
  expectClipRange(host.camera(), depth + 5);
  EXPECT_DOUBLE_EQ(scale(), 0.005);
}

TEST_F(View3DCamera, RollTurnsUpAboutTheLineOfSight) {
  startWithCube();
  host->VueXYp(0);
  const DrawnCamera before = host.camera();
  host->RotateA(90);
  const DrawnCamera after = host.camera();
  EXPECT_VEC(after.eye, before.eye);
  EXPECT_VEC(after.up, cross(before.forward, before.up));  // about target - eye
}

TEST_F(View3DCamera, OrbitTurnsTheEyeAboutUp) {
  startWithCube();
  host->VueXYp(0);
  const double depth = 2 * kHalfDiagonal;
  host->RotateH(90);
  EXPECT_VEC(host.camera().eye, (Vec{depth, 0, 0}));
  EXPECT_VEC(host.camera().up, (Vec{0, 1, 0}));
  host->RotateH(270);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0, depth}));
  host->RotateH(360);
  EXPECT_VEC(host.camera().eye, (Vec{0, 0, depth}));
}

TEST_F(View3DCamera, TiltTurnsEyeAndUpAboutTheHorizontal) {
  startWithCube();
  host->VueXYp(0);
  const double depth = 2 * kHalfDiagonal;
  // (target - eye) x up = (0, 0, -1) x (0, 1, 0) = (1, 0, 0), about which the line of sight
  // (0, 0, -1) turns to (0, 1, 0) and up (0, 1, 0) to (0, 0, 1).
  host->RotateV(90);
  EXPECT_VEC(host.camera().eye, (Vec{0, -depth, 0}));
  EXPECT_VEC(host.camera().up, (Vec{0, 0, 1}));
}

TEST_F(View3DCamera, SceneBoxFollowsAddOnly) {
  const auto cube = host.addBox(kCube);
  host->initView(0);
  host->VueXYp(0);
  EXPECT_NEAR(scale() * 200, 1, 1e-9);
  const auto large = host.addBox({-5, 5, -5, 5, -5, 5});
  host->VueXYp(0);
  EXPECT_NEAR(scale() * 200, 10, 1e-9);
  host->Remove(large->dispatch());
  host->VueXYp(0);
  EXPECT_NEAR(scale() * 200, 10, 1e-9) << "Remove leaves the box";
  host->UpdateParams();
  EXPECT_NEAR(scale() * 200, 10, 1e-9) << "the rectangle stays";
  host->VueXYp(0);
  EXPECT_NEAR(scale() * 200, 1, 1e-9);
  host->RemoveAll();
  host->VueXYp(0);
  EXPECT_NEAR(scale() * 200, 1, 1e-9) << "RemoveAll leaves the box";
}

TEST_F(View3DCamera, UpdateParamsRefitsTheDepth) {
  startWithCube();
  host->VueXYp(0);
  const DrawnCamera before = host.camera();
  host.addBox({-1, 1, -2, 4, -10, 20});
  host->UpdateParams();
  // Scene box -1..1, -2..4, -10..20; the target is still the origin.
  const double r = std::sqrt(1.0 + 9 + 225);
  const double distance = 2 * (r + std::sqrt(1.0 + 25));
  const DrawnCamera after = host.camera();
  EXPECT_NEAR(after.eye.z, distance, 1e-3);
  EXPECT_NEAR(after.width, before.width, kTolerance);
  expectClipRange(after, distance);
}

TEST_F(View3DCamera, ViewBoxReplacesTheScene) {
  startWithCube();
  host->VueXYp(0);
  host.camera();
  const auto box = makeForeign<ForeignBox>(-3, 5, -4, 4, -5, 5);
  EXPECT_EQ(host->setViewBox(box->dispatch()), S_OK);
  const double distance = 2 * (std::sqrt(16.0 + 16 + 25) + 1);
  EXPECT_NEAR(host.camera().eye.z, distance, 1e-4);
  EXPECT_DOUBLE_EQ(scale(), 0.005);
  host->put_ProfondeurDessin(100);
  host->setViewBox(box->dispatch());
  EXPECT_NEAR(host.camera().eye.z, 100, 1e-3);
  host->VueXYp(0);
  EXPECT_NEAR(host.camera().height, 8, 1e-4) << "later fits use it";
}

TEST_F(View3DCamera, LaterChangesOfTheViewBoxCount) {
  startWithCube();
  host.camera();
  const auto box = makeForeign<ForeignBox>(-1, 1, -4, 4, -5, 5);
  host->setViewBox(box->dispatch());
  EXPECT_EQ(referencesOf(box.Get()), 2U);
  box->put_YMax(12);
  host->VueXYp(0);
  EXPECT_NEAR(host.camera().height, 16, 1e-4);
  box->put_ZMax(95);
  host->VueTournage(0);
  EXPECT_NEAR(host.camera().width, 200, 1e-3);
  const auto before = frame();
  box->onGet = [] { return E_ACCESSDENIED; };
  EXPECT_EQ(host->VueXYp(0), E_ACCESSDENIED);
  EXPECT_EQ(frame(), before) << "a box that cannot be read changes nothing";
}

TEST_F(View3DCamera, TheViewBoxCountsUntilTheSceneIsMeasured) {
  startWithCube();
  const auto box = makeForeign<ForeignBox>(-8, 8, -8, 8, -8, 8);
  const auto measure = [&](auto call) {
    host->setViewBox(box->dispatch());
    EXPECT_EQ(call(), S_OK);
    EXPECT_EQ(referencesOf(box.Get()), 1U);
    host->VueXYp(0);
    EXPECT_NEAR(host.camera().height, 1, 1e-4);
  };
  measure([&] { return host->initView(0); });
  measure([&] { return host->ZoomTotal(0); });
  measure([&] { return host->UpdateParams(); });
  measure([&] { return host->Add(nullptr, 0); });
}

TEST_F(View3DCamera, FitsToTheWholeMeasureTheSceneAnew) {
  host.addBox(kCube);
  const auto large = host.addBox({-5, 5, -5, 5, -5, 5});
  host->initView(0);
  host->Remove(large->dispatch());
  host->ZoomTotal(0);
  EXPECT_NEAR(host.camera().height, 2 * kHalfDiagonal, 1e-4);
  host->Add(large->dispatch(), 0);
  host->Remove(large->dispatch());
  host->initView(0);
  EXPECT_NEAR(host.camera().height, 2 * kHalfDiagonal, 1e-4);
}

TEST_F(View3DCamera, AViewBoxMayBeReplacedWhileItIsRead) {
  startWithCube();
  const auto box = makeForeign<ForeignBox>(-8, 8, -8, 8, -8, 8);
  host->setViewBox(box->dispatch());
  box->onGet = [&] { return host->Add(nullptr, 0); };
  host->VueXYp(0);
  EXPECT_NEAR(host.camera().height, 16, 1e-4);
  host->VueXYp(0);
  EXPECT_NEAR(host.camera().height, 1, 1e-4);
  EXPECT_EQ(referencesOf(box.Get()), 1U);
}

TEST_F(View3DCamera, WhatIsNoBoxIsIgnored) {
  startWithCube();
  const auto before = frame();
  const auto object = makeForeign<ForeignObject>();
  EXPECT_EQ(host->setViewBox(object->dispatch()), S_OK);
  EXPECT_EQ(host->setViewBox(nullptr), S_OK);
  EXPECT_EQ(frame(), before);
  EXPECT_EQ(referencesOf(object.Get()), 1U);
}

TEST_F(View3DCamera, ResizingNeverStretches) {
  startWithCube();
  host->VueXYp(0);
  for (const SIZE size :
       {SIZE{800, 200}, SIZE{100, 300}, SIZE{333, 777}, SIZE{1, 1}, SIZE{401, 199}}) {
    host.resize(size);
    const DrawnCamera camera = host.camera();
    ASSERT_EQ(camera.pixelWidth, size.cx);
    ASSERT_EQ(camera.pixelHeight, size.cy);
    EXPECT_NEAR(camera.width / size.cx, camera.height / size.cy, 1e-5 * camera.width / size.cx);
    EXPECT_NEAR(scale(), camera.width / size.cx, 1e-5 * scale());
  }
}

TEST_F(View3DCamera, AWindowMadeAgainKeepsTheHeightOrTheWidth) {
  startWithCube();
  host->VueXYp(0);  // 2 by 1
  const auto reopen = [&](SIZE size) {
    host.deactivate();
    host.resize(size);
    host.activate();
    return host.camera();
  };
  const DrawnCamera tall = reopen({200, 200});
  EXPECT_EQ(tall.pixelWidth, 200);
  EXPECT_NEAR(tall.width, 2, kTolerance);
  EXPECT_NEAR(tall.height, 2, kTolerance);
  const DrawnCamera wide = reopen({800, 200});
  EXPECT_EQ(wide.pixelWidth, 800);
  EXPECT_NEAR(wide.width, 8, kTolerance);
  EXPECT_NEAR(wide.height, 2, kTolerance);
  EXPECT_NEAR(scale(), 0.01, 1e-9);
}

TEST_F(View3DCamera, AWindowWithoutSizeIsOvercome) {
  startWithCube();
  host->VueXYp(0);
  host.resize({0, 0});
  host->RotateH(10);
  host->initView(0);
  host->ZoomTotal(0);
  host.paint();
  host.resize({400, 200});
  host->VueXYp(0);
  EXPECT_NEAR(host.camera().width, 2, kTolerance);
}

}  // namespace
}  // namespace zyn::test
