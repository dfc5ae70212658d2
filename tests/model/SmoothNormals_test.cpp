#include "model/SmoothNormals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

#include "model/Faces.h"
#include "support/GeometryChecks.h"
#include "support/Meshes.h"

namespace zyn {
namespace {

/// A prism about the z axis with this many sides, without its ends.
Mesh prism(std::uint32_t sides) {
  Mesh mesh;
  for (std::uint32_t i = 0; i < sides; ++i) {
    const double angle = 2 * std::numbers::pi * i / sides;
    test::addPoint(mesh, 10 * std::cos(angle), 10 * std::sin(angle), 0);
    test::addPoint(mesh, 10 * std::cos(angle), 10 * std::sin(angle), 7);
  }
  for (std::uint32_t i = 0; i < sides; ++i) {
    const std::uint32_t next = (i + 1) % sides;
    test::addPolygon(mesh, {2 * i, 2 * next, 2 * next + 1, 2 * i + 1});
  }
  return mesh;
}

Vector normalAt(const std::vector<double>& normals, std::size_t corner) {
  return {normals[3 * corner], normals[3 * corner + 1], normals[3 * corner + 2]};
}

/// The definition, at the cost of looking at every pair of corners again and again.
class Definition {
 public:
  Definition(const Mesh& mesh, double angle)
      : mesh_(mesh),
        cosine_(std::cos(angle * std::numbers::pi / 180)),
        around_(mesh),
        shapes_(mesh) {}

  Vector normalOf(std::uint32_t corner) const {
    std::vector<std::uint32_t> fan;
    if (isDegenerate(normalAtCorner(corner))) {
      return {0, 0, 1};
    }
    fan.push_back(corner);
    for (std::size_t done = 0; done < fan.size(); ++done) {
      for (std::uint32_t other = 0; other < mesh_.corners.size(); ++other) {
        if (std::find(fan.begin(), fan.end(), other) == fan.end() && areJoined(fan[done], other)) {
          fan.push_back(other);
        }
      }
    }
    Vector sum;
    for (const std::uint32_t member : fan) {
      sum = sum + normalAtCorner(member) * shapes_.angles[member];
    }
    return length(sum) > 1e-9 ? sum * (1 / length(sum)) : normalAtCorner(corner);
  }

 private:
  const Vector& normalAtCorner(std::uint32_t corner) const {
    return shapes_.normals[around_.faceOf(corner)];
  }
  bool areJoined(std::uint32_t a, std::uint32_t b) const {
    if (mesh_.corners[a] != mesh_.corners[b] || isDegenerate(normalAtCorner(b))) {
      return false;
    }
    const auto& points = mesh_.corners;
    const std::uint32_t ends[] = {points[around_.next(a)], points[around_.previous(a)]};
    return dot(normalAtCorner(a), normalAtCorner(b)) > cosine_ &&
           std::any_of(std::begin(ends), std::end(ends), [&](std::uint32_t end) {
             return end == points[around_.next(b)] || end == points[around_.previous(b)];
           });
  }

