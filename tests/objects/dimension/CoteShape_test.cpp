#include "objects/dimension/CoteShape.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/VectorMath.h"

namespace zyn {
namespace {

constexpr double kExact = 1e-12;

void expectVector(const Vecteur& actual, const Vecteur& expected) {
  EXPECT_NEAR(actual.x, expected.x, kExact);
  EXPECT_NEAR(actual.y, expected.y, kExact);
  EXPECT_NEAR(actual.z, expected.z, kExact);
}

CotePlane planeOf(std::int32_t type, const Vecteur& normal, const Vecteur& direction = {0, 0, 0}) {
  CoteShape shape;
  shape.type = type;
  shape.normal = normal;
  shape.direction = direction;
  shape.second = {3, 4, 12};
  return CotePlane(shape);
}

/// Three vectors of length 1 that stand square on one another, right-handed.
void expectFrame(const CotePlane& plane) {
  EXPECT_NEAR(plane.normal.norm(), 1, kExact);
  EXPECT_NEAR(plane.along.norm(), 1, kExact);
  EXPECT_NEAR(dot(plane.normal, plane.along), 0, kExact);
  expectVector(plane.across, cross(plane.normal, plane.along));
  EXPECT_NEAR(std::abs(dot(plane.reading, plane.along)), 1, kExact);
}

TEST(CotePlaneTest, OfANewDimensionIsThatOfXAndY) {
  const CotePlane plane{CoteShape()};
  expectVector(plane.normal, {0, 0, 1});
  expectVector(plane.along, {1, 0, 0});
  expectVector(plane.across, {0, 1, 0});
  expectVector(plane.reading, {1, 0, 0});
}

TEST(CotePlaneTest, HorizontalAndVerticalInThePlaneOfXAndY) {
  const CotePlane horizontal = planeOf(CoteShape::kHorizontal, {0, 0, 1});
  expectVector(horizontal.along, {1, 0, 0});
  expectVector(horizontal.across, {0, 1, 0});
  expectVector(horizontal.reading, {1, 0, 0});
  const CotePlane vertical = planeOf(CoteShape::kVertical, {0, 0, 1});
  expectVector(vertical.along, {0, -1, 0});
  expectVector(vertical.across, {1, 0, 0});
  expectVector(vertical.reading, {0, 1, 0});
}

TEST(CotePlaneTest, AlignedFollowsThePointsWithinThePlane) {
  const CotePlane plane = planeOf(CoteShape::kAligned, {0, 0, 1});
  expectVector(plane.along, {0.6, 0.8, 0});
  expectVector(plane.across, {-0.8, 0.6, 0});
  expectVector(plane.reading, {0.6, 0.8, 0});
}

TEST(CotePlaneTest, UprightPlanesAreSeenWithZUpwards) {
  const struct {
    Vecteur normal;
    Vecteur right;
  } sides[] = {{{0, -1, 0}, {1, 0, 0}},
               {{0, 1, 0}, {-1, 0, 0}},
               {{1, 0, 0}, {0, 1, 0}},
               {{-1, 0, 0}, {0, -1, 0}},
               {{3, -3, 0}, {std::sqrt(0.5), std::sqrt(0.5), 0}}};
  for (const auto& [normal, right] : sides) {
    const CotePlane horizontal = planeOf(CoteShape::kHorizontal, normal);
    expectFrame(horizontal);
    expectVector(horizontal.along, right);
    expectVector(horizontal.across, {0, 0, 1});
    const CotePlane vertical = planeOf(CoteShape::kVertical, normal);
    expectFrame(vertical);
    expectVector(vertical.along, {0, 0, -1});
    expectVector(vertical.across, right);
    expectVector(vertical.reading, {0, 0, 1});
  }
}

TEST(CotePlaneTest, FromBehindLeftAndRightChange) {
  const CotePlane plane = planeOf(CoteShape::kHorizontal, {0, 0, -5});
  expectVector(plane.along, {-1, 0, 0});
  expectVector(plane.across, {0, 1, 0});
}

TEST(CotePlaneTest, AGivenDirectionComesBeforeTheType) {
  for (const std::int32_t type : {1, 2, 3, 0}) {
    const CotePlane plane = planeOf(type, {0, 0, 2}, {-3, -4, 7});
    expectFrame(plane);
    expectVector(plane.along, {-0.6, -0.8, 0});
  }
  // Text beside a line is not upside down; text alone runs as it is told.
  expectVector(planeOf(CoteShape::kAligned, {0, 0, 2}, {-3, -4, 7}).reading, {0.6, 0.8, 0});
  expectVector(planeOf(0, {0, 0, 2}, {-3, -4, 7}).reading, {-0.6, -0.8, 0});
}

TEST(CotePlaneTest, WhatIsNoDirectionInThePlaneIsIgnored) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const Vecteur useless[] = {{0, 0, 0}, {0, 0, 9}, {0, 0, -1}, {kNaN, 0, 0}, {kInfinity, 1, 0}};
  for (const Vecteur& direction : useless) {
    expectVector(planeOf(CoteShape::kHorizontal, {0, 0, 1}, direction).along, {1, 0, 0});
  }
  for (const Vecteur& normal : {Vecteur{0, 0, 0}, Vecteur{kNaN, 0, 0}, Vecteur{0, kInfinity, 0}}) {
    expectVector(planeOf(CoteShape::kHorizontal, normal).normal, {0, 0, 1});
  }
}

TEST(CotePlaneTest, PointsThatGiveNoDirectionAreMeasuredHorizontally) {
  CoteShape shape;
  shape.type = CoteShape::kAligned;
  expectVector(CotePlane(shape).along, {1, 0, 0});
  shape.second = {0, 0, 4};
  expectVector(CotePlane(shape).along, {1, 0, 0});
}

TEST(CotePlaneTest, IsAFrameForAnyNormalAndDirection) {
  for (int i = 0; i < 200; ++i) {
    const double a = 0.37 * i;
    const Vecteur normal{std::cos(a), std::sin(1.7 * a), std::cos(2.9 * a + 1)};
    const Vecteur direction{std::sin(3.1 * a), std::cos(0.3 * a), std::sin(a)};
    for (const std::int32_t type : {0, 1, 2, 3}) {
      expectFrame(planeOf(type, normal));
      expectFrame(planeOf(type, normal, direction));
    }
  }
}

}  // namespace
}  // namespace zyn
