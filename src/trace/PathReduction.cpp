#include "trace/PathReduction.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <optional>

#include "trace/PathWriter.h"
#include "trace/SoftWriter.h"

namespace zyn {

namespace {

/// What some points cover of the window.
struct Extent {
  Range x;
  Range y;
  Range depth;
};

/// Walks over the points of a trace, and over the boxes around them where these tell enough.
class Walk {
 public:
  Walk(const TraceInWindow& trace, const PixelGrid& grid)
      : trace_(trace),
        grid_(grid),
        hasDepth_(grid.depthStep < std::numeric_limits<double>::infinity()) {}

  /// `takePoint` gets each point that no box was taken for, and answers where to go on; `takeBox`
  /// a box, its first point and the one behind its last that is not shared, and answers the same,
  /// the first point where it has not taken it.
  template <class TakePoint, class TakeBox>
  void run(const TakePoint& takePoint, const TakeBox& takeBox) const {
    for (std::size_t i = trace_.points.first(); i < trace_.points.end();) {
      const std::size_t next = nextAfterBoxes(i, takeBox);
      i = next > i ? next : takePoint(i);
    }
  }

  Extent extentOf(const Box3& box) const {
    const auto& [x, y, depth] = trace_.mapping;
    return {{x.lowest(box), x.highest(box)},
            {y.lowest(box), y.highest(box)},
            hasDepth_ ? Range{depth.lowest(box), depth.highest(box)} : Range{}};
  }
  Extent extentOf(std::size_t i) const {
    const double x = trace_.windowX(i);
    const double y = trace_.windowY(i);
    const double depth = hasDepth_ ? trace_.at(trace_.mapping.depth, i) : 0;
    return {{x, x}, {y, y}, {depth, depth}};
  }
  bool isUnseen(const RunBox& box) const {
    const Extent extent = extentOf(box.box);
    return box.isEmpty() || grid_.isOutside(extent.x, extent.y);
  }

 private:
  /// Of the boxes that begin with the point the largest one is taken; the point where none is.
  template <class TakeBox>
  std::size_t nextAfterBoxes(std::size_t i, const TakeBox& takeBox) const {
    for (std::size_t level = levelsAt(i); level-- > 0;) {
      const std::size_t length = RunBoxes::length(level);
      const std::size_t last = trace_.points.end();
      const std::size_t end = i + length + 1 < last ? i + length : last;
      const std::size_t next =
          takeBox(trace_.boxes.run(level, RunBoxes::runWith(i, level)), i, end);
      if (next > i) {
        return next;
      }
    }
    return i;
  }

  /// On how many levels a box begins with this point.
  std::size_t levelsAt(std::size_t i) const {
    const auto beginning = static_cast<std::size_t>(std::countr_zero(i)) / RunBoxes::kFanBits;
    std::size_t level = std::min(trace_.boxes.levels(), beginning);
    while (level > 0 && RunBoxes::runWith(i, level - 1) >= trace_.boxes.endRun(level - 1)) {
      --level;
    }
    return level;
  }

  const TraceInWindow& trace_;
  const PixelGrid& grid_;
  bool hasDepth_;
};

/// Whether a trace turns back less often along y than along x, as far as samples tell.
bool isUpright(const TraceInWindow& trace) {
  constexpr std::size_t kSamples = 64;
  const PointSequence& points = trace.points;
  const std::size_t step = std::max<std::size_t>(points.size() / kSamples, 1);
  const auto turns = [](double a, double b, double c) { return (b - a) * (c - b) < 0; };
  int along = 0;
  int up = 0;
  for (std::size_t i = points.first(); i + 2 < points.end(); i += step) {
    along += turns(points.x(i), points.x(i + 1), points.x(i + 2)) ? 1 : 0;
    up += turns(points.y(i), points.y(i + 1), points.y(i + 2)) ? 1 : 0;
  }
  return up < along;
}

/// `Writer` gets the runs of each line.
template <class Writer>
class Reduction {
 public:
  Reduction(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path)
      : trace_(trace),
        points_(trace.points),
        walk_(trace, grid),
        grid_(grid),
        goesUp_(grid.isSoft && isUpright(trace)),
        isSorted_(isSorted(trace, grid)),
        writer_(trace, grid, path) {}

