#include "view3d/BitmapCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/VectorMath.h"
#include "support/CameraChecks.h"
#include "support/GeometryChecks.h"

namespace zyn {
namespace {

using Frame = CParamsVue3D::Frame;

constexpr Box3 kBox{-1, 3, -1, 5, -3, 9};
constexpr ClientSize kPixels{640, 480};

Frame frameOf(AxisView view) {
  CParamsVue3D camera;
  camera.fitAxis(view, Box3{0, 1, 0, 1, 0, 1}, {100, 300}, 0.0, 0.0);
  return camera.frame();
}

Frame frameOf(const Vecteur& b, const Vecteur& d) {
  return {0, 0, 0, b.x, b.y, b.z, d.x, d.y, d.z, 0, 0, 0, 0, 0, 0, 0};
}

TEST(BitmapCameraTest, WithoutAFrameIsTheViewFromAbove) {
  for (const double surplus : {0.0, 0.1, -0.5}) {
    CParamsVue3D expected;
    expected.fitAxis(AxisView::kXYp, kBox, kPixels, surplus, 0.0);
    expectSameView(makeBitmapCamera(kBox, kPixels, surplus, std::nullopt), expected);
  }
}

TEST(BitmapCameraTest, WithoutAFrameOrABoxDrawsNothing) {
  const CParamsVue3D camera = makeBitmapCamera(std::nullopt, kPixels, 0.1, std::nullopt);
  EXPECT_EQ(camera.eye(), Point(0, 0, 1));
  EXPECT_GT(camera.zNear(), camera.zFar());
}

class BitmapCameraAxisTest : public ::testing::TestWithParam<AxisView> {};

TEST_P(BitmapCameraAxisTest, TheFrameOfAnAxisViewGivesThatAxisView) {
  CParamsVue3D expected;
  expected.fitAxis(GetParam(), kBox, kPixels, 0.2, 0.0);
  expectSameView(makeBitmapCamera(kBox, kPixels, 0.2, frameOf(GetParam())), expected);
}

INSTANTIATE_TEST_SUITE_P(All, BitmapCameraAxisTest,
                         ::testing::Values(AxisView::kXYp, AxisView::kXYm, AxisView::kXZp,
                                           AxisView::kXZm, AxisView::kYZp, AxisView::kYZm));

TEST(BitmapCameraTest, AnObliqueFrameShowsTheWholeBox) {
  CParamsVue3D view;
  view.fitAxis(AxisView::kYZp, kBox, {300, 300}, 0.0, 0.0);
  view.rotateH(35.0);
  view.rotateV(25.0);
  const Frame frame = view.frame();
  CParamsVue3D camera = makeBitmapCamera(kBox, kPixels, 0.1, frame);

  const Vecteur a(frame[0], frame[1], frame[2]);
  const Vecteur b(frame[3], frame[4], frame[5]);
  const Vecteur d(frame[6], frame[7], frame[8]);
  const double horizontal = 1.1 * (4 * std::abs(a.x) + 6 * std::abs(a.y) + 12 * std::abs(a.z));
  const double vertical = 1.1 * (4 * std::abs(b.x) + 6 * std::abs(b.y) + 12 * std::abs(b.z));
  const double aspect = double{640.0F / 480.0F};
  const bool wide = horizontal / vertical > aspect;
  EXPECT_NEAR(camera.width(), wide ? horizontal : aspect * vertical, 1e-12);
  EXPECT_NEAR(camera.height(), wide ? horizontal / aspect : vertical, 1e-12);
  const double distance = 2 * 7.0 * 1.1;
  EXPECT_DOUBLE_EQ(camera.depth(), distance);
  expectNear(camera.eye(), Point(1, 2, 3) - distance * d);
  EXPECT_EQ(camera.target(), Point(1, 2, 3));
  EXPECT_DOUBLE_EQ(camera.zNear(), 0.45 * distance);
  EXPECT_DOUBLE_EQ(camera.zFar(), 1.55 * distance);
  EXPECT_EQ(camera.pixelWidth(), 640U);
  EXPECT_EQ(camera.pixelHeight(), 480U);
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_NEAR(camera.frame()[i], frame[i], 1e-12);
  }
  for (const double x : {-1.0, 3.0}) {
    for (const double y : {-1.0, 5.0}) {
      for (const double z : {-3.0, 9.0}) {
        const Vecteur corner = Point(x, y, z) - camera.target();
        EXPECT_LE(std::abs(dot(corner, a)), camera.width() / 2);
        EXPECT_LE(std::abs(dot(corner, b)), camera.height() / 2);
      }
    }
  }
}

TEST(BitmapCameraTest, DirectionsNeedNeitherLengthOneNorRightAngles) {
  CParamsVue3D expected;
  expected.fitAxis(AxisView::kXZm, kBox, kPixels, 0.0, 0.0);
  expectSameView(makeBitmapCamera(kBox, kPixels, 0.0, frameOf({0, 0, 4}, {0, 2, 0})), expected);
  const CParamsVue3D slanted =
      makeBitmapCamera(kBox, kPixels, 0.0, frameOf({0, 5, 1e200}, {0, 1e-200, 0}));
  expectNear(slanted.eye(), expected.eye());
  expectNear(slanted.up(), expected.up());
  EXPECT_NEAR(slanted.width(), expected.width(), 1e-9);
  EXPECT_NEAR(slanted.height(), expected.height(), 1e-9);
}

TEST(BitmapCameraTest, AFrameThatNamesNoDirectionIsIgnored) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  CParamsVue3D expected;
  expected.fitAxis(AxisView::kXYp, kBox, kPixels, 0.0, 0.0);
  for (const Frame& frame :
       {frameOf({0, 0, 0}, {1, 0, 0}), frameOf({1, 0, 0}, {0, 0, 0}),
        frameOf({0, nan, 0}, {1, 0, 0}), frameOf({0, 1, 0}, {nan, 0, 0}),
        frameOf({infinity, 0, 0}, {0, 1, 0}), frameOf({1, 0, 0}, {0, -infinity, 0}),
        frameOf({infinity, nan, 0}, {0, 1, 0}), frameOf({1, 2, 3}, {1, 2, 3}),
        frameOf({1, 2, 3}, {-2, -4, -6})}) {
    expectSameView(makeBitmapCamera(kBox, kPixels, 0.0, frame), expected);
  }
}

}  // namespace
}  // namespace zyn
