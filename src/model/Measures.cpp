#include "model/Measures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "model/Vector.h"

namespace zyn {

namespace {

/// A sum of very many numbers that keeps what a plain one rounds away (Neumaier's).
class Sum {
 public:
  void add(double term) {
    const double sum = sum_ + term;
    rest_ += std::abs(sum_) >= std::abs(term) ? (sum_ - sum) + term : (term - sum) + sum_;
    sum_ = sum;
  }
  double value() const { return sum_ + rest_; }

 private:
  double sum_ = 0;
  double rest_ = 0;
};

/// The mesh is measured in units of a power of two that are about as long as its box, so that
/// products of lengths neither overflow nor vanish, and are rounded as those of the lengths.
int unitOf(const Box3& box) {
  const double size = std::max(
      {box.xMax / 2 - box.xMin / 2, box.yMax / 2 - box.yMin / 2, box.zMax / 2 - box.zMin / 2});
  constexpr int kMost = 1000;  // its inverse is a number as well
  return size > 0 ? std::clamp(std::ilogb(size), -kMost, kMost) : 0;
}

template <class Term>
double sumOver(const Mesh& mesh, const Triangulation& triangles, Term term) {
  Sum sum;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    triangles.forEach(mesh, face, [&](const Triangulation::Triangle& corners) {
      sum.add(
          term(cornerAt(mesh, corners[0]), cornerAt(mesh, corners[1]), cornerAt(mesh, corners[2])));
    });
  }
  return sum.value();
}

}  // namespace

std::optional<Box3> boundsOf(const Mesh& mesh) {
  if (mesh.points.empty()) {
    return std::nullopt;
  }
  const Vector first = pointAt(mesh, 0);
  Box3 box{first.x, first.x, first.y, first.y, first.z, first.z};
  for (std::size_t point = 1; point < mesh.pointCount(); ++point) {
    const Vector p = pointAt(mesh, point);
    box.unite({p.x, p.x, p.y, p.y, p.z, p.z});
  }
  return box;
}

double areaOf(const Mesh& mesh, const Triangulation& triangles) {
  const std::optional<Box3> box = boundsOf(mesh);
  if (!box) {
    return 0;
  }
  const int unit = unitOf(*box);
  const double inverse = std::ldexp(1, -unit);
  const double area =
      sumOver(mesh, triangles, [&](const Vector& a, const Vector& b, const Vector& c) {
        return length(cross((b - a) * inverse, (c - a) * inverse)) / 2;
      });
  return std::ldexp(area, 2 * unit);
}

double volumeOf(const Mesh& mesh, const Triangulation& triangles) {
  const std::optional<Box3> box = boundsOf(mesh);
  if (!box) {
    return 0;
  }
  const Point middle = box->centre();
  const Vector centre{middle.x, middle.y, middle.z};
  const int unit = unitOf(*box);
  const double inverse = std::ldexp(1, -unit);
  const auto fromCentre = [&](const Vector& v) { return (v - centre) * inverse; };
  const double volume =
      sumOver(mesh, triangles, [&](const Vector& a, const Vector& b, const Vector& c) {
        return dot(fromCentre(a), cross(fromCentre(b), fromCentre(c))) / 6;
      });
  return std::ldexp(volume, 3 * unit);
}

}  // namespace zyn
