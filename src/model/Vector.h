#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "model/Mesh.h"

namespace zyn {

/// A point or a direction in model units, without what makes a Point or a Vecteur larger than its
/// numbers: meshes have millions.
struct Vector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  bool operator==(const Vector&) const = default;

  Vector operator+(const Vector& v) const { return {x + v.x, y + v.y, z + v.z}; }
  Vector operator-(const Vector& v) const { return {x - v.x, y - v.y, z - v.z}; }
  Vector operator-() const { return {-x, -y, -z}; }
  Vector operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
};

inline double dot(const Vector& a, const Vector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

inline Vector cross(const Vector& a, const Vector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const Vector& v) { return std::sqrt(dot(v, v)); }

inline double largestComponent(const Vector& v) {
  return std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
}

inline Vector pointAt(const Mesh& mesh, std::size_t point) {
  const double* const xyz = mesh.points.data() + 3 * point;
  return {xyz[0], xyz[1], xyz[2]};
}

/// The point of a corner.
inline Vector cornerAt(const Mesh& mesh, std::size_t corner) {
  return pointAt(mesh, mesh.corners[corner]);
}

}  // namespace zyn
