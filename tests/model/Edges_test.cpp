#include "model/Edges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numbers>
#include <set>
#include <utility>

#include "model/Faces.h"
#include "support/Meshes.h"

namespace zyn {
namespace {

using Ends = std::pair<std::uint32_t, std::uint32_t>;
using EdgeSet = std::set<Ends>;

/// Each once; where several meet one begins.
EdgeSet setOf(const std::vector<std::uint32_t>& ends) {
  EdgeSet edges;
  std::map<std::uint32_t, int> meeting;
  std::set<std::uint32_t> begins;
  for (std::size_t i = 0; i < ends.size(); i += 2) {
    const auto [low, high] = std::minmax(ends[i], ends[i + 1]);
    EXPECT_NE(low, high);
    EXPECT_TRUE(edges.emplace(low, high).second);
    ++meeting[low];
    ++meeting[high];
    begins.insert(ends[i]);
  }
  for (const auto& [point, count] : meeting) {
    EXPECT_TRUE(count == 1 || begins.contains(point)) << point;
  }
  return edges;
}

/// The faces at every edge, found by looking at all.
std::map<Ends, std::vector<std::size_t>> facesAtEdges(const Mesh& mesh) {
  std::map<Ends, std::vector<std::size_t>> result;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    if (isDegenerate(faceNormal(mesh, face))) {
      continue;
    }
    for (std::size_t i = mesh.faceBegin(face); i < mesh.faceEnd(face); ++i) {
      const std::uint32_t a = mesh.corners[i];
      const std::uint32_t b =
          mesh.corners[i + 1 < mesh.faceEnd(face) ? i + 1 : mesh.faceBegin(face)];
      result[{std::min(a, b), std::max(a, b)}].push_back(face);
    }
  }
  return result;
}

double turnBetween(const Mesh& mesh, std::size_t a, std::size_t b) {
  const double cosine = dot(faceNormal(mesh, a), faceNormal(mesh, b));
  return std::acos(std::clamp(cosine, -1.0, 1.0)) * 180 / std::numbers::pi;
}

EdgeSet featuresByLooking(const Mesh& mesh, double angle) {
  EdgeSet features;
  for (const auto& [ends, faces] : facesAtEdges(mesh)) {
    bool isFeature = faces.size() == 1;
    for (const std::size_t a : faces) {
      for (const std::size_t b : faces) {
        isFeature = isFeature || turnBetween(mesh, a, b) > angle;
      }
    }
    if (isFeature) {
      features.insert(ends);
    }
  }
  return features;
}

EdgeSet silhouetteByLooking(const Mesh& mesh, const Vector& eye) {
  EdgeSet silhouette;
  const auto isSeen = [&](std::size_t face) {
    const Vector sight = eye - cornerAt(mesh, mesh.faceBegin(face));
    return dot(faceNormal(mesh, face), sight) / length(sight) > kEdgeOn;
  };
  for (const auto& [ends, faces] : facesAtEdges(mesh)) {
    if (std::any_of(faces.begin(), faces.end(), isSeen) &&
        !std::all_of(faces.begin(), faces.end(), isSeen)) {
      silhouette.insert(ends);
    }
  }
  return silhouette;
}

void expectAsByLooking(const Mesh& mesh, double angle) {
  const std::vector<MeshEdge> edges = meshEdges(mesh);
  EdgeSet all;
  for (const auto& [ends, faces] : facesAtEdges(mesh)) {
    all.insert(ends);
  }
  EXPECT_EQ(setOf(allEdges(edges)), all);
  EXPECT_EQ(setOf(featureEdges(mesh, edges, angle)), featuresByLooking(mesh, angle));
  const Vector eye{2, 5, 3};
  EXPECT_EQ(setOf(silhouetteEdges(mesh, edges, {eye.x, eye.y, eye.z, 1})),
            silhouetteByLooking(mesh, eye));
}

/// Without its faces above the plane z = 0.
Mesh lowerHalf(const Mesh& mesh) {
  Mesh half;
  half.points = mesh.points;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    if (cornerAt(mesh, 3 * face).z + cornerAt(mesh, 3 * face + 1).z < -1e-9) {
      test::addFace(
          half, {mesh.corners[3 * face], mesh.corners[3 * face + 1], mesh.corners[3 * face + 2]});
    }
  }
  return half;
}

TEST(Edges, aSteppedBlockHasEighteen) {
  const Mesh block = test::steppedBlock();
  EXPECT_EQ(allEdges(meshEdges(block)).size(), 2 * 18u);
  EXPECT_EQ(setOf(featureEdges(block, meshEdges(block), 30)), setOf(allEdges(meshEdges(block))));
}