  void run() {
    walk_.run(
        [this](std::size_t i) {
          takePoint(i);
          return nextAfter(i + 1);
        },
        [this](const RunBox& box, std::size_t first, std::size_t end) {
          return takeBox(box, first, end) ? nextAfter(end) : first;
        });
    endLine();
  }

 private:
  /// Whether the points of a column are sure to follow one another.
  static bool isSorted(const TraceInWindow& trace, const PixelGrid& grid) {
    const auto& [x, y, depth] = trace.mapping;
    const RunBox all = trace.boxes.all();
    return trace.isStable && all.whole && all.rises && x.y == 0 && x.z == 0 && y.x == 0 &&
           y.z == 0 && grid.depthStep == std::numeric_limits<double>::infinity();
  }

  /// Where to go on when all before `end` has been taken.
  std::size_t nextAfter(std::size_t end) const {
    return lineIsOpen_ ? std::max(end, run_.points.last + 1) : end;
  }

  void takePoint(std::size_t i) {
    if (points_.isGap(i)) {
      endLine();
    } else {
      take(walk_.extentOf(i), {i, i});
    }
  }

  /// False for a box that has to be looked into.
  bool takeBox(const RunBox& box, std::size_t first, std::size_t end) {
    if (box.whole && !box.isEmpty()) {
      return take(walk_.extentOf(box.box), {first, end - 1});
    }
    const bool isInSight = lineIsOpen_ && !run_.isOutside();
    if (!walk_.isUnseen(box) || (trace_.isStable && (isInSight || grid_.showsBegins()))) {
      return false;
    }
    if (lineIsOpen_ && !points_.isGap(first)) {
      takePoint(first);  // the line leads there
    }
    endLine();
    return true;
  }

  /// Adds points without a gap to the run, or begins a new one with them; false when they do not
  /// make one run.
  bool take(const Extent& extent, const IndexRange& points) {
    if (lineIsOpen_ && join(extent, points, reachedBy(points))) {
      return true;
    }
    const bool isBox = points.first != points.last;
    const Extent first = isBox && trace_.isStable ? walk_.extentOf(points.first) : extent;
    if (isBox && trace_.isStable && lineIsOpen_ && joined(first)) {
      return false;
    }
    const CellRun begun = runOf(extent, first, points);
    if (isBox && !isRun(begun, {begun.isInColumn, begun.isInRow, begun.depth})) {
      return false;
    }
    if (lineIsOpen_) {
      writer_.add(run_);
    } else {
      writer_.beginLine();
      lineIsOpen_ = true;
    }
    run_ = begun;
    if (isSorted_ && run_.isInColumn && !run_.row.isOutside) {
      takeColumn();
    }
    return true;
  }

  /// Adds all points that lie in the column of the run that has begun.
  void takeColumn() {
    const IndexRange rest{run_.points.last, lastInColumn()};
    if (rest.last > rest.first) {
      columnLength_ = rest.last - run_.points.first;
      const auto [low, high] = trace_.boxes.heights(points_, rest.first, rest.last);
      const Box3 box{points_.x(rest.first), points_.x(rest.last), low, high, 0, 0};
      join(walk_.extentOf(box), rest, rest);
    }
  }

  /// Sought about where the column ends that is as long as the one before.
  std::size_t lastInColumn() const {
    const auto holds = [this](std::size_t i) {
      return i < points_.end() && run_.column.pixels.holds(trace_.mapping.x.at(points_.x(i), 0, 0));
    };
    std::size_t in = run_.points.last;
    std::size_t out = std::max(in, run_.points.first + columnLength_) + 1;
    std::size_t step = 1;
    if (holds(out)) {
      for (; holds(out); step *= 2) {
        in = out;
        out += step;
      }
    } else {
      for (; out - in > step && !holds(out - step); step *= 2) {
        out -= step;
      }
      in = std::max(in, out - std::min(out, step));
    }
    while (out - in > 1) {
      const std::size_t middle = in + (out - in) / 2;
      (holds(middle) ? in : out) = middle;
    }
    return in;
  }

  /// How points lie in a column and a row of cells.
  struct Lie {
    bool isInColumn;
    bool isInRow;
    Range depth;
  };

  /// The run together with more points; none where that would not be one run.
  std::optional<Lie> joined(const Extent& extent) const {
    const Lie lie{
        run_.isInColumn && run_.column.pixels.holds(extent.x),
        run_.isInRow && run_.row.pixels.holds(extent.y),
        {std::min(run_.depth.low, extent.depth.low), std::max(run_.depth.high, extent.depth.high)}};
    return isRun(run_, lie) ? std::optional(lie) : std::nullopt;
  }

