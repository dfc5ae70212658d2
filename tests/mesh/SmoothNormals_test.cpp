#include "mesh/SmoothNormals.h"

#include <gtest/gtest.h>

namespace zyn::mesh {
namespace {

/// Two unit right triangles along the x axis, the second one folded up by 45 degrees.
Mesh fold() {
  const Vector a{0, 0, 0};
  const Vector b{1, 0, 0};
  const Vector c{0, -1, 0};
  const Vector d{1, std::sqrt(0.5), std::sqrt(0.5)};
  Mesh mesh;
  for (const auto& [p, q, r] : {std::array{a, c, b}, std::array{a, b, d}}) {
    const Vector normal = facetNormal(p, q, r);
    mesh.triangles.push_back({{p, q, r}, {normal, normal, normal}});
  }
  return mesh;
}

TEST(SmoothNormals, meetsHalfwayAtASharedEdge) {
  Mesh mesh = fold();
  const Vector flat = mesh.triangles[0].normals[1];
  smoothNormals(mesh, 60);
  const Vector shared = mesh.triangles[0].normals[0];
  EXPECT_NEAR(shared.y, -std::sin(std::atan2(1, 1) / 2), 1e-12);
  EXPECT_NEAR(shared.z, std::cos(std::atan2(1, 1) / 2), 1e-12);
  EXPECT_EQ(mesh.triangles[1].normals[0], shared);
  EXPECT_EQ(mesh.triangles[0].normals[1], flat);
}

TEST(SmoothNormals, leavesSharpEdgesSharp) {
  Mesh mesh = fold();
  const Mesh before = mesh;
  smoothNormals(mesh, 30);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(length(mesh.triangles[1].normals[i] - before.triangles[1].normals[i]), 0, 1e-12);
  }
}

TEST(SmoothNormals, leavesFacetsWithoutAreaAlone) {
  Mesh mesh;
  const Vector up{0, 0, 1};
  mesh.triangles.push_back({{{1, 1, 1}, {1, 1, 1}, {2, 2, 2}}, {up, up, up}});
  smoothNormals(mesh, 60);
  EXPECT_EQ(mesh.triangles[0].normals[0], up);
}

}  // namespace
}  // namespace zyn::mesh
