#pragma once

#include <cstddef>
#include <vector>

#include "trace/CellRun.h"

namespace zyn {

/// Pixels that follow one another in a column, or in a row: all that a part of a trace lights.
struct PixelSpan {
  bool isInColumn = true;
  double middle = 0.0;    ///< of the column or row, in window coordinates
  double low = 0.0;       ///< the lower edge of the first pixel
  double high = 0.0;      ///< the upper edge of the last one
  std::size_t point = 0;  ///< one of that part
};

/// What has to be drawn of a trace.
struct ReducedPath {
  std::vector<std::size_t> points;  ///< by their index, in order
  std::vector<std::size_t> starts;  ///< where in `points` each connected line, or point, begins
  std::vector<PixelSpan> spans;     ///< besides; only on grids that take them

  /// Goes on from the last point, or begins a line.
  void write(std::size_t point, bool goesOn) {
    if (!goesOn) {
      starts.push_back(points.size());
    }
    points.push_back(point);
  }
  void clear() {
    points.clear();
    starts.clear();
    spans.clear();
  }
};

/// Chooses from the points of a trace those whose lines give the same picture as the lines through
/// all points, looking at cells of the grid rather than at points. Points that follow one another
/// within one column of cells, or one row, are drawn by their outline, or of thin lines by the two
/// ends of what they light; points that follow one another on one side of the grid by the first and
/// the last. Where the depth of points matters, only those within one cell are. `path` receives the
/// result; its memory is used again.
void reducePath(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path);

/// All points but those whose lines lie outside of the grid's bounds.
void pathInSight(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path);

/// All points.
void wholePath(const PointSequence& points, ReducedPath& path);

}  // namespace zyn
