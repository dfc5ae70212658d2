#include "view3d/CParamsVue3D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "core/VectorMath.h"
#include "support/CameraChecks.h"
#include "support/GeometryChecks.h"

namespace zyn {
namespace {

constexpr Box3 kCube{-0.5, 0.5, -0.5, 0.5, -0.5, 0.5};

/// Extents 4, 6, 12 (half-diagonal 7) around (1, 2, 3).
constexpr Box3 kBox{-1, 3, -1, 5, -3, 9};
const Point kCentre(1, 2, 3);
constexpr double kRadius = 7.0;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

CParamsVue3D axisCamera(AxisView view, ClientSize client = {400, 200}, double surplus = 0.0) {
  CParamsVue3D camera;
  camera.fitAxis(view, kBox, client, surplus, 0.0);
  return camera;
}

bool isFinite(const CParamsVue3D& camera) {
  const double sum = camera.eye().x + camera.eye().y + camera.eye().z + camera.target().x +
                     camera.target().y + camera.target().z + camera.up().norm() + camera.zNear() +
                     camera.zFar() + camera.width() + camera.height() + camera.depth();
  return std::isfinite(sum);
}

TEST(CParamsVue3DTest, Defaults) {
  const CParamsVue3D camera;
  EXPECT_EQ(camera.eye(), Point(0, 0, 0));
  EXPECT_EQ(camera.target(), Point(0, 0, -100));
  EXPECT_EQ(camera.up(), Vecteur(0, 1, 0));
  EXPECT_EQ(camera.zNear(), 0.0);
  EXPECT_EQ(camera.zFar(), 10.0);
  EXPECT_EQ(camera.width(), 0.0);
  EXPECT_EQ(camera.height(), 0.0);
  EXPECT_EQ(camera.depth(), 0.0);
  EXPECT_EQ(camera.pixelWidth(), 0U);
  EXPECT_EQ(camera.pixelHeight(), 0U);
}

TEST(CParamsVue3DTest, AxisViewOfTheUnitCube) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kCube, {400, 200}, 0.0, 0.0);
  const double distance = 2.0 * std::sqrt(0.75);
  EXPECT_EQ(camera.width(), 2.0);
  EXPECT_EQ(camera.height(), 1.0);
  EXPECT_DOUBLE_EQ(camera.depth(), distance);
  expectNear(camera.eye(), Point(0, 0, distance));
  EXPECT_EQ(camera.target(), Point(0, 0, 0));
  EXPECT_NEAR(camera.zNear(), 0.7794, 5e-5);
  EXPECT_NEAR(camera.zFar(), 2.6847, 5e-5);
}

TEST(CParamsVue3DTest, AxisViewFromAMinimumDepth) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kCube, {400, 200}, 0.0, 10.0);
  EXPECT_EQ(camera.depth(), 10.0);
  EXPECT_EQ(camera.eye(), Point(0, 0, 10));
  EXPECT_DOUBLE_EQ(camera.zNear(), 4.5);
  EXPECT_DOUBLE_EQ(camera.zFar(), 15.5);
  EXPECT_EQ(camera.width(), 2.0);
}

struct AxisCase {
  AxisView view;
  Vecteur side;
  Vecteur up;
  double horizontal;
  double vertical;
};

class AxisViewTest : public ::testing::TestWithParam<AxisCase> {};

TEST_P(AxisViewTest, LooksAtTheWholeBox) {
  const AxisCase& expected = GetParam();
  const double surplus = 0.25;
  CParamsVue3D camera;
  camera.fitAxis(expected.view, kBox, {300, 150}, surplus, 3.0);

  const double horizontal = 1.25 * expected.horizontal;
  const double vertical = 1.25 * expected.vertical;
  const bool wide = horizontal / vertical > 2.0;
  EXPECT_DOUBLE_EQ(camera.width(), wide ? horizontal : 2.0 * vertical);
  EXPECT_DOUBLE_EQ(camera.height(), wide ? horizontal / 2.0 : vertical);
  const double distance = 2.0 * kRadius * 1.25;
  EXPECT_EQ(camera.target(), kCentre);
  expectNear(camera.eye(), kCentre + distance * expected.side);
  EXPECT_EQ(camera.up(), expected.up);
  EXPECT_DOUBLE_EQ(camera.depth(), distance);
  EXPECT_DOUBLE_EQ(camera.zNear(), 0.45 * distance);
  EXPECT_DOUBLE_EQ(camera.zFar(), 1.55 * distance);
  EXPECT_EQ(camera.pixelWidth(), 300U);
  EXPECT_EQ(camera.pixelHeight(), 150U);
}

