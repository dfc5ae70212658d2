#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/ScreenMap.h"
#include "core/VectorMath.h"
#include "support/CameraMatrices.h"
#include "support/GeometryChecks.h"
#include "view3d/CParamsVue3D.h"

namespace zyn::test {
namespace {

constexpr ClientSize kClient{400, 300};
constexpr Box3 kBox{-3, 5, -2, 4, 1, 9};

std::vector<Point> cornersOf(const Box3& box) {
  std::vector<Point> corners;
  for (const double x : {box.xMin, box.xMax}) {
    for (const double y : {box.yMin, box.yMax}) {
      for (const double z : {box.zMin, box.zMax}) {
        corners.emplace_back(x, y, z);
      }
    }
  }
  return corners;
}

/// Looks at the box from an oblique eye.
class CameraPerspectiveTest : public testing::Test {
 protected:
  CameraPerspectiveTest() {
    value.eye = {11, 7, 15};
    value.target = {1, 1, 5};
    value.up = {0.1, 0.2, 1};
    value.width = 16;
    value.height = 12;
    value.perspective = true;
    value.openingAngle = 50;
    value.depth = 20;
    look();
  }

  void look() {
    camera.take(value);
    camera.growTo(kClient);
    camera.holdScene(kBox);
  }

  /// The picture point of the model point, in client pixels from the upper left corner.
  PlanePoint pixelOf(const Point& point) const {
    const auto [zNear, zFar] = camera.drawnRange();
    const Lens lens{camera.perspective()
                        ? perspectiveMatrix(camera.width(), camera.height(), camera.drawnDistance(),
                                            zNear, zFar)
                        : orthographicMatrix(camera.width(), camera.height(), zNear, zFar),
                    {0, 0, kClient.width, kClient.height}};
    const ScreenMap map(lookAtMatrix(camera.drawnEye(), camera.target(), camera.up()), lens);
    const PlanePoint pixel = map.pixelOf(point);
    return {pixel.x, kClient.height - pixel.y};
  }

  double depthOf(const Point& point) const {
    return dot(point - camera.drawnEye(), camera.direction());
  }

  void expectWholeBoxInView(const Box3& box) const {
    for (const Point& corner : cornersOf(box)) {
      const PlanePoint pixel = pixelOf(corner);
      EXPECT_GT(depthOf(corner), 0);
      EXPECT_GE(pixel.x, -1e-6);
      EXPECT_LE(pixel.x, kClient.width + 1e-6);
      EXPECT_GE(pixel.y, -1e-6);
      EXPECT_LE(pixel.y, kClient.height + 1e-6);
    }
  }

  void expectWholeBoxInRange(const Box3& box) const {
    const auto [zNear, zFar] = camera.drawnRange();
    for (const Point& corner : cornersOf(box)) {
      EXPECT_GT(depthOf(corner), zNear);
      EXPECT_LT(depthOf(corner), zFar);
    }
  }

