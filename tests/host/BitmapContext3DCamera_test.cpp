// Where the 3D bitmap context looks from, how it fits the scene into the picture, and what it does
// with the box that a host gives it.
#include <algorithm>
#include <cmath>

#include "support/ForeignBounds_win.h"
#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

const ViewAxes kDefaultView = {{0, 0, -1}, {0, 1, 0}};

struct AxisView {
  const char* name;
  ViewAxes axes;
};
const AxisView kAxisViews[] = {
    {"from +Z", kDefaultView},
    {"from -Z", {{0, 0, 1}, {0, 1, 0}}},
    {"from +Y", {{0, -1, 0}, {0, 0, 1}}},
    {"from -Y", {{0, 1, 0}, {0, 0, 1}}},
    {"from +X", {{-1, 0, 0}, {0, 0, 1}}},
    {"from -X", {{1, 0, 0}, {0, 0, 1}}},
    {"turning", {{0, -1, 0}, {1, 0, 0}}},
};

double extentAlong(const Bounds& b, const Vec& axis) {
  return std::abs(axis.x) * (b.xMax - b.xMin) + std::abs(axis.y) * (b.yMax - b.yMin) +
         std::abs(axis.z) * (b.zMax - b.zMin);
}

/// The rectangle that a fit shows, in model units: the box with the margin, widened to the aspect
/// of the picture.
struct Fit {
  double width;
  double height;
};
Fit fitOf(const Bounds& box, const ViewAxes& axes, double surplus, double aspect) {
  double w = (1 + surplus) * extentAlong(box, axes.right());
  double h = (1 + surplus) * extentAlong(box, axes.up);
  if (w != 0 && h != 0) {
    if (w / h > aspect) {
      h = w / aspect;
    } else {
      w = aspect * h;
    }
    return {w, h};
  }
  if (w != 0) return {w, w / aspect};
  if (h != 0) return {h * aspect, h};
  return {1 / aspect, 1};
}

struct PixelPoint {
  double x;
  double y;
};

class CameraTest : public HostTest {
 protected:
  static constexpr int kWidth = 240;
  static constexpr int kHeight = 160;

  /// Where a point lies in the picture, by the fit.
  PixelPoint project(const Vec& p, const Bounds& box, const ViewAxes& axes, double surplus,
                     int width = kWidth, int height = kHeight) const {
    const Fit fit = fitOf(box, axes, surplus, static_cast<double>(width) / height);
    const Vec offset = p - box.centre();
    return {width / 2.0 + dot(offset, axes.right()) * width / fit.width,
            height / 2.0 - dot(offset, axes.up) * height / fit.height};
  }

  OffscreenScene scene_{kWidth, kHeight};
};

// --- which side is which -------------------------------------------------------------------------

/// Cubes at the origin (white) and at the far ends of the three axes: red along X, green along Y,
/// blue along Z.
const Bounds kSceneBox = {0, 10, 0, 7, 0, 5};
const struct Marker {
  Rgb colour;
  Bounds cube;
} kMarkers[] = {
    {kWhite, {0, 1, 0, 1, 0, 1}},
    {kRed, {9, 10, 0, 1, 0, 1}},
    {kGreen, {0, 1, 6, 7, 0, 1}},
    {kBlue, {0, 1, 0, 1, 4, 5}},
};

class AxisViewTest : public CameraTest, public testing::WithParamInterface<AxisView> {
 protected:
  AxisViewTest() {
    for (const Marker& marker : kMarkers) scene_.addAll(makeCuboid(marker.cube, marker.colour));
  }
  /// Whether another marker lies in front of this one.
  static bool isHidden(const Marker& marker, const ViewAxes& axes) {
    const Vec centre = marker.cube.centre();
    return std::any_of(std::begin(kMarkers), std::end(kMarkers), [&](const Marker& other) {
      const Vec between = other.cube.centre() - centre;
      return std::abs(dot(between, axes.right())) < 0.5 && std::abs(dot(between, axes.up)) < 0.5 &&
             dot(between, axes.forward) < -0.5;
    });
  }
};

