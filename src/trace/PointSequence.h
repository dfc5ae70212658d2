#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "core/Point.h"

namespace zyn {

/// The points of a trace, one array a coordinate. A point with a coordinate that is not finite is a
/// gap: it is no part of the trace, and nothing connects its neighbours.
class PointSequence {
 public:
  PointSequence() = default;

  /// Arrays of equal length; without `z` the points lie in the plane z = 0.
  PointSequence(std::vector<double> x, std::vector<double> y, std::vector<double> z = {})
      : x_(std::move(x)), y_(std::move(y)), z_(std::move(z)) {}

  std::size_t size() const { return x_.size(); }

  double x(std::size_t i) const { return x_[i]; }
  double y(std::size_t i) const { return y_[i]; }
  double z(std::size_t i) const { return z_.empty() ? 0.0 : z_[i]; }
  Point at(std::size_t i) const { return {x(i), y(i), z(i)}; }

  bool isGap(std::size_t i) const {
    return !std::isfinite(x(i)) || !std::isfinite(y(i)) || !std::isfinite(z(i));
  }

 private:
  std::vector<double> x_;
  std::vector<double> y_;
  std::vector<double> z_;
};

}  // namespace zyn
