#include "view3d/CameraValue.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "core/VectorMath.h"
#include "support/GeometryChecks.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string fault(const CameraValue& camera) { return faultOf(camera).value_or("none"); }

TEST(CameraValueTest, TheDefaultCanBeUsed) { EXPECT_EQ(fault(CameraValue()), "none"); }

TEST(CameraValueTest, FaultsNameTheMember) {
  CameraValue camera;
  camera.eye.y = kNaN;
  EXPECT_EQ(fault(camera), "Oeil: it has numbers that are not finite");
  camera = {};
  camera.target.z = kInfinity;
  EXPECT_EQ(fault(camera), "Cible: it has numbers that are not finite");
  camera = {};
  camera.up.x = -kInfinity;
  EXPECT_EQ(fault(camera), "Haut: it has numbers that are not finite");
  camera = {};
  camera.width = 0;
  EXPECT_EQ(fault(camera), "Largeur: it has to be above 0");
  camera = {};
  camera.height = kNaN;
  EXPECT_EQ(fault(camera), "Hauteur: it has to be above 0");
  camera = {};
  camera.depth = -1;
  EXPECT_EQ(fault(camera), "Profondeur: it has to be 0 or above");
}

TEST(CameraValueTest, TheAngleHasBothLimits) {
  CameraValue camera;
  for (const double angle : {1.0, 170.0}) {
    camera.openingAngle = angle;
    EXPECT_EQ(fault(camera), "none") << angle;
  }
  for (const double angle : {0.999, 170.001, kNaN}) {
    camera.openingAngle = angle;
    EXPECT_EQ(fault(camera), "AngleOuverture: it has to be from 1 to 170") << angle;
  }
}

TEST(CameraValueTest, DirectionsThatAreNoneAreFaults) {
  CameraValue camera;
  camera.eye = camera.target;
  EXPECT_EQ(fault(camera), "Oeil: it lies at Cible, or too far from it");
  camera = {};
  camera.up = {0, 0, 0};
  EXPECT_EQ(fault(camera), "Haut: it has no direction");
  camera.up = {0, 0, -3};
  EXPECT_EQ(fault(camera), "Haut: it is parallel to the line from Oeil to Cible");
}

class BetweenCamerasTest : public testing::Test {
 protected:
  BetweenCamerasTest() {
    a.eye = {0, 0, 4};
    a.width = 2;
    a.height = 1;
    a.depth = 4;
    b.eye = {10 + 16.0, 20, 30};
    b.target = {10, 20, 30};
    b.up = {0, 1, 0};
    b.width = 8;
    b.height = 9;
    b.depth = 16;
    b.openingAngle = 90;
    b.perspective = true;
  }

  static Vecteur side(const CameraValue& camera) { return normalised(camera.eye - camera.target); }

  CameraValue a;
  CameraValue b;
};

TEST_F(BetweenCamerasTest, TheEndsAreExact) {
  EXPECT_EQ(between(a, b, 0), a);
  EXPECT_EQ(between(a, b, 1), b);
}

TEST_F(BetweenCamerasTest, SizesGoGeometricallyAndTheTargetStraight) {
  const CameraValue middle = between(a, b, 0.5);
  EXPECT_DOUBLE_EQ(middle.width, 4);
  EXPECT_DOUBLE_EQ(middle.height, 3);
  EXPECT_DOUBLE_EQ(middle.depth, 8);
  EXPECT_DOUBLE_EQ(middle.openingAngle, 60);
  expectNear(middle.target, Point(5, 10, 15), 1e-12);
  EXPECT_NEAR((middle.eye - middle.target).norm(), 8, 1e-12);
}

TEST_F(BetweenCamerasTest, PerspectiveSwitchesInTheMiddle) {
  EXPECT_FALSE(between(a, b, 0.4999).perspective);
  EXPECT_TRUE(between(a, b, 0.5).perspective);
}

TEST_F(BetweenCamerasTest, TurnsByTheShortestWay) {
  const double third = std::numbers::pi / 2 / 3;
  expectNear(side(between(a, b, 1.0 / 3)), Vecteur(std::sin(third), 0, std::cos(third)), 1e-12);
  b.eye = {10 - 16 * std::sin(3.0), 20, 30 + 16 * std::cos(3.0)};  // a little less than half a turn
  expectNear(side(between(a, b, 0.5)), Vecteur(-std::sin(1.5), 0, std::cos(1.5)), 1e-12);
}

TEST_F(BetweenCamerasTest, HalfATurnIsFoundAsWell) {
  b.eye = {10, 20, 30 - 16.0};
  const CameraValue middle = between(a, b, 0.5);
  EXPECT_NEAR(std::abs(side(middle).x), 1, 1e-12);
  expectNear(middle.up, Vecteur(0, 1, 0), 1e-12);
  b.eye = {10, 20, 30 + 16.0};
  b.up = {0, -1, 0};
  EXPECT_NEAR(std::abs(between(a, b, 0.5).up.x), 1, 1e-12);
}

TEST_F(BetweenCamerasTest, EveryOrientationIsMetAtTheEnds) {
  for (const Vecteur& eye : {Vecteur(1, 2, 3), Vecteur(-3, 1, -2), Vecteur(0, -1, 0.01)}) {
    for (const Vecteur& up : {Vecteur(0, 0, 1), Vecteur(1, -1, 0.5), Vecteur(-0.2, 0.1, -5)}) {
      a.eye = a.target + eye;
      a.up = up;
      expectNear(side(between(a, b, 1e-12)), side(a), 1e-9);
      expectNear(side(between(b, a, 1 - 1e-12)), side(a), 1e-9);
      const CameraValue near = between(a, b, 1e-12);
      expectNear(cross(near.up, side(near)), normalised(cross(a.up, side(a))), 1e-9);
    }
  }
}

}  // namespace
}  // namespace zyn::test
