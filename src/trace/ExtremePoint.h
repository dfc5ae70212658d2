#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "trace/PointSequence.h"
#include "trace/RunBoxes.h"

namespace zyn {

/// Finds the point of a run at which a function of its coordinates is greatest, looking only into
/// the boxes that may hold it. A Form has `at(x, y, z)` and `highest(box)`, which is no less than
/// the value at any point of the box.
template <class Form>
class ExtremeSearch {
 public:
  ExtremeSearch(const PointSequence& points, const RunBoxes& boxes, const Form& form)
      : points_(points), boxes_(boxes), form_(form) {}

  /// Of the points `first` to `last`, none of them a gap.
  std::size_t among(std::size_t first, std::size_t last) {
    first_ = first;
    last_ = last;
    found_ = first;
    value_ = -std::numeric_limits<double>::infinity();
    std::size_t level = 0;
    while (level + 1 < boxes_.levels() && RunBoxes::length(level) <= last - first) {
      ++level;
    }
    const std::size_t length = RunBoxes::length(level);
    visitAll(level, first / length, last / length);
    return found_;
  }

 private:
  /// The runs `from` to `to` of a level, at most kFan of them: the most promising first.
  void visitAll(std::size_t level, std::size_t from, std::size_t to) {
    std::array<double, RunBoxes::kFan> bounds;
    std::size_t best = from;
    for (std::size_t i = from; i <= to; ++i) {
      bounds[i - from] = boundOf(level, i);
      if (bounds[i - from] > bounds[best - from]) {
        best = i;
      }
    }
    visit(level, best);
    for (std::size_t i = from; i <= to; ++i) {
      if (i != best && bounds[i - from] > value_) {
        visit(level, i);
      }
    }
  }

  double boundOf(std::size_t level, std::size_t index) const {
    // Where the last of all points ends a full run, it begins none of its own.
    return index < boxes_.runs(level) ? form_.highest(boxes_.run(level, index).box)
                                      : std::numeric_limits<double>::infinity();
  }

  void visit(std::size_t level, std::size_t index) {
    const std::size_t length = RunBoxes::length(level);
    const std::size_t from = std::max(first_, index * length);
    const std::size_t to = std::min(last_, index * length + length - 1);
    if (level > 0) {
      const std::size_t below = RunBoxes::length(level - 1);
      visitAll(level - 1, from / below, to / below);
      return;
    }
    for (std::size_t i = from; i <= to; ++i) {
      const double value = form_.at(points_.x(i), points_.y(i), points_.z(i));
      if (value > value_) {
        value_ = value;
        found_ = i;
      }
    }
  }

  const PointSequence& points_;
  const RunBoxes& boxes_;
  const Form& form_;
  std::size_t first_ = 0;
  std::size_t last_ = 0;
  std::size_t found_ = 0;
  double value_ = 0.0;
};

}  // namespace zyn