  bool join(const Extent& extent, const IndexRange& points, const IndexRange& reached) {
    const std::optional<Lie> lie = joined(extent);
    if (!lie) {
      return false;
    }
    run_.isInColumn = lie->isInColumn;
    run_.isInRow = lie->isInRow;
    run_.depth = lie->depth;
    run_.points.last = points.last;
    run_.x.unite(extent.x, reached);
    run_.y.unite(extent.y, reached);
    return true;
  }

  /// `first`: where it begins.
  CellRun runOf(const Extent& extent, const Extent& first, const IndexRange& points) const {
    const PixelCell column = grid_.column(first.x.low);
    const PixelCell row = grid_.row(first.y.low);
    const IndexRange reached = reachedBy(points);
    return {points,
            {extent.x, reached, reached},
            {extent.y, reached, reached},
            extent.depth,
            column,
            row,
            column.pixels.holds(extent.x) && isLane(column, true),
            row.pixels.holds(extent.y) && isLane(row, false)};
  }

  /// Lines with soft edges show where they are within a column, or a row: their runs go along one
  /// axis only.
  bool isLane(const PixelCell& cell, bool isColumn) const {
    return !grid_.isSoft || cell.isOutside || isColumn != goesUp_;
  }

  /// Boxes hold the point after them too.
  static IndexRange reachedBy(const IndexRange& points) {
    return points.first == points.last ? points : IndexRange{points.first, points.last + 1};
  }

  /// Whether points may be drawn as one run that lies like this where another one begins.
  bool isRun(const CellRun& begun, const Lie& lie) const {
    const bool beginsOutside = begun.column.isOutside || begun.row.isOutside;
    if ((lie.isInColumn && begun.column.isOutside) || (lie.isInRow && begun.row.isOutside)) {
      return true;
    }
    return !(trace_.isStable && beginsOutside) &&
           ((lie.isInColumn && lie.isInRow) ||
            ((lie.isInColumn || lie.isInRow) && lie.depth.size() <= grid_.depthStep));
  }

  void endLine() {
    if (lineIsOpen_) {
      writer_.endLine(run_);
      lineIsOpen_ = false;
    }
  }

  const TraceInWindow& trace_;
  const PointSequence& points_;
  const Walk walk_;
  const PixelGrid& grid_;
  bool goesUp_;
  bool isSorted_;
  std::size_t columnLength_ = 0;  ///< of the last column, in points
  Writer writer_;

  bool lineIsOpen_ = false;
  CellRun run_;  ///< that is being taken
};

/// Whether the line goes on from the point.
bool writeUnlessGap(const PointSequence& points, std::size_t i, bool goesOn, ReducedPath& path) {
  const bool isPoint = !points.isGap(i);
  if (isPoint) {
    path.write(i, goesOn);
  }
  return isPoint;
}

}  // namespace

ReducedPath reducePath(const TraceInWindow& trace, const PixelGrid& grid) {
  ReducedPath path;
  if (grid.isSoft) {
    Reduction<SoftWriter>(trace, grid, path).run();
  } else {
    Reduction<PathWriter>(trace, grid, path).run();
  }
  path.locate(trace.points);
  return path;
}

ReducedPath pathInSight(const TraceInWindow& trace, const PixelGrid& grid) {
  ReducedPath path;
  bool isOpen = false;
  const auto take = [&](std::size_t i) {
    isOpen = writeUnlessGap(trace.points, i, isOpen, path);
    return i + 1;
  };
  const Walk walk(trace, grid);
  walk.run(take, [&](const RunBox& box, std::size_t first, std::size_t end) {
    const bool isUnseen = walk.isUnseen(box);
    if (isUnseen && isOpen) {
      take(first);  // the line leads there
    }
    isOpen = isOpen && !isUnseen;
    return isUnseen ? end : first;
  });
  path.locate(trace.points);
  return path;
}

ReducedPath wholePath(const PointSequence& points) {
  ReducedPath path;
  bool isOpen = false;
  for (std::size_t i = points.first(); i < points.end(); ++i) {
    isOpen = writeUnlessGap(points, i, isOpen, path);
  }
  path.locate(points);
  return path;
}

}  // namespace zyn