TEST_P(AxisViewTest, WithoutABoxIsEmptyAroundTheOrigin) {
  const AxisCase& expected = GetParam();
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.fitAxis(expected.view, std::nullopt, {30, 20}, 0.5, 7.0);
  EXPECT_EQ(camera.target(), Point(0, 0, 0));
  EXPECT_EQ(camera.eye(), Point() + expected.side);
  EXPECT_EQ(camera.up(), expected.up);
  EXPECT_EQ(camera.width(), 0.0);
  EXPECT_EQ(camera.height(), 0.0);
  EXPECT_EQ(camera.depth(), 0.0);
  EXPECT_EQ(camera.zNear(), 1.5);
  EXPECT_EQ(camera.zFar(), 0.5);
  EXPECT_EQ(camera.pixelWidth(), 30U);
  EXPECT_EQ(camera.pixelHeight(), 20U);
}

INSTANTIATE_TEST_SUITE_P(All, AxisViewTest,
                         ::testing::Values(AxisCase{AxisView::kXYp, {0, 0, 1}, {0, 1, 0}, 4, 6},
                                           AxisCase{AxisView::kXYm, {0, 0, -1}, {0, 1, 0}, 4, 6},
                                           AxisCase{AxisView::kXZp, {0, 1, 0}, {0, 0, 1}, 4, 12},
                                           AxisCase{AxisView::kXZm, {0, -1, 0}, {0, 0, 1}, 4, 12},
                                           AxisCase{AxisView::kYZp, {1, 0, 0}, {0, 0, 1}, 6, 12},
                                           AxisCase{AxisView::kYZm, {-1, 0, 0}, {0, 0, 1}, 6, 12}));

TEST(CParamsVue3DTest, RectangleFollowsTheWiderSide) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{0, 10, 0, 2, 0, 1}, {400, 200}, 0.1, 0.0);
  EXPECT_DOUBLE_EQ(camera.width(), 11.0);
  EXPECT_DOUBLE_EQ(camera.height(), 5.5);
  camera.fitAxis(AxisView::kXYp, Box3{0, 2, 0, 10, 0, 1}, {400, 200}, 0.1, 0.0);
  EXPECT_DOUBLE_EQ(camera.width(), 22.0);
  EXPECT_DOUBLE_EQ(camera.height(), 11.0);
}

TEST(CParamsVue3DTest, RectangleOfAFlatBox) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{0, 10, 3, 3, 0, 1}, {400, 200}, 0.5, 0.0);
  EXPECT_DOUBLE_EQ(camera.width(), 15.0);
  EXPECT_DOUBLE_EQ(camera.height(), 7.5);
  camera.fitAxis(AxisView::kXYp, Box3{3, 3, 0, 10, 0, 1}, {400, 200}, 0.5, 0.0);
  EXPECT_DOUBLE_EQ(camera.width(), 30.0);
  EXPECT_DOUBLE_EQ(camera.height(), 15.0);
}

TEST(CParamsVue3DTest, RectangleOfABoxSeenAsAPointTakesTheInverseAspect) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{3, 3, 4, 4, 0, 2}, {400, 200}, 0.5, 0.0);
  EXPECT_EQ(camera.width(), 0.5);
  EXPECT_EQ(camera.height(), 1.0);
  EXPECT_DOUBLE_EQ(camera.depth(), 2.0 * 1.0 * 1.5);
  EXPECT_EQ(camera.target(), Point(3, 4, 1));
}

TEST(CParamsVue3DTest, AspectIsOfSinglePrecision) {
  const double aspect = double{100.0F / 300.0F};
  ASSERT_NE(aspect, 100.0 / 300.0);
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{0, 0, 0, 1, 0, 0}, {100, 300}, 0.0, 0.0);
  EXPECT_EQ(camera.width(), aspect);
  camera.fitDefault(kBox, {100, 300}, 0.0, 0.0);
  EXPECT_EQ(camera.height(), 14.0 / aspect);
}

TEST(CParamsVue3DTest, AMinimumDepthThatIsNoNumberIsIgnored) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kBox, {100, 100}, 0.0, kNan);
  EXPECT_EQ(camera.depth(), 14.0);
  camera.fitDefault(kBox, {100, 100}, 0.0, kNan);
  EXPECT_EQ(camera.depth(), 14.0);
}

