#include "trace/PathReduction.h"

#include <algorithm>

#include "trace/PathWriter.h"

namespace zyn {

namespace {

/// What some points cover of the window.
struct Extent {
  Range x;
  Range y;
  Range depth;
};

/// Where a trace lies in the window, whatever the mapping.
class AnyPlace {
 public:
  explicit AnyPlace(const TraceInWindow& trace) : points_(trace.points), mapping_(trace.mapping) {}

  Extent of(const Box3& box) const {
    return {{mapping_.x.lowest(box), mapping_.x.highest(box)},
            {mapping_.y.lowest(box), mapping_.y.highest(box)},
            {mapping_.depth.lowest(box), mapping_.depth.highest(box)}};
  }
  Extent of(std::size_t i) const {
    const double x = points_.x(i);
    const double y = points_.y(i);
    const double z = points_.z(i);
    return of(Box3{x, x, y, y, z, z});
  }

 private:
  const PointSequence& points_;
  const WindowMapping& mapping_;
};

/// The same where the axes are those of the window and depth does not matter.
class PlanePlace {
 public:
  explicit PlanePlace(const TraceInWindow& trace)
      : points_(trace.points), x_(trace.mapping.x), y_(trace.mapping.y) {}

  static bool serves(const WindowMapping& mapping, const PixelGrid& grid) {
    return mapping.x.y == 0 && mapping.x.z == 0 && mapping.y.x == 0 && mapping.y.z == 0 &&
           grid.depthStep == std::numeric_limits<double>::infinity();
  }

  Extent of(const Box3& box) const {
    return {ordered(atX(box.xMin), atX(box.xMax)), ordered(atY(box.yMin), atY(box.yMax)), {}};
  }
  Extent of(std::size_t i) const {
    const double x = atX(points_.x(i));
    const double y = atY(points_.y(i));
    return {{x, x}, {y, y}, {}};
  }

 private:
  static Range ordered(double a, double b) { return a <= b ? Range{a, b} : Range{b, a}; }

  double atX(double x) const { return x_.x * x + x_.constant; }
  double atY(double y) const { return y_.y * y + y_.constant; }

  const PointSequence& points_;
  const AffineForm& x_;
  const AffineForm& y_;
};

/// On how many levels a box begins with this point.
std::size_t levelsAt(const RunBoxes& boxes, std::size_t i) {
  if (i % RunBoxes::kFan != 0) {
    return 0;
  }
  std::size_t level = 0;
  std::size_t length = RunBoxes::kFan;
  while (level < boxes.levels() && i % length == 0 && i / length < boxes.runs(level)) {
    ++level;
    length *= RunBoxes::kFan;
  }
  return level;
}

/// The end of the box that begins with this point and holds all points up to it.
std::size_t endOfBox(const PointSequence& points, std::size_t i, std::size_t level) {
  const std::size_t length = RunBoxes::length(level);
  return i + length + 1 < points.size() ? i + length : points.size();
}

template <class Place>
class Reduction {
 public:
  Reduction(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path)
      : points_(trace.points),
        boxes_(trace.boxes),
        place_(trace),
        grid_(grid),
        writer_(trace, grid, path) {}

  void run() {
    for (std::size_t i = 0; i < points_.size();) {
      i = step(i);
    }
    endLine();
  }

 private:
  /// Takes the point, or one of the boxes that begin with it. The point that comes next.
  std::size_t step(std::size_t i) {
    for (std::size_t level = levelsAt(boxes_, i); level-- > 0;) {
      const std::size_t end = endOfBox(points_, i, level);
      if (takeBox(boxes_.run(level, i / RunBoxes::length(level)), i, end)) {
        return end;
      }
    }
    if (points_.isGap(i)) {
      endLine();
    } else {
      take(place_.of(i), {i, i});
    }
    return i + 1;
  }

  /// False for a box that has to be looked into.
  bool takeBox(const RunBox& box, std::size_t first, std::size_t end) {
    if (box.isEmpty()) {
      endLine();
      return true;
    }
    const Extent extent = place_.of(box.box);
    if (box.whole) {
      return take(extent, {first, end - 1});
    }
    if (!grid_.isOutside(extent.x, extent.y)) {
      return false;
    }
    if (lineIsOpen_ && !points_.isGap(first)) {
      take(place_.of(first), {first, first});  // the line leads there
    }
    endLine();
    return true;
  }

