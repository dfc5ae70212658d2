#include "model/BoxTree.h"

#include <gtest/gtest.h>

#include <set>

#include "model/Faces.h"
#include "model/Measures.h"
#include "support/GeometryChecks.h"
#include "support/Meshes.h"

namespace zyn {
namespace {

std::optional<MeshHit> hit(const Mesh& mesh, const Vector& origin, const Vector& direction,
                           bool frontsOnly = false) {
  return BoxTree(mesh).nearest(mesh, Triangulation(mesh), origin, direction, frontsOnly);
}

/// Where the ray meets the plane of a triangle, if that is inside of it.
std::optional<double> meet(const Vector& a, const Vector& b, const Vector& c, const Vector& origin,
                           const Vector& direction) {
  const Vector n = cross(b - a, c - a);
  const double along = dot(n, direction);
  if (along == 0) {
    return std::nullopt;
  }
  const double distance = dot(n, a - origin) / along;
  const Vector p = origin + direction * distance;
  const bool isInside = dot(n, cross(b - a, p - a)) >= 0 && dot(n, cross(c - b, p - b)) >= 0 &&
                        dot(n, cross(a - c, p - c)) >= 0;
  return isInside && distance >= 0 ? std::optional<double>(distance) : std::nullopt;
}

std::optional<double> nearestByLooking(const Mesh& mesh, const Vector& origin,
                                       const Vector& direction, bool frontsOnly) {
  std::optional<double> nearest;
  const Triangulation triangles(mesh);
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    triangles.forEach(mesh, face, [&](const Triangulation::Triangle& corners) {
      const Vector a = cornerAt(mesh, corners[0]);
      const Vector b = cornerAt(mesh, corners[1]);
      const Vector c = cornerAt(mesh, corners[2]);
      const auto distance = meet(a, b, c, origin, direction);
      const bool isSeen = !frontsOnly || dot(cross(b - a, c - a), direction) < 0;
      if (distance && isSeen && (!nearest || *distance < *nearest)) {
        nearest = distance;
      }
    });
  }
  return nearest;
}

void expectAsByLooking(const Mesh& mesh, const BoxTree& tree, test::Random& random) {
  const Triangulation triangles(mesh);
  for (int i = 0; i < 100; ++i) {
    const Vector origin{random.between(-3, 3), random.between(-3, 3), random.between(-3, 3)};
    const Vector direction =
        Vector{random.between(-1, 1), random.between(-1, 1), random.between(-1, 1)} - origin;
    const bool frontsOnly = random.oneIn(2);
    const auto found = tree.nearest(mesh, triangles, origin, direction, frontsOnly);
    const auto expected = nearestByLooking(mesh, origin, direction, frontsOnly);
    ASSERT_EQ(found.has_value(), expected.has_value());
    if (found) {
      EXPECT_NEAR(found->distance, *expected, 1e-9);
    }
  }
}

TEST(BoxTree, aRayMeetsTheNearSideFirst) {
  const Mesh mesh = test::quadBox(2, 2, 2);
  const auto front = hit(mesh, {0.5, 0.7, 9}, {0, 0, -1});
  ASSERT_TRUE(front);
  EXPECT_EQ(front->face, 1u);
  EXPECT_DOUBLE_EQ(front->distance, 7);
  expectNear(front->normal, {0, 0, 1});
}

TEST(BoxTree, fromWithinItMeetsABackOrNoneWhereOnlyFrontsCount) {
  const Mesh mesh = test::box(2, 2, 2);
  EXPECT_TRUE(hit(mesh, {1, 1.1, 1}, {0, 0, 1}));
  EXPECT_FALSE(hit(mesh, {1, 1.1, 1}, {0, 0, 1}, true));
  EXPECT_TRUE(hit(mesh, {1, 1.1, 5}, {0, 0, -1}, true));
}

TEST(BoxTree, whatLiesBehindTheOriginIsNotMet) {
  EXPECT_FALSE(hit(test::box(2, 2, 2), {1, 1, 5}, {0, 0, 1}));
  EXPECT_FALSE(hit({}, {1, 1, 5}, {0, 0, 1}));
}

TEST(BoxTree, nothingSlipsThroughBetweenNeighbours) {
  // Every ray passes through an edge or a corner of the grid, in directions of every kind.
  Mesh grid;
  constexpr std::uint32_t kSide = 20;
  for (std::uint32_t i = 0; i <= kSide; ++i) {
    for (std::uint32_t j = 0; j <= kSide; ++j) {
      test::addPoint(grid, 0.1 * i, 0.1 * j, 0.3);
    }
  }
  for (std::uint32_t i = 0; i < kSide; ++i) {
    for (std::uint32_t j = 0; j < kSide; ++j) {
      const std::uint32_t a = i * (kSide + 1) + j;
      test::addFace(grid, {a, a + kSide + 1, a + kSide + 2});
      test::addFace(grid, {a, a + kSide + 2, a + 1});
    }
  }
  const BoxTree tree(grid);
  const Triangulation triangles(grid);
  test::Random random(5);
  for (int i = 0; i < 20000; ++i) {
    const std::uint32_t at =
        (1 + random.below(kSide - 1)) * (kSide + 1) + 1 + random.below(kSide - 1);
    const Vector target = (pointAt(grid, at) + pointAt(grid, random.oneIn(2) ? at : at + 1)) * 0.5;
    const Vector origin = random.oneIn(2) ? target + Vector{0, 0, 7}
                                          : Vector{random.between(-5, 5), random.between(-5, 5), 2};
    EXPECT_TRUE(tree.nearest(grid, triangles, origin, target - origin, false));
  }
}

TEST(BoxTree, findsWhatOneFindsByLooking) {
  test::Random random(2);
  for (int i = 0; i < 20; ++i) {
    const Mesh mesh = test::soup(random, 30, 1 + random.below(200U));
    expectAsByLooking(mesh, BoxTree(mesh), random);
  }
  const Mesh block = test::steppedBlock();
  expectAsByLooking(block, BoxTree(block), random);
  const Mesh sphere = test::sphere(20, 30);
  expectAsByLooking(sphere, BoxTree(sphere), random);
}

TEST(BoxTree, followsPointsThatMove) {
  test::Random random(8);
  Mesh mesh = test::sphere(12, 18);
  BoxTree tree(mesh);
  for (int i = 0; i < 20; ++i) {
    const std::size_t first = random.below(mesh.pointCount());
    const std::size_t count = 1 + random.below(mesh.pointCount() - first);
    for (std::size_t at = 3 * first; at < 3 * (first + count); ++at) {
      mesh.points[at] = random.between(-2, 2);
    }
    tree.refit(mesh, first, count);
    expectAsByLooking(mesh, tree, random);
  }
}

TEST(BoxTree, facesInAVolumeAreAmongThoseThatAreVisited) {
  const Mesh mesh = test::sphere(40, 60);
  const BoxTree tree(mesh);
  std::set<std::uint32_t> visited;
  const auto mayMeet = [](const Box3& box) { return box.xMax > 0.9 && box.yMin < 0; };
  tree.forEachFace(mayMeet, [&](std::uint32_t face) { EXPECT_TRUE(visited.insert(face).second); });
  for (std::uint32_t face = 0; face < mesh.faceCount(); ++face) {
    for (std::size_t corner = 3 * face; corner < 3 * face + 3; ++corner) {
      const Vector p = cornerAt(mesh, corner);
      EXPECT_TRUE(p.x < 0.9 || p.y > 0 || visited.count(face) == 1);
    }
  }
  EXPECT_LT(visited.size(), mesh.faceCount() / 5);
}

TEST(BoxTree, boxesHoldWhatSinglePrecisionWouldRoundAway) {
  Mesh mesh;
  const double x = 1 + 1e-12;
  test::addPoint(mesh, x, 0, 0);
  test::addPoint(mesh, x, 1, 0);
  test::addPoint(mesh, x, 0, 1);
  test::addFace(mesh, {0, 1, 2});
  bool isInside = false;
  BoxTree(mesh).forEachFace(
      [&](const Box3& box) { return isInside = box.xMin < x && x < box.xMax; },
      [](std::uint32_t) {});
  EXPECT_TRUE(isInside);
}

TEST(BoxTree, takesPointsOfAnySize) {
  for (const double size : {1e-310, 1e-30, 1e30, 1.7e308}) {
    Mesh mesh;
    test::addPoint(mesh, -size, -size, 0);
    test::addPoint(mesh, size, -size, 0);
    test::addPoint(mesh, 0, size, 0);
    test::addFace(mesh, {0, 1, 2});
    std::size_t count = 0;
    BoxTree(mesh).forEachFace([](const Box3&) { return true; }, [&](std::uint32_t) { ++count; });
    EXPECT_EQ(count, 1u);
  }
}

}  // namespace
}  // namespace zyn
