#include "geometry/PathReduction.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

struct Range {
  double low = 0.0;
  double high = 0.0;

  double size() const { return high - low; }
  bool isOne() const { return low == high; }
  Range united(const Range& other) const {
    return {std::min(low, other.low), std::max(high, other.high)};
  }
};

/// The cells and the depths of some points.
struct Extent {
  Range columns;
  Range rows;
  Range depths;

  /// All of it on one side of the grid.
  bool isOutside() const {
    return (columns.isOne() && std::isinf(columns.low)) || (rows.isOne() && std::isinf(rows.low));
  }
  Extent united(const Extent& other) const {
    return {columns.united(other.columns), rows.united(other.rows), depths.united(other.depths)};
  }
};

class Reduction {
 public:
  Reduction(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path)
      : trace_(trace), points_(trace.points), boxes_(trace.boxes), grid_(grid), path_(path) {}

  void run() {
    path_.clear();
    for (std::size_t i = 0; i < points_.size();) {
      i = step(i);
    }
    endLine();
  }

 private:
  Extent extentOf(const Box3& box) const {
    const WindowMapping& mapping = trace_.mapping;
    return {{grid_.column(mapping.x.lowest(box)), grid_.column(mapping.x.highest(box))},
            {grid_.row(mapping.y.lowest(box)), grid_.row(mapping.y.highest(box))},
            {mapping.depth.lowest(box), mapping.depth.highest(box)}};
  }

  Extent extentOf(std::size_t i) const {
    const double x = points_.x(i);
    const double y = points_.y(i);
    const double z = points_.z(i);
    return extentOf(Box3{x, x, y, y, z, z});
  }

  bool isFlat(const Extent& extent) const { return extent.depths.size() <= grid_.depthStep; }

  /// Points that may be drawn as one run.
  bool isRun(const Extent& extent) const {
    const bool isInColumn = extent.columns.isOne();
    const bool isInRow = extent.rows.isOne();
    return extent.isOutside() || (isInColumn && isInRow) ||
           (isFlat(extent) && (isInColumn || isInRow));
  }

  /// Takes the point, or one of the boxes that begin with it. The point that comes next.
  std::size_t step(std::size_t i) {
    for (std::size_t level = levelsAt(i); level-- > 0;) {
      const std::size_t length = RunBoxes::length(level);
      const std::size_t end = i + length + 1 < points_.size() ? i + length : points_.size();
      if (takeBox(boxes_.run(level, i / length), i, end)) {
        return end;
      }
    }
    if (points_.isGap(i)) {
      endLine();
    } else {
      take(extentOf(i), i, i + 1);
    }
    return i + 1;
  }

  /// On how many levels a box begins with this point.
  std::size_t levelsAt(std::size_t i) const {
    std::size_t level = 0;
    std::size_t length = RunBoxes::kFan;
    while (level < boxes_.levels() && i % length == 0 && i / length < boxes_.runs(level)) {
      ++level;
      length *= RunBoxes::kFan;
    }
    return level;
  }

  /// False for a box that has to be looked into.
  bool takeBox(const RunBox& box, std::size_t first, std::size_t end) {
    if (box.isEmpty()) {
      endLine();
      return true;
    }
    const Extent extent = extentOf(box.box);
    if (box.whole) {
      return take(extent, first, end);
    }
    if (!extent.isOutside()) {
      return false;
    }
    if (lineIsOpen_ && !points_.isGap(first)) {
      take(extentOf(first), first, first + 1);  // the line leads there
    }
    endLine();
    return true;
  }

  /// Adds points without a gap to the run, or begins a new one with them; false when they do not
  /// make one run.
  bool take(const Extent& extent, std::size_t first, std::size_t end) {
    if (lineIsOpen_) {
      const Extent united = extent_.united(extent);
      if (isRun(united)) {
        extent_ = united;
        last_ = end - 1;
        return true;
      }
    }
    if (end - first > 1 && !isRun(extent)) {
      return false;
    }
    if (lineIsOpen_) {
      drawRun();
    } else {
      path_.starts.push_back(path_.points.size());
      lineIsOpen_ = true;
    }
    extent_ = extent;
    first_ = first;
    last_ = end - 1;
    return true;
  }

  void endLine() {
    if (lineIsOpen_) {
      drawRun();
      lineIsOpen_ = false;
    }
  }

  void drawRun() {
    if (extent_.isOutside()) {
      path_.points.push_back(first_);
      if (last_ != first_) {
        path_.points.push_back(last_);
      }
      return;
    }
    outlineRun(trace_, grid_,
               {first_, last_, extent_.columns.low, extent_.rows.low, extent_.columns.isOne(),
                extent_.rows.isOne(), isFlat(extent_)},
               path_.points);
  }

  const TraceInWindow& trace_;
  const PointSequence& points_;
  const RunBoxes& boxes_;
  const PixelGrid& grid_;
  ReducedPath& path_;

  bool lineIsOpen_ = false;
  Extent extent_;  ///< of the run that is being taken
  std::size_t first_ = 0;
  std::size_t last_ = 0;
};

}  // namespace

void reducePath(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path) {
  Reduction(trace, grid, path).run();
}

void wholePath(const PointSequence& points, ReducedPath& path) {
  path.clear();
  bool isInLine = false;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool isPoint = !points.isGap(i);
    if (isPoint && !isInLine) {
      path.starts.push_back(path.points.size());
    }
    if (isPoint) {
      path.points.push_back(i);
    }
    isInLine = isPoint;
  }
}

}  // namespace zyn