TEST(CParamsVue3DTest, TurningView) {
  CParamsVue3D camera;
  camera.fitTurning(kBox, {400, 200}, 0.5);
  EXPECT_DOUBLE_EQ(camera.width(),
                   36.0);  // the extent along Z is the vertical one: 1.5 x 12 x aspect 2
  EXPECT_DOUBLE_EQ(camera.height(), 18.0);
  EXPECT_EQ(camera.target(), kCentre);
  EXPECT_EQ(camera.eye(), Point(1, 2 + 14, 3));
  EXPECT_EQ(camera.up(), Vecteur(1, 0, 0));
  EXPECT_EQ(camera.depth(), 14.0);
  EXPECT_DOUBLE_EQ(camera.zNear(), 6.3);
  EXPECT_DOUBLE_EQ(camera.zFar(), 21.7);
  EXPECT_EQ(camera.pixelWidth(), 400U);
}

TEST(CParamsVue3DTest, TurningViewOfAFlatBox) {
  CParamsVue3D camera;
  camera.fitTurning(Box3{0, 6, 0, 6, 2, 2}, {400, 200}, 0.5);
  EXPECT_DOUBLE_EQ(camera.width(), 9.0);
  EXPECT_DOUBLE_EQ(camera.height(), 4.5);
  camera.fitTurning(Box3{2, 2, 0, 6, 2, 2}, {400, 200}, 0.5);
  EXPECT_EQ(camera.width(), 0.5);
  EXPECT_EQ(camera.height(), 1.0);
}

TEST(CParamsVue3DTest, TurningViewWithoutABox) {
  CParamsVue3D camera;
  camera.fitTurning(std::nullopt, {400, 200}, 0.5);
  EXPECT_EQ(camera.eye(), Point(0, 1, 0));
  EXPECT_EQ(camera.target(), Point(0, 0, 0));
  EXPECT_EQ(camera.up(), Vecteur(1, 0, 0));
  EXPECT_EQ(camera.width(), 0.0);
  EXPECT_EQ(camera.zNear(), 1.5);
  EXPECT_EQ(camera.zFar(), 0.5);
}

TEST(CParamsVue3DTest, DefaultViewHoldsTheSphereOnTheShorterSide) {
  CParamsVue3D camera;
  camera.fitDefault(kBox, {400, 200}, 0.5, 0.0);
  EXPECT_EQ(camera.width(), 42.0);
  EXPECT_EQ(camera.height(), 21.0);
  EXPECT_EQ(camera.target(), kCentre);
  EXPECT_EQ(camera.eye(), Point(1 + 14, 2, 3));
  EXPECT_EQ(camera.up(), Vecteur(0, 0, 1));
  EXPECT_EQ(camera.depth(), 14.0);
  EXPECT_DOUBLE_EQ(camera.zNear(), 6.3);
  EXPECT_DOUBLE_EQ(camera.zFar(), 21.7);
  EXPECT_EQ(camera.pixelWidth(), 400U);
  EXPECT_EQ(camera.pixelHeight(), 200U);

  camera.fitDefault(kBox, {200, 400}, 0.5, 0.0);
  EXPECT_EQ(camera.width(), 21.0);
  EXPECT_EQ(camera.height(), 42.0);
}

TEST(CParamsVue3DTest, DefaultViewFromAMinimumDepth) {
  CParamsVue3D camera;
  camera.fitDefault(kBox, {400, 200}, 0.0, 20.0);
  EXPECT_EQ(camera.depth(), 20.0);
  EXPECT_EQ(camera.eye(), Point(21, 2, 3));
  EXPECT_DOUBLE_EQ(camera.zNear(), 9.0);
  EXPECT_DOUBLE_EQ(camera.zFar(), 31.0);
}

TEST(CParamsVue3DTest, DefaultViewWithoutABoxIsAllZero) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.fitDefault(std::nullopt, {400, 200}, 0.5, 20.0);
  EXPECT_EQ(camera.eye(), Point(0, 0, 0));
  EXPECT_EQ(camera.target(), Point(0, 0, 0));
  EXPECT_EQ(camera.width(), 0.0);
  EXPECT_EQ(camera.height(), 0.0);
  EXPECT_EQ(camera.depth(), 0.0);
  EXPECT_EQ(camera.zNear(), 0.0);
  EXPECT_EQ(camera.zFar(), 0.0);
  EXPECT_EQ(camera.pixelWidth(), 400U);
}

