#pragma once

#include <cmath>

namespace zyn::host {

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

/// `v` made one long; `fallback` where it has no length or no finite one.
inline Vector normalised(const Vector& v, const Vector& fallback) {
  const double norm = length(v);
  return norm > 0.0 && std::isfinite(norm) ? v * (1.0 / norm) : fallback;
}

/// Smallest axis-parallel box around a model.
struct Bounds {
  Vector minimum;
  Vector maximum;

  Vector centre() const { return (minimum + maximum) * 0.5; }
  Vector extents() const { return maximum - minimum; }
};

/// The smallest box that holds both.
inline Bounds around(const Bounds& a, const Bounds& b) {
  return {{std::fmin(a.minimum.x, b.minimum.x), std::fmin(a.minimum.y, b.minimum.y),
           std::fmin(a.minimum.z, b.minimum.z)},
          {std::fmax(a.maximum.x, b.maximum.x), std::fmax(a.maximum.y, b.maximum.y),
           std::fmax(a.maximum.z, b.maximum.z)}};
}

}  // namespace zyn::host
