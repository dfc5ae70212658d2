#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "trace/CellRun.h"

namespace zyn {

/// Seeks points of a run by a function of their coordinates, looking only into the boxes that may
/// hold them. A Form has `at(x, y, z)` and `highest(box)`, which is no less than the value at any
/// point of the box.
template <class Form>
class RunSearch {
 public:
  RunSearch(const TraceInWindow& trace, const Form& form) : trace_(trace), form_(form) {}

  /// The point at which the function is greatest; of points none of which is a gap. In a stable
  /// trace, of several the first.
  std::size_t highest(const IndexRange& points) {
    found_ = points.first;
    value_ = -std::numeric_limits<double>::infinity();
    visitBest(levelFor(points), points);
    return found_;
  }

  /// Whether `test` is true for each of the points at which the function is above a value; it ends
  /// with the first for which it is not.
  template <class Test>
  bool allAbove(double value, const IndexRange& points, const Test& test) const {
    return visitAbove(levelFor(points), value, points, test);
  }

 private:
  std::size_t levelFor(const IndexRange& points) const {
    std::size_t level = 0;
    while (level + 1 < trace_.boxes.levels() &&
           RunBoxes::length(level) <= points.last - points.first) {
      ++level;
    }
    return level;
  }

  double boundOf(std::size_t level, std::size_t run) const {
    // Where the last of all points ends a full run, it begins none of its own.
    return run < trace_.boxes.endRun(level) ? form_.highest(trace_.boxes.run(level, run).box)
                                            : std::numeric_limits<double>::infinity();
  }

  bool isBetter(double value, std::size_t first) const {
    return value > value_ || (trace_.isStable && value == value_ && first < found_);
  }

  static IndexRange partIn(std::size_t level, std::size_t run, const IndexRange& points) {
    const std::size_t length = RunBoxes::length(level);
    return {std::max(points.first, run * length), std::min(points.last, run * length + length - 1)};
  }

  /// At most kFan runs of a level: the most promising first.
  void visitBest(std::size_t level, const IndexRange& points) {
    const std::size_t from = RunBoxes::runWith(points.first, level);
    const std::size_t to = RunBoxes::runWith(points.last, level);
    std::array<double, RunBoxes::kFan> bounds;
    std::size_t best = from;
    for (std::size_t run = from; run <= to; ++run) {
      bounds[run - from] = boundOf(level, run);
      if (bounds[run - from] > bounds[best - from]) {
        best = run;
      }
    }
    enter(level, partIn(level, best, points));
    for (std::size_t run = from; run <= to; ++run) {
      if (run != best && isBetter(bounds[run - from], run * RunBoxes::length(level))) {
        enter(level, partIn(level, run, points));
      }
    }
  }

  void enter(std::size_t level, const IndexRange& points) {
    if (level > 0) {
      visitBest(level - 1, points);
      return;
    }
    for (std::size_t i = points.first; i <= points.last; ++i) {
      if (const double value = trace_.at(form_, i); isBetter(value, i)) {
        value_ = value;
        found_ = i;
      }
    }
  }

  template <class Test>
  bool visitAbove(std::size_t level, double value, const IndexRange& points,
                  const Test& test) const {
    const std::size_t last = RunBoxes::runWith(points.last, level);
    for (std::size_t run = RunBoxes::runWith(points.first, level); run <= last; ++run) {
      if (!(boundOf(level, run) > value)) {
        continue;
      }
      const IndexRange part = partIn(level, run, points);
      if (level > 0 && !visitAbove(level - 1, value, part, test)) {
        return false;
      }
      for (std::size_t i = part.first; level == 0 && i <= part.last; ++i) {
        if (trace_.at(form_, i) > value && !test(i)) {
          return false;
        }
      }
    }
    return true;
  }

  const TraceInWindow& trace_;
  const Form& form_;
  std::size_t found_ = 0;
  double value_ = 0.0;
};

}  // namespace zyn
