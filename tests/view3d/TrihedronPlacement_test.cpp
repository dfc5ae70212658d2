#include "view3d/TrihedronPlacement.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/VectorMath.h"
#include "support/GeometryChecks.h"

namespace zyn {
namespace {

/// A view rectangle of 600 by 300 about (10, 20, 30), from +Z.
CParamsVue3D wideCamera() {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{-290, 310, -130, 170, 20, 40}, {600, 300}, 0, 0);
  return camera;
}

TEST(TrihedronPlacementTest, StandsATwelfthOfTheShorterSideFromTheCorner) {
  const auto placement = TrihedronPlacement::in(wideCamera());
  ASSERT_TRUE(placement);
  EXPECT_DOUBLE_EQ(placement->length, 25);
  expectNear(placement->origin, Point(10 - 275, 20 - 125, 30));
  expectNear(placement->right, Vecteur(1, 0, 0));
  expectNear(placement->up, Vecteur(0, 1, 0));
  expectNear(placement->towardsViewer, Vecteur(0, 0, 1));
}

TEST(TrihedronPlacementTest, TheShorterSideMayBeTheWidth) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXZp, Box3{-60, 60, -5, 5, -120, 120}, {100, 200}, 0, 0);
  const auto placement = TrihedronPlacement::in(camera);
  ASSERT_TRUE(placement);
  EXPECT_DOUBLE_EQ(placement->length, 10);
  // From +Y with +Z upwards, the right of the screen is -X.
  expectNear(placement->origin, Point(50, 0, -110));
}

/// Back along the three axes of the view from the target, then onto the plane through the target.
TEST(TrihedronPlacementTest, FollowsTheCamera) {
  CParamsVue3D camera = wideCamera();
  for (int turn = 0; turn < 10; ++turn) {
    camera.rotateH(47);
    camera.rotateV(-31);
    camera.rotateA(13);
    camera.translateH(3);
    camera.translateV(-4);
    camera.zoom(1.1);
    const CParamsVue3D::Frame frame = camera.frame();  // A to the left, B upwards, d
    const Vecteur a(frame[0], frame[1], frame[2]);
    const Vecteur b(frame[3], frame[4], frame[5]);
    const Vecteur d(frame[6], frame[7], frame[8]);
    const double length = std::min(camera.width(), camera.height()) / 12;
    const Point back = camera.target() + (camera.width() / 2 - length) * a -
                       (camera.height() / 2 - length) * b - (camera.depth() / 2 - length) * d;
    const Point expected = back - dot(back - camera.target(), d) * d;
    const auto placement = TrihedronPlacement::in(camera);
    ASSERT_TRUE(placement);
    EXPECT_DOUBLE_EQ(placement->length, length);
    expectNear(placement->origin, expected, 1e-9);
    expectNear(placement->right, -a, 1e-12);
    expectNear(placement->up, b, 1e-12);
  }
}

TEST(TrihedronPlacementTest, NoneForACameraThatShowsNothing) {
  EXPECT_FALSE(TrihedronPlacement::in(CParamsVue3D()));
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, std::nullopt, {600, 300}, 0, 0);
  EXPECT_FALSE(TrihedronPlacement::in(camera));
  camera.fitDefault(std::nullopt, {600, 300}, 0, 0);
  EXPECT_FALSE(TrihedronPlacement::in(camera));
  for (const double coefficient : {0.0, -1.0, std::nan("")}) {
    CParamsVue3D zoomed = wideCamera();
    zoomed.zoom(coefficient);
    EXPECT_FALSE(TrihedronPlacement::in(zoomed)) << coefficient;
  }
}

}  // namespace
}  // namespace zyn
