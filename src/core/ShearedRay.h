#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "core/Ray.h"

namespace zyn {

/// A ray in coordinates in which it runs along the last axis, so that neighbouring triangles decide
/// alike on which side of their edge it passes: nothing slips through between them (Woop, Benthin,
/// Wald 2013).
class ShearedRay {
 public:
  explicit ShearedRay(const Ray& ray) : origin_{ray.origin.x, ray.origin.y, ray.origin.z} {
    const Triple d{ray.direction.x, ray.direction.y, ray.direction.z};
    for (std::size_t axis = 1; axis < d.size(); ++axis) {
      z_ = std::abs(d[axis]) > std::abs(d[z_]) ? axis : z_;
    }
    x_ = (z_ + 1) % d.size();
    y_ = (z_ + 2) % d.size();
    shearX_ = d[x_] / d[z_];
    shearY_ = d[y_] / d[z_];
    scale_ = 1 / d[z_];
  }

  /// The distance, perhaps negative, where it meets a triangle, whose corners have an x, a y and a
  /// z; none where it does not, or runs in its plane.
  template <class Corner>
  std::optional<double> meet(const Corner& a, const Corner& b, const Corner& c) const {
    const Triple p = sheared(a);
    const Triple q = sheared(b);
    const Triple r = sheared(c);
    const double u = r[0] * q[1] - r[1] * q[0];
    const double v = p[0] * r[1] - p[1] * r[0];
    const double w = q[0] * p[1] - q[1] * p[0];
    const bool isInside = (u >= 0 && v >= 0 && w >= 0) || (u <= 0 && v <= 0 && w <= 0);
    const double area = u + v + w;
    if (!isInside || area == 0) {
      return std::nullopt;
    }
    return (u * p[2] + v * q[2] + w * r[2]) / area;
  }

 private:
  using Triple = std::array<double, 3>;

  template <class Corner>
  Triple sheared(const Corner& corner) const {
    const Triple p{corner.x - origin_[0], corner.y - origin_[1], corner.z - origin_[2]};
    return {p[x_] - shearX_ * p[z_], p[y_] - shearY_ * p[z_], scale_ * p[z_]};
  }

  Triple origin_;
  std::size_t x_ = 0;
  std::size_t y_ = 0;
  std::size_t z_ = 0;
  double shearX_;
  double shearY_;
  double scale_;
};

}  // namespace zyn