TEST_P(AxisViewTest, ShowsEachMarkerWhereTheFitPutsIt) {
  const ViewAxes& axes = GetParam().axes;
  scene_.look(axes, 0.25);
  const Image image = scene_.render();
  for (const Marker& marker : kMarkers) {
    const PixelBox seen = boxOf(image, marker.colour);
    if (isHidden(marker, axes)) {
      EXPECT_TRUE(seen.empty()) << marker.colour;
      continue;
    }
    ASSERT_FALSE(seen.empty()) << marker.colour;
    const PixelPoint centre = project(marker.cube.centre(), kSceneBox, axes, 0.25);
    EXPECT_NEAR(seen.centreX(), centre.x, 1) << marker.colour;
    EXPECT_NEAR(seen.centreY(), centre.y, 1) << marker.colour;
    const double pixels =
        kWidth / fitOf(kSceneBox, axes, 0.25, static_cast<double>(kWidth) / kHeight).width;
    EXPECT_NEAR(seen.right - seen.left + 1, pixels, 1.01) << marker.colour;
    EXPECT_NEAR(seen.bottom - seen.top + 1, pixels, 1.01) << marker.colour;
  }
}

INSTANTIATE_TEST_SUITE_P(All, AxisViewTest, testing::ValuesIn(kAxisViews),
                         [](const auto& view) { return "View" + std::to_string(view.index); });

// The sides in plain words, independent of any formula.
TEST_F(CameraTest, PicturesAreUprightAndNotMirrored) {
  for (const Marker& marker : kMarkers) scene_.addAll(makeCuboid(marker.cube, marker.colour));
  const auto look = [&](const ViewAxes& axes) {
    scene_.look(axes, 0);
    return scene_.render();
  };
  const int right = kWidth / 2 + 40;
  const int left = kWidth / 2 - 40;
  const int middle = kHeight / 2;

  Image image = scene_.render();  // no view given: from +Z, +X to the right, +Y up
  EXPECT_GT(boxOf(image, kRed).left, right);
  EXPECT_GT(boxOf(image, kRed).top, middle);
  EXPECT_LT(boxOf(image, kGreen).right, left);
  EXPECT_LT(boxOf(image, kGreen).bottom, middle);
  EXPECT_LT(boxOf(image, kBlue).right, left);  // in front of white
  EXPECT_TRUE(boxOf(image, kWhite).empty());

  image = look(kAxisViews[1].axes);  // from behind, +X goes left
  EXPECT_LT(boxOf(image, kRed).right, left);
  EXPECT_LT(boxOf(image, kGreen).bottom, middle);
  EXPECT_FALSE(boxOf(image, kWhite).empty());

  image = look(kAxisViews[3].axes);  // from -Y, +X to the right, +Z up
  EXPECT_GT(boxOf(image, kRed).left, right);
  EXPECT_LT(boxOf(image, kBlue).bottom, middle);

  image = look(kAxisViews[4].axes);  // from +X, +Y to the right, +Z up
  EXPECT_GT(boxOf(image, kGreen).left, right);
  EXPECT_LT(boxOf(image, kBlue).bottom, middle);
}

// --- the fit -------------------------------------------------------------------------------------

struct FitCase {
  int width;
  int height;
  double surplus;
  Bounds rectangle;
};

class FitTest : public CameraTest, public testing::WithParamInterface<FitCase> {};