TEST(CParamsVue3DTest, WholeFitKeepsDirectionAspectAndOldDepth) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXZm, kCube, {400, 200}, 0.0, 10.0);
  camera.rotateH(30.0);
  const Vecteur direction = camera.direction();
  camera.fitWhole(kBox, {77, 55}, 0.5, 0.0);
  EXPECT_DOUBLE_EQ(camera.width(), 42.0);
  EXPECT_DOUBLE_EQ(camera.height(), 21.0);
  EXPECT_EQ(camera.target(), kCentre);
  expectNear(camera.eye(), kCentre - 10.0 * direction);
  EXPECT_DOUBLE_EQ(camera.zNear(), 4.5);
  EXPECT_DOUBLE_EQ(camera.zFar(), 15.5);
  EXPECT_EQ(camera.depth(), 14.0);
  EXPECT_EQ(camera.up(), Vecteur(0, 0, 1));
  EXPECT_EQ(camera.pixelWidth(), 77U);
  EXPECT_EQ(camera.pixelHeight(), 55U);

  camera.fitWhole(kBox, {77, 55}, 0.5, 30.0);
  expectNear(camera.eye(), kCentre - 14.0 * direction);
  EXPECT_EQ(camera.depth(), 30.0);
}

TEST(CParamsVue3DTest, WholeFitOfANarrowView) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kCube, {100, 200}, 0.0, 0.0);
  camera.fitWhole(kBox, {400, 200}, 0.0, 0.0);
  EXPECT_DOUBLE_EQ(camera.width(), 14.0);
  EXPECT_DOUBLE_EQ(camera.height(), 28.0);
}

TEST(CParamsVue3DTest, DepthFitKeepsTheRectangleAndTheTarget) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kYZm, kCube, {400, 200}, 0.0, 0.0);
  camera.fitDepth(kBox, {400, 200}, 1.0);
  const double distance = 2.0 * (kRadius + std::sqrt(1.0 + 4.0 + 9.0));
  EXPECT_EQ(camera.target(), Point(0, 0, 0));
  expectNear(camera.eye(), Point(-distance, 0, 0));
  EXPECT_EQ(camera.width(), 2.0);
  EXPECT_EQ(camera.height(), 1.0);
  EXPECT_DOUBLE_EQ(camera.depth(), distance);
  EXPECT_DOUBLE_EQ(camera.zNear(), 0.45 * distance);
  EXPECT_DOUBLE_EQ(camera.zFar(), 1.55 * distance);
  camera.fitDepth(kBox, {400, 200}, 100.0);
  expectNear(camera.eye(), Point(-100, 0, 0));
  EXPECT_EQ(camera.depth(), 100.0);
}

TEST(CParamsVue3DTest, WindowFitEnlargesTheRectangle) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kCube, {400, 200}, 0.0, 0.0);
  camera.fitWindow({800, 200});
  EXPECT_EQ(camera.width(), 4.0);
  EXPECT_EQ(camera.height(), 1.0);
  EXPECT_EQ(camera.pixelWidth(), 800U);
  EXPECT_EQ(camera.pixelHeight(), 200U);
  camera.fitWindow({300, 300});
  EXPECT_EQ(camera.width(), 4.0);
  EXPECT_EQ(camera.height(), 4.0);
  EXPECT_EQ(camera.frame()[12], 4.0 / 300.0);
}

TEST(CParamsVue3DTest, AnEmptyClientAreaIsNotAdaptedTo) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  const CParamsVue3D before(camera);
  for (const ClientSize empty : {ClientSize{0, 0}, ClientSize{0, 9}, ClientSize{9, 0}}) {
    camera.fitWindow(empty);
    camera.adaptTo(empty);
    expectSameView(camera, before);
  }
}

TEST(CParamsVue3DTest, FitsInAnEmptyClientAreaStayFinite) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kBox, {0, 0}, 0.0, 0.0);
  EXPECT_TRUE(isFinite(camera));
  EXPECT_EQ(camera.pixelWidth(), 0U);
  camera.fitWindow({400, 200});
  EXPECT_DOUBLE_EQ(camera.width(), 12.0);
  EXPECT_DOUBLE_EQ(camera.height(), 6.0);
}

TEST(CParamsVue3DTest, AdaptationKeepsOneSide) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, kCube, {400, 200}, 0.0, 0.0);
  camera.adaptTo({900, 300});
  EXPECT_EQ(camera.width(), 3.0);
  EXPECT_EQ(camera.height(), 1.0);
  EXPECT_EQ(camera.pixelWidth(), 900U);
  EXPECT_EQ(camera.pixelHeight(), 300U);
  camera.adaptTo({300, 300});
  EXPECT_EQ(camera.width(), 3.0);
  EXPECT_EQ(camera.height(), 3.0);
  EXPECT_EQ(camera.frame()[12], 0.01);
}

TEST(CParamsVue3DTest, ZoomScalesTheRectangleOnly) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  const CParamsVue3D before(camera);
  camera.zoom(2.0);
  EXPECT_EQ(camera.width(), before.width() / 2.0);
  EXPECT_EQ(camera.height(), before.height() / 2.0);
  EXPECT_EQ(camera.eye(), before.eye());
  EXPECT_EQ(camera.zNear(), before.zNear());
  EXPECT_EQ(camera.zFar(), before.zFar());
  EXPECT_EQ(camera.depth(), before.depth());
}

