#pragma once

#include <algorithm>
#include <cstddef>

#include "trace/PointSequence.h"

namespace zyn {

/// Goes over the points of a series that are no gaps, in order, but not into the boxes around runs
/// of them that `settle(box)` answers for; a box may hold the point after its run too. `take(i)`
/// gets the others.
template <class Settle, class Take>
class PointWalk {
 public:
  PointWalk(const PointSequence& points, const RunBoxes& boxes, Settle settle, Take take)
      : points_(points), boxes_(boxes), settle_(settle), take_(take) {
    if (boxes_.levels() > 0) {
      const std::size_t top = boxes_.levels() - 1;
      enter(top, boxes_.firstRun(top));
    }
  }

 private:
  void enter(std::size_t level, std::size_t run) {
    if (const RunBox& box = boxes_.run(level, run); box.isEmpty() || settle_(box.box)) {
      return;
    }
    if (level == 0) {
      takePoints(run);
      return;
    }
    const std::size_t end = std::min((run + 1) * RunBoxes::kFan, boxes_.endRun(level - 1));
    for (std::size_t i = std::max(run * RunBoxes::kFan, boxes_.firstRun(level - 1)); i < end; ++i) {
      enter(level - 1, i);
    }
  }

  void takePoints(std::size_t run) {
    const bool isLast = run + 1 == boxes_.endRun(0);
    const std::size_t end = isLast ? points_.end() : (run + 1) * RunBoxes::kFan;
    for (std::size_t i = std::max(run * RunBoxes::kFan, points_.first()); i < end; ++i) {
      if (!points_.isGap(i)) {
        take_(i);
      }
    }
  }

  const PointSequence& points_;
  const RunBoxes& boxes_;
  Settle settle_;
  Take take_;
};

}  // namespace zyn
