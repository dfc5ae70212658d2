#pragma once

namespace zyn {

/// A point in space, in scene units.
class Point {
 public:
  Point() = default;
  Point(double px, double py, double pz) : x(px), y(py), z(pz) {}
  Point(const Point&) = default;
  Point& operator=(const Point&) = default;
  virtual ~Point() = default;

  bool operator==(const Point& other) const = default;

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

}  // namespace zyn