TEST(CParamsVue3DTest, ZoomOutMovesTheEyeAwayFromAShallowRange) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXZp, kCube, {400, 200}, 0.0, 0.0);
  const double depth = camera.depth();
  const double range = 1.1 * depth;  // 1.9 units: a height of 11.4 is six times as much
  ASSERT_LT(11.0 / 6.0, range);
  ASSERT_GT(12.0 / 6.0, range);
  camera.zoom(1.0 / 11.0);
  EXPECT_DOUBLE_EQ(camera.zFar() - camera.zNear(), range);
  camera.zoom(11.0 / 12.0);
  EXPECT_DOUBLE_EQ(camera.height(), 12.0);
  expectNear(camera.eye(), Point(0, 2.0, 0));
  EXPECT_DOUBLE_EQ(camera.zNear(), 0.9);
  EXPECT_DOUBLE_EQ(camera.zFar(), 3.1);
  EXPECT_EQ(camera.depth(), depth);
}

TEST(CParamsVue3DTest, ZoomByZeroLeavesAnInfiniteRectangle) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.zoom(0.0);
  EXPECT_EQ(camera.width(), kInfinity);
  EXPECT_EQ(camera.height(), kInfinity);
}

TEST(CParamsVue3DTest, TranslateHMovesToTheRightAndBacksOff) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.translateH(1.5);
  EXPECT_EQ(camera.target(), Point(2.5, 2, 3));
  EXPECT_EQ(camera.eye(), Point(2.5, 2, 3 + 14 + 3));
  EXPECT_EQ(camera.depth(), 17.0);
  EXPECT_DOUBLE_EQ(camera.zNear(), 0.45 * 17);
  EXPECT_DOUBLE_EQ(camera.zFar(), 1.55 * 17);
  EXPECT_EQ(camera.up(), Vecteur(0, 1, 0));
}

TEST(CParamsVue3DTest, TranslateHThereAndBackKeepsTheEyeBackedOff) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.translateH(1.0);
  camera.translateH(-1.0);
  expectNear(camera.target(), kCentre);
  expectNear(camera.eye(), Point(1, 2, 3 + 14 + 4));
  EXPECT_EQ(camera.depth(), 18.0);
}

TEST(CParamsVue3DTest, TranslateVMovesUpwards) {
  CParamsVue3D camera = axisCamera(AxisView::kYZp);
  camera.translateV(-2.0);
  EXPECT_EQ(camera.target(), Point(1, 2, 1));
  EXPECT_EQ(camera.eye(), Point(1 + 14 + 4, 2, 1));
  EXPECT_EQ(camera.depth(), 18.0);
  EXPECT_DOUBLE_EQ(camera.zNear(), 8.1);
  EXPECT_DOUBLE_EQ(camera.zFar(), 27.9);
}

TEST(CParamsVue3DTest, TranslatePMovesForwardAndBack) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.translateP(1.0);
  EXPECT_EQ(camera.target(), Point(1, 2, 2));
  EXPECT_EQ(camera.eye(), Point(1, 2, 16));
  EXPECT_EQ(camera.depth(), 14.0);
  EXPECT_DOUBLE_EQ(camera.zNear(), 6.3);
  camera.translateP(-1.0);
  expectNear(camera.target(), kCentre);
  expectNear(camera.eye(), Point(1, 2, 17));
}

TEST(CParamsVue3DTest, RotateATurnsUpAboutTheLineOfSight) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.rotateA(90.0);
  expectNear(camera.up(), Vecteur(1, 0, 0));  // counterclockwise about -Z
  EXPECT_EQ(camera.eye(), Point(1, 2, 17));
  EXPECT_EQ(camera.target(), kCentre);
}

TEST(CParamsVue3DTest, RotateHTurnsTheEyeAboutUp) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  camera.rotateH(90.0);
  expectNear(camera.eye(), Point(15, 2, 3));
  EXPECT_EQ(camera.target(), kCentre);
  EXPECT_EQ(camera.up(), Vecteur(0, 1, 0));
  camera.rotateH(270.0);
  expectNear(camera.eye(), Point(1, 2, 17));
}

TEST(CParamsVue3DTest, RotateHByAFullTurnComesBack) {
  CParamsVue3D camera = axisCamera(AxisView::kXZm);
  camera.rotateV(20.0);
  const Point eye = camera.eye();
  camera.rotateH(360.0);
  expectNear(camera.eye(), eye);
}

