#include "model/Measures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "support/Meshes.h"

namespace zyn {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double area(const Mesh& mesh) { return areaOf(mesh, Triangulation(mesh)); }
double volume(const Mesh& mesh) { return volumeOf(mesh, Triangulation(mesh)); }

Mesh movedBy(Mesh mesh, double offset) {
  for (double& coordinate : mesh.points) {
    coordinate += offset;
  }
  return mesh;
}

TEST(Measures, ofABox) {
  EXPECT_DOUBLE_EQ(area(test::box(1, 2, 3)), 22);
  EXPECT_DOUBLE_EQ(volume(test::box(1, 2, 3)), 6);
  EXPECT_DOUBLE_EQ(volume(test::quadBox(1, 2, 3)), 6);
}

TEST(Measures, ofAConcaveBlock) {
  EXPECT_DOUBLE_EQ(area(test::steppedBlock()), 14);
  EXPECT_DOUBLE_EQ(volume(test::steppedBlock()), 3);
}

TEST(Measures, aMeshTurnedInsideOutHasANegativeVolume) {
  Mesh mesh = test::box(1, 2, 3);
  for (std::size_t corner = 0; corner < mesh.corners.size(); corner += 3) {
    std::swap(mesh.corners[corner], mesh.corners[corner + 1]);
  }
  EXPECT_DOUBLE_EQ(volume(mesh), -6);
}

TEST(Measures, farAwayAsAtTheOrigin) {
  EXPECT_DOUBLE_EQ(volume(movedBy(test::box(1, 2, 3), 1e6)), 6);
  EXPECT_DOUBLE_EQ(area(movedBy(test::box(1, 2, 3), 1e6)), 22);
}

TEST(Measures, sidesOfAnySize) {
  // Powers of two: exact in every size.
  for (const int exponent : {-400, -340, -330, 330, 340, 400, 500}) {
    const double unit = std::ldexp(1, exponent);
    EXPECT_DOUBLE_EQ(area(test::box(unit, 2 * unit, 3 * unit)), 22 * unit * unit) << exponent;
  }
  for (const int exponent : {-250, -180, 180, 250, 330}) {
    const double unit = std::ldexp(1, exponent);
    EXPECT_DOUBLE_EQ(volume(test::box(unit, 2 * unit, 3 * unit)), 6 * unit * unit * unit)
        << exponent;
  }
  EXPECT_EQ(area(test::box(1e200, 1e200, 1e200)), kInfinity) << "no number is as large";
  EXPECT_EQ(area(test::box(0, 0, 0)), 0);
}

TEST(Measures, aFineSphereIsNearlyRound) {
  EXPECT_NEAR(volume(test::sphere(100, 200)), 4 * std::numbers::pi / 3, 2e-3);
  EXPECT_NEAR(area(test::sphere(100, 200)), 4 * std::numbers::pi, 4e-3);
}

TEST(Measures, boundsHoldPointsOfNoFaceToo) {
  Mesh mesh = test::box(1, 2, 3);
  test::addPoint(mesh, -5, 1, 9);
  EXPECT_EQ(boundsOf(mesh), (Box3{-5, 1, 0, 2, 0, 9}));
  EXPECT_EQ(boundsOf({}), std::nullopt);
}

TEST(Measures, nothingMeasuresNothing) {
  EXPECT_EQ(area({}), 0);
  EXPECT_EQ(volume({}), 0);
}

TEST(Triangulation, degenerateFacesHaveNoTriangle) {
  Mesh mesh = test::steppedBlock();
  test::addPolygon(mesh, {0, 1, 0, 1});
  test::addPolygon(mesh, {0, 1, 2});
  const Triangulation triangles(mesh);
  const std::size_t expected[] = {4, 4, 2, 2, 2, 2, 2, 2, 0, 1};
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    std::size_t count = 0;
    triangles.forEach(mesh, face, [&](const Triangulation::Triangle& corners) {
      ++count;
      for (const std::uint32_t corner : corners) {
        EXPECT_GE(corner, mesh.faceBegin(face));
        EXPECT_LT(corner, mesh.faceEnd(face));
      }
    });
    EXPECT_EQ(count, expected[face]) << face;
  }

  Mesh plain = test::box(1, 1, 1);
  test::addFace(plain, {0, 0, 1});
  std::size_t count = 0;
  Triangulation(plain).forEach(plain, 12, [&](const Triangulation::Triangle&) { ++count; });
  EXPECT_EQ(count, 0u);
}

}  // namespace
}  // namespace zyn
