#pragma once

#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

inline Vecteur operator-(const Point& to, const Point& from) {
  return {to.x - from.x, to.y - from.y, to.z - from.z};
}

inline Point operator+(const Point& point, const Vecteur& by) {
  return {point.x + by.x, point.y + by.y, point.z + by.z};
}

inline Point operator-(const Point& point, const Vecteur& by) {
  return {point.x - by.x, point.y - by.y, point.z - by.z};
}

inline Vecteur operator+(const Vecteur& a, const Vecteur& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Vecteur operator*(double factor, const Vecteur& v) {
  return {factor * v.x, factor * v.y, factor * v.z};
}

inline Vecteur operator-(const Vecteur& v) { return {-v.x, -v.y, -v.z}; }

inline double dot(const Vecteur& a, const Vecteur& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

inline Vecteur cross(const Vecteur& a, const Vecteur& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The vector of length 1 in the direction of `v`. A null vector gives not-a-number components.
inline Vecteur normalised(const Vecteur& v) {
  const double length = v.norm();
  return {v.x / length, v.y / length, v.z / length};
}

}  // namespace zyn
