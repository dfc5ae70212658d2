#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "model/Mesh.h"
#include "support/Random.h"

namespace zyn::test {

inline void addPoint(Mesh& mesh, double x, double y, double z) {
  mesh.points.insert(mesh.points.end(), {x, y, z});
}

inline void addFace(Mesh& mesh, std::initializer_list<std::uint32_t> corners) {
  mesh.corners.insert(mesh.corners.end(), corners);
}

/// The same for a mesh of polygons.
inline void addPolygon(Mesh& mesh, const std::vector<std::uint32_t>& corners) {
  mesh.corners.insert(mesh.corners.end(), corners.begin(), corners.end());
  mesh.faceEnds.push_back(static_cast<std::uint32_t>(mesh.corners.size()));
}

/// A box from the origin, of six quads.
inline Mesh quadBox(double x, double y, double z) {
  Mesh mesh;
  for (std::uint32_t i = 0; i < 8; ++i) {
    addPoint(mesh, (i & 1U) != 0 ? x : 0, (i & 2U) != 0 ? y : 0, (i & 4U) != 0 ? z : 0);
  }
  for (const auto& quad : {std::vector<std::uint32_t>{0, 2, 3, 1},
                           {4, 5, 7, 6},
                           {0, 1, 5, 4},
                           {2, 6, 7, 3},
                           {0, 4, 6, 2},
                           {1, 3, 7, 5}}) {
    addPolygon(mesh, quad);
  }
  return mesh;
}

/// The same mesh with every polygon cut into a fan of triangles.
inline Mesh withTriangles(const Mesh& mesh) {
  Mesh result;
  result.points = mesh.points;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    const std::size_t first = mesh.faceBegin(face);
    for (std::size_t i = first + 1; i + 1 < mesh.faceEnd(face); ++i) {
      addFace(result, {mesh.corners[first], mesh.corners[i], mesh.corners[i + 1]});
    }
  }
  return result;
}

inline Mesh box(double x, double y, double z) { return withTriangles(quadBox(x, y, z)); }

/// A block of two steps: an L of 2 x 2 less a quarter, pulled up by 1. Its L are polygons.
inline Mesh steppedBlock() {
  Mesh mesh;
  constexpr double kOutline[][2] = {{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}};
  for (const double z : {0.0, 1.0}) {
    for (const auto& [x, y] : kOutline) {
      addPoint(mesh, x, y, z);
    }
  }
  addPolygon(mesh, {5, 4, 3, 2, 1, 0});
  addPolygon(mesh, {6, 7, 8, 9, 10, 11});
  for (std::uint32_t i = 0; i < 6; ++i) {
    const std::uint32_t next = (i + 1) % 6;
    addPolygon(mesh, {i, next, 6 + next, 6 + i});
  }
  return mesh;
}

/// Of radius 1, of triangles between circles of latitude, with one point at each pole.
inline Mesh sphere(std::uint32_t circles, std::uint32_t meridians) {
  Mesh mesh;
  addPoint(mesh, 0, 0, 1);
  for (std::uint32_t i = 1; i < circles; ++i) {
    for (std::uint32_t j = 0; j < meridians; ++j) {
      const double down = std::numbers::pi * i / circles;
      const double around = 2 * std::numbers::pi * j / meridians;
      addPoint(mesh, std::sin(down) * std::cos(around), std::sin(down) * std::sin(around),
               std::cos(down));
    }
  }
  addPoint(mesh, 0, 0, -1);
  const auto south = static_cast<std::uint32_t>(mesh.pointCount() - 1);
  const auto at = [=](std::uint32_t i, std::uint32_t j) {
    return i == 0 ? 0 : i == circles ? south : 1 + (i - 1) * meridians + j % meridians;
  };
  for (std::uint32_t i = 0; i < circles; ++i) {
    for (std::uint32_t j = 0; j < meridians; ++j) {
      if (i + 1 < circles) {
        addFace(mesh, {at(i, j), at(i + 1, j), at(i + 1, j + 1)});
      }
      if (i > 0) {
        addFace(mesh, {at(i, j), at(i + 1, j + 1), at(i, j + 1)});
      }
    }
  }
  return mesh;
}

/// Triangles between any few points: edges of many faces, faces that only touch, and some that are
/// degenerate.
inline Mesh soup(Random& random, std::uint32_t points, std::uint32_t faces) {
  Mesh mesh;
  for (std::uint32_t i = 0; i < points; ++i) {
    addPoint(mesh, random.between(-1, 1), random.between(-1, 1), random.between(-0.2, 0.2));
  }
  for (std::uint32_t i = 0; i < faces; ++i) {
    addFace(mesh, {random.below(points), random.below(points), random.below(points)});
  }
  return mesh;
}

}  // namespace zyn::test