TEST(CParamsVue3DTest, RotateVTurnsTheEyeAndUp) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);  // sight -Z, up +Y: the axis is +X
  camera.rotateV(90.0);
  expectNear(camera.eye(), Point(1, 2 - 14, 3));
  expectNear(camera.up(), Vecteur(0, 0, 1));
  EXPECT_EQ(camera.target(), kCentre);
}

/// Rotation about an axis by way of a frame whose third axis it is, given by its azimuth and
/// elevation.
Vecteur turnedInFrame(const Vecteur& v, const Vecteur& axis, double degrees) {
  const double azimuth = std::atan2(axis.y, axis.x);
  const double elevation = std::atan2(axis.z, std::hypot(axis.x, axis.y));
  const Vecteur third(std::cos(elevation) * std::cos(azimuth),
                      std::cos(elevation) * std::sin(azimuth), std::sin(elevation));
  const Vecteur first(-std::sin(azimuth), std::cos(azimuth), 0.0);
  const Vecteur second = cross(third, first);
  const double angle = degrees * 3.14159265358979323846 / 180.0;
  const double x = dot(v, first);
  const double y = dot(v, second);
  return (x * std::cos(angle) - y * std::sin(angle)) * first +
         (x * std::sin(angle) + y * std::cos(angle)) * second + dot(v, third) * third;
}

TEST(CParamsVue3DTest, RotationsAboutObliqueAxes) {
  CParamsVue3D camera = axisCamera(AxisView::kYZp);
  camera.rotateH(37.0);
  camera.rotateV(-21.0);
  camera.rotateA(55.0);
  for (const double angle : {10.0, -75.0, 200.0}) {
    const Vecteur sight = camera.target() - camera.eye();
    const Vecteur up = camera.up();
    CParamsVue3D turned(camera);
    turned.rotateA(angle);
    expectNear(turned.up(), turnedInFrame(up, sight, angle), 1e-11);
    CParamsVue3D aside(camera);
    aside.rotateH(angle);
    expectNear(aside.eye(), camera.target() + turnedInFrame(-sight, up, angle), 1e-11);
    CParamsVue3D over(camera);
    over.rotateV(angle);
    expectNear(over.eye(), camera.target() - turnedInFrame(sight, cross(sight, up), angle), 1e-11);
    expectNear(over.up(), turnedInFrame(up, cross(sight, up), angle), 1e-11);
    camera.rotateV(angle);
  }
}

TEST(CParamsVue3DTest, FrameOfAnAxisView) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);  // rectangle 12 x 6
  const CParamsVue3D::Frame expected{-1, 0, 0, 0, 1, 0, 0, 0, -1, 7, -1, 3, 12.0 / 400, 0, 0, 0};
  EXPECT_EQ(camera.frame(), expected);
}

TEST(CParamsVue3DTest, FrameIsOrthonormalWhateverUpIs) {
  CParamsVue3D camera;
  camera.fitTurned({Vecteur(0, 0.6, 0.8), Vecteur(0.8, 0.48, -0.36)}, kBox, {300, 200}, 0.0, 0.0);
  camera.rotateA(12.0);
  camera.rotateV(34.0);
  const auto& f = camera.frame();
  const Vecteur a(f[0], f[1], f[2]);
  const Vecteur b(f[3], f[4], f[5]);
  const Vecteur d(f[6], f[7], f[8]);
  for (const Vecteur& axis : {a, b, d}) {
    EXPECT_NEAR(axis.norm(), 1.0, 1e-12);
  }
  EXPECT_NEAR(dot(a, d), 0.0, 1e-12);
  expectNear(b, cross(d, a));
  EXPECT_GT(dot(b, camera.up()), 0.99);
  expectNear(Point(f[9], f[10], f[11]),
             camera.target() - (camera.width() / 2) * a - (camera.height() / 2) * b);
}

TEST(CParamsVue3DTest, FrameFollowsEveryChange) {
  const auto differs = [](void (*apply)(CParamsVue3D&)) {
    CParamsVue3D camera = axisCamera(AxisView::kYZp);
    const auto before = camera.frame();
    apply(camera);
    return camera.frame() != before;
  };
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.translateH(1); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.translateV(1); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.translateP(1); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.rotateA(1); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.rotateH(1); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.rotateV(1); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.zoom(2); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.fitWindow({100, 700}); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.adaptTo({100, 700}); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.fitWhole(kCube, {400, 200}, 0, 0); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.fitDepth(kCube, {800, 400}, 0); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.fitDefault(kCube, {400, 200}, 0, 0); }));
  EXPECT_TRUE(differs([](CParamsVue3D& c) { c.fitTurning(kBox, {400, 200}, 0); }));
}

