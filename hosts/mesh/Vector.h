#pragma once

#include <cmath>

namespace zyn::mesh {

/// A point or a direction in model units.
struct Vector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  bool operator==(const Vector&) const = default;

  Vector operator+(const Vector& v) const { return {x + v.x, y + v.y, z + v.z}; }
  Vector operator-(const Vector& v) const { return {x - v.x, y - v.y, z - v.z}; }
  Vector operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
};

inline double dot(const Vector& a, const Vector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

inline Vector cross(const Vector& a, const Vector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const Vector& v) { return std::hypot(v.x, v.y, v.z); }

inline bool isFinite(const Vector& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// `v` made one long; `fallback` where it has no length or no finite one.
inline Vector normalised(const Vector& v, const Vector& fallback) {
  const double norm = length(v);
  return norm > 0.0 && std::isfinite(norm) ? v * (1.0 / norm) : fallback;
}

}  // namespace zyn::mesh
