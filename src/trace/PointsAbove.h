#pragma once

#include <algorithm>
#include <cstddef>

#include "trace/CellRun.h"

namespace zyn {

/// Looks at the points of a run at which an affine function of their coordinates is greater than a
/// value, entering only boxes that may hold some.
class PointsAbove {
 public:
  PointsAbove(const TraceInWindow& trace, const AffineForm& form, double value)
      : trace_(trace), form_(form), value_(value) {}

  /// Whether `test` is true for each of the points; it ends with the first for which it is not.
  template <class Test>
  bool all(const IndexRange& points, const Test& test) const {
    std::size_t level = 0;
    while (level + 1 < trace_.boxes.levels() &&
           RunBoxes::length(level) <= points.last - points.first) {
      ++level;
    }
    return visit(level, points, test);
  }

 private:
  template <class Test>
  bool visit(std::size_t level, const IndexRange& points, const Test& test) const {
    const std::size_t length = RunBoxes::length(level);
    for (std::size_t run = points.first / length; run <= points.last / length; ++run) {
      if (!mayHold(level, run)) {
        continue;
      }
      const IndexRange part{std::max(points.first, run * length),
                            std::min(points.last, run * length + length - 1)};
      if (level > 0 ? !visit(level - 1, part, test) : !testAll(part, test)) {
        return false;
      }
    }
    return true;
  }

  bool mayHold(std::size_t level, std::size_t run) const {
    // Where the last of all points ends a full run, it begins none of its own.
    return run >= trace_.boxes.runs(level) ||
           form_.highest(trace_.boxes.run(level, run).box) > value_;
  }

  template <class Test>
  bool testAll(const IndexRange& points, const Test& test) const {
    for (std::size_t i = points.first; i <= points.last; ++i) {
      if (trace_.at(form_, i) > value_ && !test(i)) {
        return false;
      }
    }
    return true;
  }

  const TraceInWindow& trace_;
  const AffineForm& form_;
  double value_;
};

}  // namespace zyn