TEST(CParamsVue3DTest, CopiesAreEqualAndIndependent) {
  CParamsVue3D camera = axisCamera(AxisView::kXZp, {320, 240}, 0.3);
  camera.rotateH(25.0);
  CParamsVue3D copy(camera);
  expectSameView(copy, camera);
  EXPECT_EQ(copy.frame(), camera.frame());
  camera.zoom(3.0);
  EXPECT_NE(copy.width(), camera.width());
  EXPECT_NE(copy.frame(), camera.frame());
}

/// Where the render pass puts a world point: orthographic projection over the view rectangle after
/// a look-at transform, then the viewport, with y downwards.
Point windowPosition(const CParamsVue3D& camera, const Point& world, ClientSize client) {
  const Vecteur forward = normalised(camera.target() - camera.eye());
  const Vecteur right = normalised(cross(forward, camera.up()));
  const Vecteur upwards = cross(right, forward);
  const Vecteur fromEye = world - camera.eye();
  const double x = dot(fromEye, right) / (camera.width() / 2);
  const double y = dot(fromEye, upwards) / (camera.height() / 2);
  return {(x + 1) / 2 * client.width, (1 - y) / 2 * client.height, dot(fromEye, forward)};
}

TEST(CParamsVue3DTest, PixelsMapToTheMiddleOfWhatTheyShow) {
  const ClientSize client{320, 240};
  std::vector<CParamsVue3D> cameras;
  cameras.push_back(axisCamera(AxisView::kXYp, client));
  cameras.push_back(axisCamera(AxisView::kYZm, client, 0.2));
  cameras.push_back(axisCamera(AxisView::kXZp, client));
  cameras.back().rotateH(33.0);
  cameras.back().rotateV(-50.0);
  cameras.back().rotateA(12.0);
  cameras.back().translateH(2.0);
  cameras.emplace_back().fitAxis(AxisView::kXYp, Box3{3, 3, 4, 4, 0, 2}, client, 0.5, 0.0);
  for (CParamsVue3D& camera : cameras) {
    for (const auto& [x, y] : {std::pair(0, 0), {319, 239}, {160, 120}, {17, 200}}) {
      const Point world = camera.pixelToWorld(x, y);
      const Point shown = windowPosition(camera, world, client);
      EXPECT_NEAR(shown.x, x + 0.5, 1e-3);
      EXPECT_NEAR(shown.y, y + 0.5, 1e-3);
      EXPECT_NEAR(dot(world - camera.target(), camera.direction()), 0.0, 1e-9);
    }
  }
}

TEST(CParamsVue3DTest, PixelsMapUpwardsAndToTheRight) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);  // 12 x 6 units on 400 x 200 pixels
  expectNear(camera.pixelToWorld(0, 0), Point(1 - 6 + 0.015, 2 + 3 - 0.015, 3));
  expectNear(camera.pixelToWorld(399, 199), Point(1 + 6 - 0.015, 2 - 3 + 0.015, 3));
}

TEST(CParamsVue3DTest, PixelToPlaneAlongAndAcrossTheSight) {
  const std::array<double, 4> ground{0, 0, 1, 0};
  CParamsVue3D top = axisCamera(AxisView::kXYp);
  for (const auto& [x, y] : {std::pair(0, 0), {200, 100}, {399, 13}, {-50, 1000}}) {
    const auto hit = top.pixelToPlane(x, y, ground);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->z, 0.0);
    const Point world = top.pixelToWorld(x, y);
    EXPECT_EQ(hit->x, world.x);
    EXPECT_EQ(hit->y, world.y);
  }
  CParamsVue3D front = axisCamera(AxisView::kXZp);
  EXPECT_FALSE(front.pixelToPlane(200, 100, ground));
}

TEST(CParamsVue3DTest, PixelToObliquePlaneStaysUnderThePixel) {
  const ClientSize client{320, 240};
  CParamsVue3D camera = axisCamera(AxisView::kYZp, client);
  camera.rotateH(40.0);
  camera.rotateV(15.0);
  const std::array<double, 4> plane{1, -2, 0.5, 4};
  const auto hit = camera.pixelToPlane(57, 190, plane);
  ASSERT_TRUE(hit);
  EXPECT_NEAR(hit->x - 2 * hit->y + 0.5 * hit->z + 4, 0.0, 1e-9);
  const Point shown = windowPosition(camera, *hit, client);
  EXPECT_NEAR(shown.x, 57.5, 1e-3);
  EXPECT_NEAR(shown.y, 190.5, 1e-3);
}

