#include "core/ScreenMap.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/VectorMath.h"
#include "support/Screens.h"

namespace zyn {
namespace {

using test::identity;
using test::kViewport;
using test::orthographicScreen;
using test::product;

constexpr double kExact = 1e-12;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void expectVector(const Vecteur& actual, const Vecteur& expected, double tolerance = kExact) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

/// One pixel right and up from the point lead where the frame says, at the same depth.
void expectPixelSteps(const ScreenMap& screen, const Point& point, double tolerance) {
  const auto frame = screen.at(point);
  ASSERT_TRUE(frame);
  const PlanePoint here = screen.pixelOf(point);
  const PlanePoint right = screen.pixelOf(point + frame->right());
  const PlanePoint up = screen.pixelOf(point + frame->up());
  EXPECT_NEAR(right.x - here.x, 1, tolerance);
  EXPECT_NEAR(right.y - here.y, 0, tolerance);
  EXPECT_NEAR(up.x - here.x, 0, tolerance);
  EXPECT_NEAR(up.y - here.y, 1, tolerance);
}

TEST(ScreenMapTest, AModelUnitIsAPixelWithoutAnyMatrix) {
  const ScreenMap screen;
  const PlanePoint pixel = screen.pixelOf({12, 34, 56});
  EXPECT_EQ(pixel.x, 12);
  EXPECT_EQ(pixel.y, 34);
  const auto frame = screen.at({12, 34, 56});
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->pixel(), 1);
  expectVector(frame->right(), {1, 0, 0});
  expectVector(frame->up(), {0, 1, 0});
}

TEST(ScreenMapTest, MapsAsOpenGLDoes) {
  const ScreenMap screen(identity(), {test::orthographic(-2, 6, -1, 3, -5, 5), {10, 20, 800, 600}});
  const PlanePoint corner = screen.pixelOf({-2, -1, 0});
  EXPECT_NEAR(corner.x, 10, kExact);
  EXPECT_NEAR(corner.y, 20, kExact);
  const PlanePoint point = screen.pixelOf({0, 2, 3});
  EXPECT_NEAR(point.x, 10 + 800 * 2 / 8.0, kExact);
  EXPECT_NEAR(point.y, 20 + 600 * 3 / 4.0, kExact);
}

TEST(ScreenMapTest, PixelLengthOfAnOrthographicView) {
  for (const double pixelsPerUnit : {0.001, 1.0, 2.5, 4000.0}) {
    const auto frame = orthographicScreen(pixelsPerUnit).at({1, 2, 3});
    ASSERT_TRUE(frame);
    EXPECT_NEAR(frame->pixel() * pixelsPerUnit, 1, kExact);
    EXPECT_NEAR(frame->pixelsOf({0, 0, 3}) / pixelsPerUnit, 3, kExact);
    EXPECT_NEAR(frame->pixelsOf({3, -4, 12}) / pixelsPerUnit, 13, kExact);
  }
}

TEST(ScreenMapTest, KnowsAViewWithPerspectiveByItsPixels) {
  const Vecteur right{0, 0.3, 0.4};
  const Vecteur up{0.5, 0, 0};
  const Point origin{7, 8, 9};
  const Point eye = origin + 10 * right + 20 * up + Vecteur{0, -8, 6};  // 10 units before the plane
  const ScreenMap screen = ScreenMap::perspective(origin, right, up, eye);
  for (const double part : {0.25, 1.0, 3.0}) {
    const Point seen = origin + 30 * right + -12 * up;
    const Point point = eye + part * (seen - eye);
    const PlanePoint pixel = screen.pixelOf(point);
    EXPECT_NEAR(pixel.x, 30, kExact);
    EXPECT_NEAR(pixel.y, -12, kExact);
    const auto frame = screen.at(point);
    ASSERT_TRUE(frame);
    EXPECT_NEAR(frame->pixel(), part * 0.5, kExact);
  }
}

TEST(ScreenMapTest, KnowsAViewByItsPixels) {
  const Vecteur right{0, 0.3, 0.4};
  const Vecteur up{0.5, 0, 0};
  const Point origin{7, 8, 9};
  const ScreenMap screen = ScreenMap::orthographic(origin, right, up);
  const PlanePoint pixel = screen.pixelOf(origin + 30 * right + -12 * up + Vecteur{0, -4, 3});
  EXPECT_NEAR(pixel.x, 30, kExact);
  EXPECT_NEAR(pixel.y, -12, kExact);
  const auto frame = screen.at(origin);
  ASSERT_TRUE(frame);
  expectVector(frame->right(), right);
  expectVector(frame->up(), up);
  EXPECT_NEAR(frame->pixelsOf({0, -4, 3}), 10, kExact);
}

TEST(ScreenMapTest, FollowsTurnedAndScaledModels) {
  const GlMatrix turned =
      product(test::rotation(0.7, 0), product(test::rotation(-0.4, 1), test::scaling(3, 3, 3)));
  const ScreenMap screen = orthographicScreen(2, turned);
  const auto frame = screen.at({5, 6, 7});
  ASSERT_TRUE(frame);
  EXPECT_NEAR(frame->pixel(), 1 / 6.0, kExact);
  EXPECT_NEAR(frame->right().norm(), 1 / 6.0, kExact);
  EXPECT_NEAR(dot(frame->right(), frame->up()), 0, kExact);
  EXPECT_NEAR(frame->pixelsOf({0, 0, 1}), 6, kExact);
  expectPixelSteps(screen, {5, 6, 7}, 1e-10);
}

TEST(ScreenMapTest, FollowsAxesOfDifferentScales) {
  const ScreenMap screen = orthographicScreen(1, test::scaling(4, 10, 1));
  const auto frame = screen.at({0, 0, 0});
  ASSERT_TRUE(frame);
  expectVector(frame->right(), {0.25, 0, 0});
  expectVector(frame->up(), {0, 0.1, 0});
  EXPECT_NEAR(frame->pixelsOf({3, 0, 0}), 12, kExact);
  EXPECT_NEAR(frame->pixelsOf({0, 3, 0}), 30, kExact);
  EXPECT_NEAR(frame->pixel(), 0.1, kExact);
}

TEST(ScreenMapTest, FollowsMirroredModels) {
  const ScreenMap screen = orthographicScreen(1, test::scaling(-1, 1, 1));
  const auto frame = screen.at({0, 0, 0});
  ASSERT_TRUE(frame);
  expectVector(frame->right(), {-1, 0, 0});
  expectVector(frame->up(), {0, 1, 0});
}

TEST(ScreenMapTest, InPerspectiveAPixelIsLongerFartherAway) {
  const Lens lens{test::perspective(0.4, 0.3, 1, 100), kViewport};
  const ScreenMap screen(identity(), lens);
  for (const double distance : {2.0, 10.0, 60.0}) {
    for (const double x : {0.0, 0.3 * distance}) {
      const Point point{x, -0.1 * distance, -distance};
      const auto frame = screen.at(point);
      ASSERT_TRUE(frame);
      EXPECT_NEAR(frame->pixel(), 0.6 * distance / 600, kExact);
      EXPECT_NEAR(frame->right().z, 0, kExact);
      EXPECT_NEAR(frame->up().z, 0, kExact);
      expectPixelSteps(screen, point, 1e-10);
    }
  }
}

TEST(ScreenMapTest, BehindTheEyeThereArePixelsToo) {
  const ScreenMap screen(identity(), {test::perspective(0.4, 0.3, 1, 100), kViewport});
  const auto frame = screen.at({0, 0, 10});
  ASSERT_TRUE(frame);
  EXPECT_NEAR(frame->pixel(), 0.6 * 10 / 600, kExact);
}

TEST(ScreenMapTest, OnScreenTellsTheStepInPixels) {
  const auto frame = orthographicScreen(2, test::rotation(0.5, 2)).at({9, 9, 9});
  ASSERT_TRUE(frame);
  const PlanePoint step = frame->onScreen({3, 0, 100});
  EXPECT_NEAR(step.x, 6 * std::cos(0.5), kExact);
  EXPECT_NEAR(step.y, 6 * std::sin(0.5), kExact);
}

TEST(ScreenMapTest, ThereIsNoFrameWhereTheMapCannotBeTurnedRound) {
  const Lens lens{test::orthographic(-1, 1, -1, 1, -1, 1), kViewport};
  EXPECT_FALSE(ScreenMap(GlMatrix{}, lens).at({0, 0, 0}));
  EXPECT_FALSE(ScreenMap(test::scaling(1, 0, 1), lens).at({0, 0, 0}));
  EXPECT_FALSE(ScreenMap(identity(), {GlMatrix{}, kViewport}).at({0, 0, 0}));
  EXPECT_FALSE(ScreenMap(identity(), {lens.projection, {0, 0, 0, 600}}).at({0, 0, 0}));
  EXPECT_FALSE(ScreenMap(identity(), {lens.projection, {0, 0, 800, 0}}).at({0, 0, 0}));
  EXPECT_FALSE(ScreenMap(test::scaling(kNaN, 1, 1), lens).at({0, 0, 0}));
  EXPECT_FALSE(ScreenMap(test::scaling(kInfinity, 1, 1), lens).at({0, 0, 0}));
  // In the plane of the eye.
  EXPECT_FALSE(ScreenMap(identity(), {test::perspective(1, 1, 1, 100), kViewport}).at({1, 2, 0}));
}

TEST(ScreenMapTest, ThereIsNoFrameAtPointsThatAreNotFinite) {
  for (const double bad : {kNaN, kInfinity, -kInfinity}) {
    EXPECT_FALSE(orthographicScreen(1).at({bad, 0, 0}));
    EXPECT_FALSE(orthographicScreen(1).at({0, bad, 0}));
    EXPECT_FALSE(orthographicScreen(1).at({0, 0, bad}));
  }
}

}  // namespace
}  // namespace zyn