  CameraValue value;
  CParamsVue3D camera;
};

TEST_F(CameraPerspectiveTest, TheEyeIsWhereTheAngleSeesTheHeight) {
  const double distance = 6 / std::tan(25 * std::numbers::pi / 180);
  EXPECT_DOUBLE_EQ(camera.drawnDistance(), distance);
  expectNear(camera.drawnEye(), value.target + distance * normalised(value.eye - value.target),
             1e-12);
  EXPECT_EQ(camera.value(), value);
}

TEST_F(CameraPerspectiveTest, ThePlaneThroughTheTargetKeepsItsSize) {
  const Vecteur right = normalised(cross(camera.direction(), camera.up()));
  const Point seen = camera.target() + 3.0 * right;
  const PlanePoint with = pixelOf(seen);
  value.perspective = false;
  look();
  EXPECT_NEAR(with.x, pixelOf(seen).x, 1e-9);
  EXPECT_NEAR(with.x, 200 + 3 * 25, 1e-9);
}

TEST_F(CameraPerspectiveTest, LinesOfSightGoThroughTheCentresOfPixels) {
  for (const bool perspective : {false, true}) {
    value.perspective = perspective;
    look();
    for (const PixelPoint pixel : {PixelPoint{0, 0}, {399, 299}, {123, 45}, {200, 150}}) {
      const LineOfSight sight = camera.sightThrough(pixel.x, pixel.y);
      for (const double part : {0.0, 0.3, 1.0}) {
        const Point point = sight.ray.origin + (part * sight.length) * sight.ray.direction;
        EXPECT_NEAR(pixelOf(point).x, pixel.x + 0.5, 1e-9);
        EXPECT_NEAR(pixelOf(point).y, pixel.y + 0.5, 1e-9);
        const auto [zNear, zFar] = camera.drawnRange();
        EXPECT_NEAR(depthOf(point), zNear + part * (zFar - zNear), 1e-9);
      }
    }
  }
}

TEST_F(CameraPerspectiveTest, PlanesAreMetAlongTheLineOfSight) {
  const auto met = camera.pixelToPlane(37, 211, {0.3, -0.2, 1, -4});
  ASSERT_TRUE(met);
  EXPECT_NEAR(0.3 * met->x - 0.2 * met->y + met->z - 4, 0, 1e-12);
  EXPECT_NEAR(pixelOf(*met).x, 37.5, 1e-9);
  EXPECT_NEAR(pixelOf(*met).y, 211.5, 1e-9);
}

TEST_F(CameraPerspectiveTest, PlanesBehindTheEyeAreNotMet) {
  const Vecteur d = camera.direction();
  const auto planeAt = [&](double distance) {
    const Point point = camera.drawnEye() + distance * d;
    return std::array<double, 4>{d.x, d.y, d.z, -dot(d, point - Point())};
  };
  EXPECT_TRUE(camera.pixelToPlane(10, 10, planeAt(0.01)));
  EXPECT_FALSE(camera.pixelToPlane(10, 10, planeAt(-0.01)));
  value.perspective = false;
  look();
  EXPECT_TRUE(camera.pixelToPlane(10, 10, planeAt(-1000)));
}

TEST_F(CameraPerspectiveTest, TheDepthRangeHoldsTheScene) {
  for (const bool perspective : {false, true}) {
    value.perspective = perspective;
    value.depth = 0.1;
    look();
    expectWholeBoxInRange(kBox);
    camera.translateH(30);
    camera.translateP(-11);
    expectWholeBoxInRange(kBox);
  }
}

TEST_F(CameraPerspectiveTest, WithinTheSceneTheNearPlaneIsSensible) {
  value.width = 0.4;
  value.height = 0.3;
  look();
  const double distance = camera.drawnDistance();
  const auto [zNear, zFar] = camera.drawnRange();
  EXPECT_GE(zNear, 0.0009 * distance);
  EXPECT_LE(zNear, 0.1 * distance);
  for (const Point& corner : cornersOf(kBox)) {
    EXPECT_LT(depthOf(corner), zFar);
  }
  camera.holdScene(Box3{-1e9, 1e9, -1e9, 1e9, -1e9, 1e9});
  EXPECT_DOUBLE_EQ(camera.drawnRange().zNear, 0.1 * distance);
}

TEST_F(CameraPerspectiveTest, AFarEyeWithoutPerspectiveIsBroughtNear) {
  value.perspective = false;
  value.eye = value.target + 1e9 * (value.eye - value.target);
  look();
  EXPECT_LT(camera.drawnDistance(), 1e4);
  expectWholeBoxInRange(kBox);
  EXPECT_EQ(camera.value(), value);
}

TEST_F(CameraPerspectiveTest, GrowsOneSideToTheWindow) {
  value.width = 4;
  value.height = 12;
  look();
  EXPECT_DOUBLE_EQ(camera.width(), 16);
  EXPECT_EQ(camera.height(), 12);
  value.width = 64;
  look();
  EXPECT_EQ(camera.width(), 64);
  EXPECT_DOUBLE_EQ(camera.height(), 48);
}

TEST_F(CameraPerspectiveTest, WhatThePublishedFitsGaveDoesNotGrowAgain) {
  const ClientSize odd{317, 211};
  CParamsVue3D fitted;
  fitted.fitAxis(AxisView::kXZm, kBox, odd, 0.1, 0);
  value = fitted.value();
  camera.take(value);
  camera.growTo(odd);
  EXPECT_EQ(camera.value(), value);
}

TEST_F(CameraPerspectiveTest, FitsLeaveRoomForWhatIsNear) {
  for (const double angle : {10.0, 50.0, 120.0}) {
    value.openingAngle = angle;
    look();
    for (const AxisView view : {AxisView::kXYp, AxisView::kYZm, AxisView::kXZp}) {
      camera.fitAxis(view, kBox, kClient, 0, 0);
      expectWholeBoxInView(kBox);
      expectWholeBoxInRange(kBox);
    }
    camera.fitTurning(kBox, kClient, 0);
    expectWholeBoxInView(kBox);
    camera.fitDefault(kBox, kClient, 0, 0);
    expectWholeBoxInView(kBox);
    camera.fitWhole(kBox, kClient, 0, 0);
    expectWholeBoxInView(kBox);
    EXPECT_TRUE(camera.perspective());
  }
}

TEST_F(CameraPerspectiveTest, ShowsABoxTightly) {
  for (const bool perspective : {false, true}) {
    value.perspective = perspective;
    look();
    const Box3 box{2, 3, 1, 1.5, 4, 5};
    camera.showBox(box, 0);
    expectWholeBoxInView(box);
    expectNear(camera.target(), box.centre());
    expectNear(camera.direction(), normalised(value.target - value.eye), 1e-12);
    double margin = 1e9;
    for (const Point& corner : cornersOf(box)) {
      const PlanePoint pixel = pixelOf(corner);
      margin =
          std::min({margin, pixel.x, kClient.width - pixel.x, pixel.y, kClient.height - pixel.y});
    }
    EXPECT_NEAR(margin, 0, 1e-6);
    EXPECT_NEAR(camera.width() / camera.height(), 4.0 / 3, 1e-12);
  }
}

TEST_F(CameraPerspectiveTest, ABoxWithoutSizeIsCentred) {
  camera.showBox({2, 2, 3, 3, 4, 4}, 0);
  expectNear(camera.target(), Point(2, 3, 4));
  EXPECT_EQ(camera.width(), 16);
  EXPECT_EQ(camera.height(), 12);
}

TEST_F(CameraPerspectiveTest, ShowsAPartOfTheRectangle) {
  const Point corner = camera.pixelToWorld(100, 50);
  const Point inside = camera.pixelToWorld(150, 87);
  camera.showPart(kClient, 200.5, 125.5, 100.5, 50.5);  // from the lower right to the upper left
  EXPECT_NEAR(camera.width(), 4, 1e-12);
  EXPECT_NEAR(camera.height(), 3, 1e-12);
  EXPECT_NEAR(pixelOf(corner).x, 0, 1e-9);
  EXPECT_NEAR(pixelOf(corner).y, 0, 1e-9);
  EXPECT_NEAR(pixelOf(inside).x, 200, 1e-9);
  EXPECT_NEAR(pixelOf(inside).y, 148, 1e-9);
}

TEST_F(CameraPerspectiveTest, APartOfAnotherShapeIsSeenWhole) {
  camera.showPart(kClient, 100, 50, 200, 60);
  EXPECT_NEAR(camera.width(), 4, 1e-12);
  EXPECT_NEAR(camera.height(), 3, 1e-12);
}

TEST_F(CameraPerspectiveTest, ZoomsAboutAPixel) {
  const Point held = camera.pixelToWorld(30, 270);
  camera.zoomAbout(30, 270, 1.7);
  EXPECT_NEAR(pixelOf(held).x, 30.5, 1e-9);
  EXPECT_NEAR(pixelOf(held).y, 270.5, 1e-9);
  EXPECT_NEAR(camera.height(), 12 / 1.7, 1e-12);
}

TEST_F(CameraPerspectiveTest, PansAlongTheScreen) {
  const Point seen = camera.target();
  camera.translateH(-2);
  camera.translateV(-1.5);
  EXPECT_NEAR(pixelOf(seen).x, 200 + 2 * 25, 1e-9);
  EXPECT_NEAR(pixelOf(seen).y, 150 - 1.5 * 25, 1e-9);
  EXPECT_EQ(camera.depth(), 20);
}

TEST_F(CameraPerspectiveTest, TurnsAboutAnyPoint) {
  const Point centre(2, -1, 7);
  const PlanePoint before = pixelOf(centre);
  const double depth = depthOf(centre);
  camera.turnAbout(centre, [](CParamsVue3D& turned) {
    turned.rotateH(40);
    turned.rotateV(-25);
    turned.rotateA(10);
  });
  EXPECT_NEAR(pixelOf(centre).x, before.x, 1e-9);
  EXPECT_NEAR(pixelOf(centre).y, before.y, 1e-9);
  EXPECT_NEAR(depthOf(centre), depth, 1e-12);
  EXPECT_GT(std::abs(dot(camera.direction(), normalised(value.target - value.eye))), 0.1);
  EXPECT_LT(dot(camera.direction(), normalised(value.target - value.eye)), 0.9);
}

TEST_F(CameraPerspectiveTest, ATableKeepsTheUpDirection) {
  value.up = {0, 0, 1};
  value.target = {};
  value.eye = {10, 0, 0};
  look();
  camera.turnTable(90, 30);
  EXPECT_EQ(camera.up(), Vecteur(0, 0, 1));
  expectNear(camera.eye(), Point(0, 10 * std::cos(std::numbers::pi / 6), -5), 1e-12);
  camera.turnTable(0, -400);
  EXPECT_EQ(camera.up(), Vecteur(0, 0, 1));
  EXPECT_NEAR(camera.eye().z, 10 * std::cos(std::numbers::pi / 180), 1e-9);
  EXPECT_NEAR((camera.eye() - Point()).norm(), 10, 1e-9);
}

TEST_F(CameraPerspectiveTest, ATableTurnsAsThePublishedRotationDoes) {
  CParamsVue3D published;
  published.fitAxis(AxisView::kXZm, kBox, kClient, 0, 0);
  CParamsVue3D table(published);
  published.rotateH(20);
  published.rotateV(15);
  table.turnTable(20, 15);
  expectNear(table.eye(), published.eye(), 1e-9);
}

TEST_F(CameraPerspectiveTest, ABallFollowsTheMouse) {
  value.target = {};
  value.eye = {0, 0, 10};
  value.up = {0, 1, 0};
  value.perspective = false;
  look();
  const Point front(0, 0, 5.4);  // on the ball, which has 0.9 of the height's half as radius
  camera.turnBall({200, 150}, {240, 130}, kClient);
  EXPECT_NEAR(pixelOf(front).x, 240, 0.6);
  EXPECT_NEAR(pixelOf(front).y, 130, 0.6);
  camera.turnBall({240, 130}, {200, 150}, kClient);
  expectNear(camera.eye(), Point(0, 0, 10), 1e-9);
  expectNear(camera.up(), Vecteur(0, 1, 0), 1e-9);
}

TEST_F(CameraPerspectiveTest, AtTheRimABallRolls) {
  value.target = {};
  value.eye = {0, 0, 10};
  value.up = {0, 1, 0};
  look();
  camera.turnBall({390, 150}, {200, 290}, kClient);
  EXPECT_LT(dot(camera.up(), Vecteur(0, 1, 0)), 0.5);
}

}  // namespace
}  // namespace zyn::test