TEST(CParamsVue3DTest, PlanesAreParallelUpToATolerance) {
  CParamsVue3D camera = axisCamera(AxisView::kXYp);
  EXPECT_FALSE(camera.pixelToPlane(1, 1, {1, 0, 1e-8, 0}));
  EXPECT_TRUE(camera.pixelToPlane(1, 1, {1, 0, 1.1e-8, 0}));
  EXPECT_FALSE(camera.pixelToPlane(1, 1, {0, 0, 0, 0}));
  EXPECT_FALSE(camera.pixelToPlane(1, 1, {0, 0, kNan, 0}));
}

TEST(CParamsVue3DTest, AnEmptyRectangleHasPixelsOfSizeOneOnceMapped) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, std::nullopt, {4, 2}, 0.0, 0.0);
  EXPECT_EQ(camera.frame()[12], 0.0);
  EXPECT_EQ(camera.pixelToWorld(0, 0), Point(-3.5, 1.5, 0));
  EXPECT_EQ(camera.frame()[12], 1.0);
  CParamsVue3D copy(camera);
  EXPECT_EQ(copy.frame()[12], 0.0);
}

TEST(CParamsVue3DTest, DegenerateCamerasDoNoHarm) {
  for (const double odd : {kNan, kInfinity, -kInfinity, 0.0, 1e308, -1e308, 1e-320}) {
    CParamsVue3D camera = axisCamera(AxisView::kXYp);
    camera.zoom(odd);
    camera.translateH(odd);
    camera.translateV(odd);
    camera.translateP(odd);
    camera.rotateA(odd);
    camera.rotateH(odd);
    camera.rotateV(odd);
    camera.fitDepth(kBox, {-1, -1}, odd);
    camera.fitWhole(Box3{odd, -odd, odd, odd, 0, odd}, {1, 1}, odd, odd);
    camera.fitWindow({2147483647, 1});
    camera.pixelToPlane(-2147483647, 2147483647, {odd, odd, odd, odd});
    camera.fitDefault(std::nullopt, {10, 10}, odd, odd);
    camera.rotateV(10.0);
    camera.fitAxis(AxisView::kXYp, kBox, {10, 10}, 0.0, 0.0);
    EXPECT_TRUE(isFinite(camera)) << odd;
    EXPECT_EQ(camera.eye(), Point(1, 2, 17)) << odd;
  }
}

TEST(CParamsVue3DTest, ANullDirectionGivesNoFrame) {
  CParamsVue3D camera;
  camera.fitDefault(std::nullopt, {10, 10}, 0.0, 0.0);
  EXPECT_TRUE(std::isnan(camera.frame()[0]));
  EXPECT_FALSE(camera.pixelToPlane(1, 1, {0, 0, 1, 0}));
}

TEST(CParamsVue3DTest, ResizingKeepsTheScaleOfAPixel) {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{-2, 2, -1, 1, 0, 1}, {400, 200}, 0.0, 0.0);
  const double width = camera.width();
  const double height = camera.height();
  camera.resize({600, 50});
  EXPECT_DOUBLE_EQ(camera.width(), width * 600 / 400);
  EXPECT_DOUBLE_EQ(camera.height(), height * 50 / 200);
  camera.resize({0, 100});
  EXPECT_EQ(camera.pixelWidth(), 600U);
  camera.resize({400, 200});
  EXPECT_DOUBLE_EQ(camera.width(), width);
  EXPECT_DOUBLE_EQ(camera.height(), height);
}

TEST(CParamsVue3DTest, ZoomingAboutAPixelKeepsWhatIsUnderIt) {
  CParamsVue3D camera;
  camera.fitDefault(Box3{-2, 3, -1, 4, 0, 6}, {401, 200}, 0.1, 0.0);
  camera.rotateH(33.0);
  camera.rotateV(-12.0);
  const double width = camera.width();
  const Point before = camera.pixelToWorld(17, 180);
  camera.zoomAbout(17, 180, 2.5);
  const Point after = camera.pixelToWorld(17, 180);
  EXPECT_DOUBLE_EQ(camera.width(), width / 2.5);
  EXPECT_NEAR(after.x, before.x, 1e-12);
  EXPECT_NEAR(after.y, before.y, 1e-12);
  EXPECT_NEAR(after.z, before.z, 1e-12);
}

TEST(CParamsVue3DTest, ZoomingAboutAPixelByNothingLeavesTheTargetFinite) {
  CParamsVue3D camera;
  camera.fitDefault(Box3{-2, 3, -1, 4, 0, 6}, {401, 200}, 0.1, 0.0);
  camera.zoomAbout(17, 180, 0.0);
  EXPECT_TRUE(std::isinf(camera.width()));
  EXPECT_DOUBLE_EQ(camera.target().x, 0.5);
}

}  // namespace
}  // namespace zyn
