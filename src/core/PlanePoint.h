#pragma once

#include <cmath>

namespace zyn {

/// A point of a plane.
struct PlanePoint {
  double x = 0.0;
  double y = 0.0;
};

inline PlanePoint operator+(const PlanePoint& a, const PlanePoint& b) {
  return {a.x + b.x, a.y + b.y};
}
inline PlanePoint operator-(const PlanePoint& a, const PlanePoint& b) {
  return {a.x - b.x, a.y - b.y};
}
inline PlanePoint operator*(double factor, const PlanePoint& a) {
  return {factor * a.x, factor * a.y};
}
inline double lengthOf(const PlanePoint& a) { return std::hypot(a.x, a.y); }

}  // namespace zyn
