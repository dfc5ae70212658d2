#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "core/Box3.h"

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

/// What is known of a run of consecutive points without looking at them.
struct RunBox {
  Box3 box;           ///< around the points that are no gaps; turned inside out without any
  bool whole = true;  ///< no gap among its points

  bool isEmpty() const { return box.xMin > box.xMax; }
};

/// Boxes around runs of consecutive points, in levels: a run of level 0 holds kFan segments, one of
/// a further level kFan runs of the level below. Neighbours share the point between them, so that
/// every segment lies in a run. Takes time and memory in proportion to the number of points.
class RunBoxes {
 public:
  static constexpr std::size_t kFan = 16;

  explicit RunBoxes(const PointSequence& points);

  /// 0 without points; the highest level has a single run.
  std::size_t levels() const { return levels_.size(); }
  std::size_t runs(std::size_t level) const { return levels_[level].size(); }
  const RunBox& run(std::size_t level, std::size_t index) const { return levels_[level][index]; }

  /// Around all points; empty without a point that is no gap.
  RunBox all() const;

  /// Number of segments in each run of a level but the last: its first points lie that far apart.
  static std::size_t length(std::size_t level);

 private:
  std::vector<std::vector<RunBox>> levels_;
};

}  // namespace zyn