  /// Adds points without a gap to the run, or begins a new one with them; false when they do not
  /// make one run.
  bool take(const Extent& extent, const IndexRange& points) {
    if (lineIsOpen_ && join(extent, points)) {
      return true;
    }
    const CellRun begun = runOf(extent, points);
    if (points.first != points.last &&
        !isRun(begun, begun.isInColumn, begun.isInRow, begun.depth)) {
      return false;
    }
    if (lineIsOpen_) {
      writer_.add(run_);
    } else {
      writer_.beginLine();
      lineIsOpen_ = true;
    }
    run_ = begun;
    return true;
  }

  bool join(const Extent& extent, const IndexRange& points) {
    const bool isInColumn = run_.isInColumn && run_.column.pixels.holds(extent.x);
    const bool isInRow = run_.isInRow && run_.row.pixels.holds(extent.y);
    const Range depth = united(run_.depth, extent.depth);
    if (!isRun(run_, isInColumn, isInRow, depth)) {
      return false;
    }
    run_.isInColumn = isInColumn;
    run_.isInRow = isInRow;
    run_.depth = depth;
    run_.points.last = points.last;
    const IndexRange reached = reachedBy(points);
    run_.x.unite(extent.x, reached);
    run_.y.unite(extent.y, reached);
    return true;
  }

  CellRun runOf(const Extent& extent, const IndexRange& points) const {
    const PixelCell column = grid_.column(extent.x.low);
    const PixelCell row = grid_.row(extent.y.low);
    const IndexRange reached = reachedBy(points);
    return {
        points, {extent.x, reached, reached},  {extent.y, reached, reached}, extent.depth, column,
        row,    column.pixels.holds(extent.x), row.pixels.holds(extent.y)};
  }

  /// Boxes hold the point after them too.
  static IndexRange reachedBy(const IndexRange& points) {
    return points.first == points.last ? points : IndexRange{points.first, points.last + 1};
  }

  /// Whether points may be drawn as one run that lies like this where another one begins.
  bool isRun(const CellRun& begun, bool isInColumn, bool isInRow, const Range& depth) const {
    return (isInColumn && isInRow) || (isInColumn && begun.column.isOutside) ||
           (isInRow && begun.row.isOutside) ||
           ((isInColumn || isInRow) && depth.size() <= grid_.depthStep);
  }

  static Range united(const Range& a, const Range& b) {
    return {std::min(a.low, b.low), std::max(a.high, b.high)};
  }

  void endLine() {
    if (lineIsOpen_) {
      writer_.endLine(run_);
      lineIsOpen_ = false;
    }
  }

  const PointSequence& points_;
  const RunBoxes& boxes_;
  const Place place_;
  const PixelGrid& grid_;
  PathWriter writer_;

  bool lineIsOpen_ = false;
  CellRun run_;  ///< that is being taken
};

/// Behind the largest box that begins with this point and cannot be seen; the point where there is
/// none.
std::size_t endOfUnseen(const TraceInWindow& trace, const AnyPlace& place, const PixelGrid& grid,
                        std::size_t i) {
  for (std::size_t level = levelsAt(trace.boxes, i); level-- > 0;) {
    const RunBox& box = trace.boxes.run(level, i / RunBoxes::length(level));
    const Extent extent = place.of(box.box);
    if (box.isEmpty() || grid.isOutside(extent.x, extent.y)) {
      return endOfBox(trace.points, i, level);
    }
  }
  return i;
}

}  // namespace

void reducePath(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path) {
  path.clear();
  if (PlanePlace::serves(trace.mapping, grid)) {
    Reduction<PlanePlace>(trace, grid, path).run();
  } else {
    Reduction<AnyPlace>(trace, grid, path).run();
  }
}

void pathInSight(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path) {
  path.clear();
  const AnyPlace place(trace);
  bool isOpen = false;
  for (std::size_t i = 0; i < trace.points.size();) {
    const std::size_t end = endOfUnseen(trace, place, grid, i);
    if (!trace.points.isGap(i) && (isOpen || end == i)) {
      path.write(i, isOpen);
      isOpen = end == i;
    } else {
      isOpen = false;
    }
    i = std::max(end, i + 1);
  }
}

void wholePath(const PointSequence& points, ReducedPath& path) {
  path.clear();
  bool isOpen = false;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!points.isGap(i)) {
      path.write(i, isOpen);
    }
    isOpen = !points.isGap(i);
  }
}

}  // namespace zyn