  const Mesh& mesh_;
  double cosine_;
  FaceCorners around_;
  FaceShapes shapes_;
};

void expectByDefinition(const Mesh& mesh, double angle) {
  const std::vector<double> normals = cornerNormals<double>(mesh, angle);
  const Definition definition(mesh, angle);
  for (std::uint32_t corner = 0; corner < mesh.corners.size(); ++corner) {
    expectNear(normalAt(normals, corner), definition.normalOf(corner), 1e-9);
  }
}

TEST(SmoothNormals, aBoxHasFlatSides) {
  const Mesh mesh = test::box(1, 2, 3);
  const std::vector<double> normals = cornerNormals<double>(mesh, 30);
  for (std::size_t corner = 0; corner < mesh.corners.size(); ++corner) {
    expectNear(normalAt(normals, corner), faceNormal(mesh, corner / 3));
  }
}

TEST(SmoothNormals, aBoxThatIsAllSmoothHasNormalsAlongItsDiagonals) {
  // Weighted by angle, it does not matter how the sides are cut into triangles.
  const Mesh mesh = test::box(2, 2, 2);
  const std::vector<double> normals = cornerNormals<double>(mesh, 180);
  for (std::size_t corner = 0; corner < mesh.corners.size(); ++corner) {
    expectNear(normalAt(normals, corner),
               (cornerAt(mesh, corner) - Vector{1, 1, 1}) * (1 / std::sqrt(3.0)));
  }
}

TEST(SmoothNormals, anEdgeThatTurnsByExactlyTheAngleIsSharp) {
  for (const bool inSinglePrecision : {false, true}) {
    Mesh mesh = prism(12);
    if (inSinglePrecision) {
      for (double& coordinate : mesh.points) {
        coordinate = static_cast<float>(coordinate);
      }
    }
    const std::vector<double> sharp = cornerNormals<double>(mesh, 30);
    const std::vector<double> smooth = cornerNormals<double>(mesh, 30.001);
    for (std::size_t corner = 0; corner < mesh.corners.size(); ++corner) {
      const Vector out = cornerAt(mesh, corner);
      expectNear(normalAt(sharp, corner), faceNormal(mesh, corner / 4));
      expectNear(normalAt(smooth, corner), Vector{out.x / 10, out.y / 10, 0}, 1e-6);
    }
  }
}

TEST(SmoothNormals, aSphereIsRound) {
  const Mesh mesh = test::sphere(40, 60);
  const std::vector<double> normals = cornerNormals<double>(mesh, 30);
  for (std::size_t corner = 0; corner < mesh.corners.size(); ++corner) {
    expectNear(normalAt(normals, corner), cornerAt(mesh, corner), 0.01);
  }
}

TEST(SmoothNormals, facesThatOnlyTouchKeepTheirOwn) {
  Mesh mesh;
  for (const auto& [x, y, z] :
       {Vector{0, 0, 0}, {1, 0, 0.1}, {0, 1, 0.1}, {-1, 0, 0.1}, {0, -1, 0.1}}) {
    test::addPoint(mesh, x, y, z);
  }
  test::addFace(mesh, {0, 1, 2});
  test::addFace(mesh, {0, 3, 4});
  const std::vector<double> normals = cornerNormals<double>(mesh, 90);
  expectNear(normalAt(normals, 0), faceNormal(mesh, 0));
  expectNear(normalAt(normals, 3), faceNormal(mesh, 1));
}

TEST(SmoothNormals, degenerateFacesCountForNothing) {
  Mesh mesh = test::box(1, 1, 1);
  const std::size_t count = mesh.corners.size();
  test::addFace(mesh, {0, 1, 1});
  test::addPoint(mesh, 0.5, 0, 0);
  test::addFace(mesh, {0, 8, 1});
  const std::vector<double> normals = cornerNormals<double>(mesh, 180);
  const std::vector<double> without = cornerNormals<double>(test::box(1, 1, 1), 180);
  for (std::size_t i = 0; i < 3 * count; ++i) {
    EXPECT_EQ(normals[i], without[i]);
  }
  expectNear(normalAt(normals, count + 4), {0, 0, 1});
}

TEST(SmoothNormals, followTheirDefinition) {
  test::Random random(7);
  for (int i = 0; i < 40; ++i) {
    expectByDefinition(test::soup(random, 3 + random.below(20U), 1 + random.below(60U)),
                       random.between(1, 179));
  }
  expectByDefinition(test::sphere(6, 8), 40);
  expectByDefinition(test::sphere(3, 40), 50);  // poles with many faces
  expectByDefinition(test::steppedBlock(), 100);
  expectByDefinition(prism(5), 80);
}

TEST(SmoothNormals, areThoseOfSinglePrecisionRounded) {
  const Mesh mesh = test::sphere(9, 11);
  const std::vector<double> wide = cornerNormals<double>(mesh, 30);
  const std::vector<float> narrow = cornerNormals<float>(mesh, 30);
  for (std::size_t i = 0; i < wide.size(); ++i) {
    EXPECT_EQ(narrow[i], static_cast<float>(wide[i]));
  }
}

TEST(SmoothNormals, anUpdateIsAsMakingThemAnew) {
  test::Random random(3);
  for (int i = 0; i < 60; ++i) {
    Mesh mesh = random.oneIn(3)   ? test::soup(random, 12, 20)
                : random.oneIn(2) ? test::steppedBlock()
                                  : test::sphere(6, 9);
    std::vector<float> normals = cornerNormals<float>(mesh, 40);
    const std::vector<float> before = normals;
    const std::size_t first = random.below(mesh.pointCount());
    const std::size_t count = 1 + random.below(mesh.pointCount() - first);
    for (std::size_t at = 3 * first; at < 3 * (first + count); ++at) {
      mesh.points[at] += random.between(-0.3, 0.3);
    }
    const std::vector<std::uint32_t> faces = updateCornerNormals(mesh, 40, first, count, normals);
    EXPECT_EQ(normals, cornerNormals<float>(mesh, 40));
    EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end()));
    for (std::uint32_t face = 0; face < mesh.faceCount(); ++face) {
      const bool isSame =
          std::equal(normals.begin() + static_cast<std::ptrdiff_t>(3 * mesh.faceBegin(face)),
                     normals.begin() + static_cast<std::ptrdiff_t>(3 * mesh.faceEnd(face)),
                     before.begin() + static_cast<std::ptrdiff_t>(3 * mesh.faceBegin(face)));
      EXPECT_TRUE(isSame || std::binary_search(faces.begin(), faces.end(), face));
    }
  }
}

TEST(SmoothNormals, manyFacesAtOneEdgeEndInTime) {
  Mesh mesh;
  test::addPoint(mesh, 0, 0, 0);
  test::addPoint(mesh, 0, 0, 1);
  for (std::uint32_t i = 0; i < 50000; ++i) {
    test::addPoint(mesh, std::cos(i), std::sin(i), 0);
    test::addFace(mesh, {0, 1, 2 + i});
  }
  const std::vector<double> normals = cornerNormals<double>(mesh, 10);
  expectNear(normalAt(normals, 0), faceNormal(mesh, 0));
}

}  // namespace
}  // namespace zyn