TEST(Edges, diagonalsOfABoxAreNoFeatures) {
  const Mesh mesh = test::box(1, 2, 3);
  const std::vector<MeshEdge> edges = meshEdges(mesh);
  EXPECT_EQ(allEdges(edges).size(), 2 * 18u);
  EXPECT_EQ(featureEdges(mesh, edges, 30).size(), 2 * 12u);
  EXPECT_EQ(featureEdges(mesh, edges, 0).size(), 2 * 12u);
  EXPECT_EQ(featureEdges(mesh, edges, 90).size(), 0u);  // faces meet at more, not at that
  EXPECT_EQ(featureEdges(mesh, edges, 180).size(), 0u);
}

TEST(Edges, aSphereHasNoneAndItsHalfABoundary) {
  const Mesh sphere = test::sphere(20, 30);
  EXPECT_TRUE(featureEdges(sphere, meshEdges(sphere), 30).empty());
  EXPECT_EQ(allEdges(meshEdges(sphere)).size(), 2 * sphere.corners.size() / 2);
  const Mesh half = lowerHalf(sphere);
  EXPECT_EQ(featureEdges(half, meshEdges(half), 30).size(), 2 * 30u);
}

TEST(Edges, areThoseThatOneFindsByLooking) {
  test::Random random(11);
  for (int i = 0; i < 100; ++i) {
    expectAsByLooking(test::soup(random, 3 + random.below(12U), 1 + random.below(40U)),
                      random.between(0, 180));
  }
  expectAsByLooking(test::steppedBlock(), 30);
  expectAsByLooking(test::sphere(7, 12), 25);
  expectAsByLooking(lowerHalf(test::sphere(8, 12)), 25);
}

TEST(Edges, theSilhouetteInADirectionIsThatFromVeryFarAway) {
  const Mesh sphere = test::sphere(8, 12);
  const std::vector<MeshEdge> edges = meshEdges(sphere);
  EXPECT_EQ(setOf(silhouetteEdges(sphere, edges, {0.1, 0.2, 0.9, 0})),
            setOf(silhouetteEdges(sphere, edges, {1e8, 2e8, 9e8, 1})));
}

TEST(Edges, aFaceThatIsSeenEdgeOnLiesBehindTheSilhouette) {
  const Mesh box = test::box(1, 2, 3);
  const auto silhouetteFrom = [&](double x) {
    return setOf(silhouetteEdges(box, meshEdges(box), {x, 0, 1, 0}));
  };
  EXPECT_EQ(silhouetteFrom(0), silhouetteFrom(0.02));
  EXPECT_EQ(silhouetteFrom(0), silhouetteFrom(-0.02));
  EXPECT_NE(silhouetteFrom(0), silhouetteFrom(0.03));
}

TEST(Edges, closedIsWhatHasTwoOpposedSidesAtEveryEdge) {
  EXPECT_TRUE(isClosed(test::box(1, 2, 3)));
  EXPECT_TRUE(isClosed(test::steppedBlock()));
  EXPECT_TRUE(isClosed(test::sphere(5, 7)));
  EXPECT_FALSE(isClosed(lowerHalf(test::sphere(6, 7))));
  EXPECT_FALSE(isClosed({}));

  Mesh turned = test::box(1, 2, 3);
  std::swap(turned.corners[0], turned.corners[1]);
  EXPECT_FALSE(isClosed(turned));

  Mesh doubled = test::box(1, 2, 3);
  doubled.corners.insert(doubled.corners.end(), doubled.corners.begin(),
                         doubled.corners.begin() + 36);
  EXPECT_FALSE(isClosed(doubled));

  Mesh withNeedle = test::box(1, 2, 3);
  test::addFace(withNeedle, {0, 1, 0});
  EXPECT_TRUE(isClosed(withNeedle));
}

TEST(Edges, manyFacesAtOneEndInTime) {
  Mesh mesh;
  test::addPoint(mesh, 0, 0, 0);
  test::addPoint(mesh, 0, 0, 1);
  for (std::uint32_t i = 0; i < 50000; ++i) {
    test::addPoint(mesh, std::cos(i), std::sin(i), 0);
    test::addFace(mesh, {0, 1, 2 + i});
  }
  EXPECT_EQ(allEdges(meshEdges(mesh)).size(), 2 * 100001u);
}

}  // namespace
}  // namespace zyn
