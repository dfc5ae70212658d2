#pragma once

#include <cstddef>
#include <vector>

#include "core/Box3.h"
#include "trace/PointSequence.h"

namespace zyn {

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
