#include "model/Faces.h"

#include <gtest/gtest.h>

#include <numbers>
#include <numeric>
#include <random>

#include "support/GeometryChecks.h"
#include "support/Meshes.h"

namespace zyn {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

Mesh triangle(const Vector& a, const Vector& b, const Vector& c) {
  Mesh mesh;
  for (const Vector& p : {a, b, c}) {
    test::addPoint(mesh, p.x, p.y, p.z);
  }
  test::addFace(mesh, {0, 1, 2});
  return mesh;
}

TEST(Faces, theNormalFollowsTheRightHand) {
  expectNear(triangleNormal({0, 0, 5}, {2, 0, 5}, {0, 3, 5}), {0, 0, 1});
  expectNear(triangleNormal({0, 0, 5}, {0, 3, 5}, {2, 0, 5}), {0, 0, -1});
}

TEST(Faces, aTriangleOfAnySizeHasANormal) {
  for (const double size : {1e-300, 1e-160, 1e-12, 1e12, 1e160, 1e300}) {
    expectNear(triangleNormal({0, 0, 0}, {size, 0, 0}, {0, 0, size}), {0, -1, 0});
  }
}

TEST(Faces, withoutHeightItHasNone) {
  EXPECT_TRUE(isDegenerate(triangleNormal({1, 2, 3}, {1, 2, 3}, {4, 5, 6})));
  EXPECT_TRUE(isDegenerate(triangleNormal({1, 2, 3}, {1, 2, 3}, {1, 2, 3})));
  EXPECT_TRUE(isDegenerate(triangleNormal({0, 0, 0}, {0.1, 0.1, 0.1}, {0.3, 0.3, 0.3})));
  EXPECT_TRUE(isDegenerate(triangleNormal({0, 0, 0}, {1e200, 0, 0}, {3e200, 0, 0})));
  EXPECT_FALSE(isDegenerate(triangleNormal({0, 0, 0}, {1, 0, 0}, {0.5, 1e-9, 0})));
}

TEST(Faces, aPolygonHasTheNormalOfItsPlane) {
  const Mesh block = test::steppedBlock();
  const Vector expected[] = {{0, 0, -1}, {0, 0, 1}, {0, -1, 0}, {1, 0, 0},
                             {0, 1, 0},  {1, 0, 0}, {0, 1, 0},  {-1, 0, 0}};
  for (std::size_t face = 0; face < 8; ++face) {
    expectNear(faceNormal(block, face), expected[face]);
  }
}

TEST(Faces, aPolygonOnALineIsDegenerate) {
  Mesh mesh;
  for (const double x : {0.0, 1.0, 2.0, 3.0}) {
    test::addPoint(mesh, x, x, x);
  }
  test::addPolygon(mesh, {0, 1, 2, 3});
  EXPECT_TRUE(isDegenerate(faceNormal(mesh, 0)));
}

TEST(Faces, aTriangleHasAreaExactlyWhereItHasANormal) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> place(-1, 1);
  std::uniform_real_distribution<double> exponent(-14, -10);
  int flat = 0;
  for (int i = 0; i < 100000; ++i) {
    const double size = i % 3 == 0 ? std::pow(10, 160 * place(random)) : 1;
    const auto point = [&] { return Vector{place(random), place(random), place(random)} * size; };
    const Vector a = point();
    const Vector b = point();
    const Vector c =
        i % 2 == 0 ? point() : a + (b - a) * 0.3 + point() * std::pow(10, exponent(random));
    const bool isFlat = isDegenerate(triangleNormal(a, b, c));
    EXPECT_EQ(hasArea(a, b, c), !isFlat);
    flat += isFlat ? 1 : 0;
  }
  EXPECT_GT(flat, 1000);
  EXPECT_LT(flat, 60000);
}

TEST(Faces, anglesAreExact) {
  for (int tenths = 1; tenths < 1800; tenths += 7) {
    const double angle = tenths * kDegree / 10;
    const FaceShapes shapes(
        triangle({0, 0, 0}, {3, 0, 0}, {2 * std::cos(angle), 2 * std::sin(angle), 0}));
    EXPECT_NEAR(shapes.angles[0], angle, 1e-15 * tenths);
    EXPECT_NEAR(shapes.angles[0] + shapes.angles[1] + shapes.angles[2], std::numbers::pi, 1e-14);
    EXPECT_NEAR(std::sin(shapes.angles[1]) / 2,
                std::sin(shapes.angles[0]) /
                    length(Vector{2 * std::cos(angle) - 3, 2 * std::sin(angle), 0}),
                1e-14);
  }
}

TEST(Faces, anglesOfHugeAndTinyTriangles) {
  for (const double size : {1e-300, 1e-170, 1e170, 1e300}) {
    const FaceShapes shapes(triangle({0, 0, 0}, {size, 0, 0}, {0, size, 0}));
    EXPECT_NEAR(shapes.angles[0], 90 * kDegree, 1e-12) << size;
    EXPECT_NEAR(shapes.angles[1], 45 * kDegree, 1e-12) << size;
  }
}

TEST(Faces, aReentrantCornerHasAnAngleBeyondHalfATurn) {
  const FaceShapes shapes(test::steppedBlock());
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_NEAR(shapes.angles[6 + i], (i == 3 ? 270 : 90) * kDegree, 1e-12) << i;
  }
}

TEST(Faces, cornersLeadAroundTheirFaces) {
  const Mesh block = test::steppedBlock();
  const FaceCorners around(block);
  for (std::uint32_t face = 0; face < block.faceCount(); ++face) {
    const auto begin = static_cast<std::uint32_t>(block.faceBegin(face));
    const auto end = static_cast<std::uint32_t>(block.faceEnd(face));
    for (std::uint32_t corner = begin; corner < end; ++corner) {
      EXPECT_EQ(around.faceOf(corner), face);
      EXPECT_EQ(around.next(corner), corner + 1 == end ? begin : corner + 1);
      EXPECT_EQ(around.previous(around.next(corner)), corner);
    }
  }
  const Mesh triangles = test::box(1, 2, 3);
  const FaceCorners threes(triangles);
  EXPECT_EQ(threes.faceOf(5), 1u);
  EXPECT_EQ(threes.next(5), 3u);
  EXPECT_EQ(threes.previous(3), 5u);
}

TEST(Faces, thePointsKnowTheirCorners) {
  Mesh mesh = test::box(1, 2, 3);
  test::addPoint(mesh, 9, 9, 9);  // of no face
  const PointCorners corners(mesh);
  std::size_t count = 0;
  for (std::size_t point = 0; point < mesh.pointCount(); ++point) {
    EXPECT_TRUE(std::is_sorted(corners.begin(point), corners.end(point)));
    for (const auto* at = corners.begin(point); at != corners.end(point); ++at, ++count) {
      EXPECT_EQ(mesh.corners[*at], point);
    }
  }
  EXPECT_EQ(count, mesh.corners.size());
}

}  // namespace
}  // namespace zyn
