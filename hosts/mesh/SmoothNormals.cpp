#include "mesh/SmoothNormals.h"

#include <algorithm>
#include <cstddef>
#include <numbers>
#include <tuple>
#include <vector>

namespace zyn::mesh {

namespace {

/// Plane of a facet: its unit normal, and that normal as long as twice the facet's area.
struct Plane {
  Vector unit;
  Vector weighted;
};

std::vector<Plane> planes(const Mesh& mesh) {
  std::vector<Plane> result;
  result.reserve(mesh.triangles.size());
  for (const Triangle& triangle : mesh.triangles) {
    const auto& [a, b, c] = triangle.vertices;
    const Vector weighted = cross(b - a, c - a);
    result.push_back({normalised(weighted, {}), weighted});
  }
  return result;
}

/// Corner numbers (3 x triangle + corner) ordered so that equal positions are neighbours.
std::vector<std::size_t> cornersByPosition(const Mesh& mesh) {
  std::vector<std::size_t> corners;
  corners.reserve(3 * mesh.triangles.size());
  for (std::size_t corner = 0; corner < 3 * mesh.triangles.size(); ++corner) {
    corners.push_back(corner);
  }
  const auto key = [&mesh](std::size_t corner) {
    const Vector& v = mesh.triangles[corner / 3].vertices[corner % 3];
    return std::tie(v.x, v.y, v.z);
  };
  std::sort(corners.begin(), corners.end(),
            [&key](std::size_t a, std::size_t b) { return key(a) < key(b); });
  return corners;
}

}  // namespace

void smoothNormals(Mesh& mesh, double angle) {
  const double leastCosine = std::cos(angle * std::numbers::pi / 180.0);
  const std::vector<Plane> plane = planes(mesh);
  const std::vector<std::size_t> corners = cornersByPosition(mesh);
  const auto vertex = [&mesh](std::size_t corner) -> const Vector& {
    return mesh.triangles[corner / 3].vertices[corner % 3];
  };
  for (auto begin = corners.begin(); begin != corners.end();) {
    const auto end = std::find_if(
        begin, corners.end(), [&](std::size_t other) { return vertex(other) != vertex(*begin); });
    for (auto own = begin; own != end; ++own) {
      Vector sum;
      for (auto other = begin; other != end; ++other) {
        if (dot(plane[*own / 3].unit, plane[*other / 3].unit) > leastCosine) {
          sum = sum + plane[*other / 3].weighted;
        }
      }
      Vector& normal = mesh.triangles[*own / 3].normals[*own % 3];
      normal = normalised(sum, normal);
    }
    begin = end;
  }
}

}  // namespace zyn::mesh