TEST_P(FitTest, RectangleTakesItsPlaceInThePicture) {
  const auto& [width, height, surplus, r] = GetParam();
  scene_.resize(width, height);
  scene_.addAll(makeRectangle(r.xMin, r.xMax, r.yMin, r.yMax, r.zMin, kRed));
  scene_.look(kDefaultView, surplus);
  const PixelBox seen = boxOf(scene_.render(), kRed);
  const PixelPoint topLeft =
      project({r.xMin, r.yMax, r.zMin}, r, kDefaultView, surplus, width, height);
  const PixelPoint bottomRight =
      project({r.xMax, r.yMin, r.zMin}, r, kDefaultView, surplus, width, height);
  EXPECT_NEAR(seen.left, topLeft.x, 1);
  EXPECT_NEAR(seen.top, topLeft.y, 1);
  EXPECT_NEAR(seen.right + 1, bottomRight.x, 1);
  EXPECT_NEAR(seen.bottom + 1, bottomRight.y, 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, FitTest,
    testing::Values(FitCase{200, 100, 0, {-1, 1, -1, 1, 0, 0}},    // height decides
                    FitCase{200, 100, 0, {0, 8, 3, 5, 0, 0}},      // width decides
                    FitCase{100, 200, 0, {-1, 1, -1, 1, 0, 0}},    // tall picture
                    FitCase{150, 150, 1, {5, 6, -3, -2, 40, 40}},  // margin as large as the scene
                    FitCase{150, 90, 0.1, {1e6, 1e6 + 7, 0, 3, -2e5, -2e5}},  // far from the origin
                    FitCase{150, 90, 0.5, {0, 1e-4, 0, 2e-4, 0, 0}}));        // tiny

TEST_F(CameraTest, SurplusAloneChangesTheMargin) {
  scene_.addAll(makeRectangle(0, 2, 0, 2, 0, kRed));
  EXPECT_EQ(scene_->ViewParams(nullptr, 0, nullptr), S_OK);
  EXPECT_EQ(boxOf(scene_.render(), kRed).top, 0);
  EXPECT_EQ(scene_->ViewParams(nullptr, 1, nullptr), S_OK);
  const PixelBox seen = boxOf(scene_.render(), kRed);
  EXPECT_NEAR(seen.top, kHeight / 4, 1);
  EXPECT_NEAR(seen.bottom, kHeight * 3 / 4 - 1, 1);
}

TEST_F(CameraTest, CameraFollowsTheSceneAtEachPicture) {
  scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  EXPECT_EQ(boxOf(scene_.render(), kRed).top, 0);
  scene_.addAll(makeRectangle(0, 1, 3, 4, 0, kGreen));
  const Image image = scene_.render();
  EXPECT_NEAR(boxOf(image, kRed).top, kHeight * 3 / 4, 1);
  EXPECT_EQ(boxOf(image, kGreen).top, 0);
}

TEST_F(CameraTest, CameraFollowsThePicturesSize) {
  scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  scene_.render();
  scene_.resize(50, 100);
  const Image image = scene_.render();
  ASSERT_EQ(image.width(), 50);
  const PixelBox seen = boxOf(image, kRed);
  EXPECT_EQ(seen.left, 0);
  EXPECT_EQ(seen.right, 49);
  EXPECT_NEAR(seen.top, 25, 1);
}

TEST_F(CameraTest, FlatAndPointSizedScenesDoNoHarm) {
  auto point = makeFlatTriangle({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, kRed);
  scene_.add(point.Get());
  EXPECT_EQ(scene_.render().width(), kWidth);
  point->setPoint(1, 9, 2, 3);
  EXPECT_EQ(scene_.render().width(), kWidth);
}

// --- seen from inside the pass -------------------------------------------------------------------

/// An object that notes the matrices and the state it is drawn with.
class PassProbe {
 public:
  explicit PassProbe(const Bounds& bounds) : bounds_(bounds) {
    object->onGetBox3D = [this](IDispatch** box) {
      return handOut(makeForeign<ForeignBox>(bounds_.xMin, bounds_.xMax, bounds_.yMin, bounds_.yMax,
                                             bounds_.zMin, bounds_.zMax),
                     box);
    };
    object->onDraw3D = [this](int) {
      glGetDoublev(GL_PROJECTION_MATRIX, projection);
      glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
      glGetIntegerv(GL_VIEWPORT, viewport);
      depthTest = glIsEnabled(GL_DEPTH_TEST);
      culling = glIsEnabled(GL_CULL_FACE);
      glGetIntegerv(GL_SHADE_MODEL, &shading);
      glGetIntegerv(GL_DEPTH_FUNC, &depthFunction);
      lineSmooth = glIsEnabled(GL_LINE_SMOOTH);
      pointSmooth = glIsEnabled(GL_POINT_SMOOTH);
      return S_OK;
    };
  }
  IDispatch* dispatch() const { return object->dispatch(); }

  /// Row of the model-view rotation: a screen axis in model coordinates.
  Vec axis(int row) const { return {modelView[row], modelView[row + 4], modelView[row + 8]}; }
  Vec toEye(const Vec& p) const {
    return {dot(axis(0), p) + modelView[12], dot(axis(1), p) + modelView[13],
            dot(axis(2), p) + modelView[14]};
  }
  /// Half of what the projection shows, in model units.
  double halfWidth() const { return 1 / projection[0]; }
  double halfHeight() const { return 1 / projection[5]; }
  double zNear() const { return (projection[14] + 1) / projection[10]; }
  double zFar() const { return (projection[14] - 1) / projection[10]; }

  ComPtr<ForeignObject> object = makeForeign<ForeignObject>();
  GLdouble projection[16] = {};
  GLdouble modelView[16] = {};
  GLint viewport[4] = {};
  bool depthTest = false;
  bool culling = false;
  GLint shading = 0;
  GLint depthFunction = 0;
  bool lineSmooth = false;
  bool pointSmooth = false;

 private:
  Bounds bounds_;
};

void expectVec(const Vec& actual, const Vec& expected, double tolerance) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

TEST_F(CameraTest, PassIsSetUpAsStated) {
  PassProbe probe(kSceneBox);
  scene_.add(probe.dispatch());
  scene_.render();
  EXPECT_EQ(probe.viewport[2], kWidth);
  EXPECT_EQ(probe.viewport[3], kHeight);
  EXPECT_TRUE(probe.depthTest);
  EXPECT_TRUE(probe.culling);
  EXPECT_EQ(probe.shading, GL_SMOOTH);
  EXPECT_EQ(probe.depthFunction, GL_LESS);
  EXPECT_FALSE(probe.lineSmooth);
  EXPECT_FALSE(probe.pointSmooth);
}

TEST_F(CameraTest, SmoothingIsTakenWhenTheSurfaceIsCreated) {
  PassProbe probe(kSceneBox);
  scene_.add(probe.dispatch());
  scene_->put_LineAntialiasing(VARIANT_TRUE);
  scene_->put_PointAntialiasing(VARIANT_TRUE);
  scene_.render();
  EXPECT_FALSE(probe.lineSmooth);
  scene_.resize(kWidth, kHeight);
  scene_.render();
  EXPECT_TRUE(probe.lineSmooth);
  EXPECT_TRUE(probe.pointSmooth);
  scene_->put_LineAntialiasing(1);
  scene_.resize(kWidth, kHeight);
  scene_.render();
  EXPECT_FALSE(probe.lineSmooth);
  EXPECT_TRUE(probe.pointSmooth);
}

TEST_F(CameraTest, DepthRangeFollowsTheRule) {
  const Bounds cube = {-0.5, 0.5, -0.5, 0.5, -0.5, 0.5};
  PassProbe probe(cube);
  scene_.add(probe.dispatch());
  for (double surplus : {0.0, 0.5}) {
    EXPECT_EQ(scene_->ViewParams(nullptr, surplus, nullptr), S_OK);
    scene_.render();
    const double distance = 2 * std::sqrt(0.75) * (1 + surplus);
    expectVec(probe.toEye({0, 0, 0}), {0, 0, -distance}, 1e-5);
    EXPECT_NEAR(probe.zNear(), 0.45 * distance, 1e-5);
    EXPECT_NEAR(probe.zFar(), 1.55 * distance, 1e-5);
  }
}

TEST_F(CameraTest, ObliqueViewShowsTheWholeBox) {
  PassProbe probe(kSceneBox);
  scene_.add(probe.dispatch());
  const Vec forward = normalised({-1, -2, -1.5});
  const Vec right = normalised(cross(forward, {0, 0, 1}));
  const ViewAxes axes = {forward, cross(right, forward)};
  scene_.look(axes, 0);
  scene_.render();
  expectVec(probe.axis(0), right, 1e-5);
  expectVec(probe.axis(1), axes.up, 1e-5);
  expectVec(probe.axis(2), -1.0 * forward, 1e-5);
  const Vec centre = probe.toEye(kSceneBox.centre());
  EXPECT_NEAR(centre.x, 0, 1e-4);
  EXPECT_NEAR(centre.y, 0, 1e-4);
  EXPECT_NEAR(probe.halfWidth() / probe.halfHeight(), static_cast<double>(kWidth) / kHeight, 1e-4);
  for (double x : {kSceneBox.xMin, kSceneBox.xMax}) {
    for (double y : {kSceneBox.yMin, kSceneBox.yMax}) {
      for (double z : {kSceneBox.zMin, kSceneBox.zMax}) {
        const Vec eye = probe.toEye({x, y, z});
        EXPECT_LE(std::abs(eye.x), probe.halfWidth() * 1.0001);
        EXPECT_LE(std::abs(eye.y), probe.halfHeight() * 1.0001);
        EXPECT_GE(-eye.z, probe.zNear());
        EXPECT_LE(-eye.z, probe.zFar());
      }
    }
  }
}

TEST_F(CameraTest, OnlyTheAxesOfTheFrameCount) {
  PassProbe probe(kSceneBox);
  scene_.add(probe.dispatch());
  std::vector<double> frame = frameOf(kAxisViews[4].axes);
  for (size_t i = 9; i < 16; ++i) frame[i] = 1000.0 * static_cast<double>(i);
  _variant_t value = doubleArray(frame);
  EXPECT_EQ(scene_->ViewParams(nullptr, 0, &value), S_OK);
  scene_.render();
  expectVec(probe.axis(2), {1, 0, 0}, 1e-6);
  const Vec centre = probe.toEye(kSceneBox.centre());
  EXPECT_NEAR(centre.x, 0, 1e-4);
  EXPECT_NEAR(centre.y, 0, 1e-4);
  EXPECT_NEAR(2 * probe.halfHeight(), 5, 1e-4);
}

// --- the frame as a VARIANT ----------------------------------------------------------------------

class FrameTest : public CameraTest {
 protected:
  FrameTest() { scene_.add(probe_.dispatch()); }
  bool looksAlongFrame() {
    scene_.render();
    const Vec back = probe_.axis(2);
    if (std::abs(back.x - 1) < 1e-6) return true;
    expectVec(back, {0, 0, 1}, 1e-6);  // the view without a frame
    return false;
  }
  bool looksAlongFrameAfter(VARIANT* frame) {
    EXPECT_EQ(scene_->ViewParams(nullptr, 0, frame), S_OK);
    return looksAlongFrame();
  }
  PassProbe probe_{kSceneBox};
  const std::vector<double> fromPlusX_ = frameOf(kAxisViews[4].axes);
  _variant_t frame_ = doubleArray(fromPlusX_);
};

TEST_F(FrameTest, EveryNumericFormIsRead) {
  std::vector<_variant_t> items;
  for (double value : fromPlusX_) items.emplace_back(static_cast<long>(value));
  _variant_t variants = variantArray(items);
  _variant_t forms[] = {frame_, variants, arrayReference(frame_), variantReference(&frame_),
                        variantReference(&variants)};
  for (_variant_t& form : forms) {
    EXPECT_FALSE(looksAlongFrameAfter(nullptr));
    EXPECT_TRUE(looksAlongFrameAfter(&form)) << V_VT(&form);
  }
}

TEST_F(FrameTest, StaysUntilReplaced) {
  EXPECT_TRUE(looksAlongFrameAfter(&frame_));
  EXPECT_TRUE(looksAlongFrame());
  scene_.resize(64, 64);
  EXPECT_TRUE(looksAlongFrame());
}

TEST_F(FrameTest, AnyOtherCountRemovesIt) {
  for (size_t count : {0u, 1u, 9u, 15u, 17u, 32u}) {
    EXPECT_TRUE(looksAlongFrameAfter(&frame_));
    std::vector<double> values(count, 0.5);
    _variant_t other = doubleArray(values);
    EXPECT_FALSE(looksAlongFrameAfter(&other)) << count;
  }
}

TEST_F(FrameTest, NullOrUnreadableRemovesIt) {
  EXPECT_TRUE(looksAlongFrameAfter(&frame_));
  EXPECT_FALSE(looksAlongFrameAfter(nullptr));
  std::vector<_variant_t> withText(16, _variant_t(1L));
  withText[15] = L"1";
  _variant_t others[] = {_variant_t(),         _variant_t(16L),
                         _variant_t(L"frame"), variantArray(withText),
                         doubleTable(4, 4),    numberArray(VT_I4, fromPlusX_),
                         nullArray(VT_R8),     variantReference(nullptr)};
  for (_variant_t& other : others) {
    EXPECT_TRUE(looksAlongFrameAfter(&frame_));
    EXPECT_FALSE(looksAlongFrameAfter(&other)) << V_VT(&other);
  }
}

TEST_F(FrameTest, DegenerateFramesDoNoHarm) {
  for (double value : {0.0, 1.0, 1e308, std::nan(""), HUGE_VAL}) {
    _variant_t frame = doubleArray(std::vector<double>(16, value));
    EXPECT_EQ(scene_->ViewParams(nullptr, 0, &frame), S_OK);
    EXPECT_EQ(scene_.render().width(), kWidth) << value;
  }
}

TEST_F(CameraTest, OddSurplusesDoNoHarm) {
  scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  for (double surplus : {-1.0, -5.0, 1e300, -0.5, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(scene_->ViewParams(nullptr, surplus, nullptr), S_OK);
    EXPECT_EQ(scene_.render().width(), kWidth) << surplus;
  }
  scene_->ViewParams(nullptr, 0, nullptr);
  EXPECT_EQ(boxOf(scene_.render(), kRed).top, 0);
}

// --- the host's box ------------------------------------------------------------------------------

class ViewBoxTest : public CameraTest {
 protected:
  ViewBoxTest() { scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed)); }
  static ComPtr<ForeignBox> makeBox(double top) {
    return makeForeign<ForeignBox>(0.0, 1.0, 0.0, top, 0.0, 0.0);
  }
  void put(IDispatch* box) { EXPECT_EQ(scene_->ViewParams(box, 0, nullptr), S_OK); }
  int topOfRed() { return boxOf(scene_.render(), kRed).top; }
};

TEST_F(ViewBoxTest, ReplacesTheBoxOfTheScene) {
  EXPECT_EQ(topOfRed(), 0);
  put(makeBox(4).Get());
  EXPECT_NEAR(topOfRed(), kHeight * 3 / 4, 1);
  put(nullptr);
  EXPECT_EQ(topOfRed(), 0);
}

TEST_F(ViewBoxTest, MayBeABoxOfTheGeometryLibrary) {
  auto box = createObject<IZYNBox3D>(kBox3DProgId);
  box->put_XMax(1);
  box->put_YMax(2);
  put(box.Get());
  EXPECT_NEAR(topOfRed(), kHeight / 2, 1);
  box->put_YMax(4);
  EXPECT_NEAR(topOfRed(), kHeight * 3 / 4, 1) << "the box is asked at each picture";
  EXPECT_EQ(referencesOf(box.Get()), 2u);
}

TEST_F(ViewBoxTest, IsHeldWithOneReference) {
  auto box = makeBox(4);
  put(box.Get());
  EXPECT_EQ(referencesOf(box.Get()), 2u);
  topOfRed();
  EXPECT_EQ(referencesOf(box.Get()), 2u);
  put(box.Get());
  EXPECT_EQ(referencesOf(box.Get()), 2u) << "the same box again";
}

TEST_F(ViewBoxTest, IsGivenBackWhenReplacedOrRemoved) {
  auto first = makeBox(4);
  auto second = makeBox(2);
  put(first.Get());
  put(second.Get());
  EXPECT_EQ(referencesOf(first.Get()), 1u);
  EXPECT_EQ(referencesOf(second.Get()), 2u);
  put(nullptr);
  EXPECT_EQ(referencesOf(second.Get()), 1u);
  put(nullptr);
  EXPECT_EQ(referencesOf(second.Get()), 1u);
}

TEST_F(ViewBoxTest, MayBeReleasedByTheHostAtAnyTime) {
  auto box = makeBox(4);
  put(box.Get());
  box.Reset();
  EXPECT_EQ(ForeignBox::live(), 1);
  EXPECT_NEAR(topOfRed(), kHeight * 3 / 4, 1);
  put(makeBox(2).Get());
  EXPECT_EQ(ForeignBox::live(), 1);
  EXPECT_NEAR(topOfRed(), kHeight / 2, 1);
  put(nullptr);
  EXPECT_EQ(ForeignBox::live(), 0);
}

TEST_F(ViewBoxTest, IsGivenBackWithTheContext) {
  put(makeBox(4).Get());
  topOfRed();
  scene_.take().Reset();
  EXPECT_EQ(ForeignBox::live(), 0);
}

TEST_F(ViewBoxTest, ObjectsThatAreNoBoxAreNotKept) {
  auto notABox = makeForeign<ForeignObject>();
  put(notABox->dispatch());
  EXPECT_EQ(referencesOf(notABox.Get()), 1u);
  EXPECT_EQ(topOfRed(), 0);
}

TEST_F(ViewBoxTest, FailingBoxDoesNoHarm) {
  auto box = makeBox(4);
  put(box.Get());
  box->onGet = [] { return E_ACCESSDENIED; };
  const auto path = scene_.folder().file(L"failing.bmp");
  const HRESULT result = scene_->CreateBitmap(bstr(path));
  EXPECT_TRUE(result == S_OK || result == E_ACCESSDENIED) << result;
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  put(nullptr);
  EXPECT_EQ(topOfRed(), 0);
  EXPECT_EQ(referencesOf(box.Get()), 1u);
}

TEST_F(ViewBoxTest, EveryDrawnObjectWithoutABoxIsSkippedInTheFit) {
  auto empty = makeForeign<ForeignObject>();
  scene_.add(empty->dispatch());
  EXPECT_EQ(topOfRed(), 0);
}

TEST_F(ViewBoxTest, BoxesOfDrawnObjectsAreGivenBack) {
  PassProbe probe({0, 1, 0, 4, 0, 0});
  scene_.add(probe.dispatch());
  EXPECT_NEAR(topOfRed(), kHeight * 3 / 4, 1);
  EXPECT_EQ(ForeignBox::live(), 0);
}

}  // namespace
}  // namespace zyn::test
