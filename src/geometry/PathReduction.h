#pragma once

#include <cstddef>
#include <vector>

#include "geometry/CellRun.h"

namespace zyn {

/// The points of a trace that have to be drawn.
struct ReducedPath {
  std::vector<std::size_t> points;  ///< by their index, in order
  std::vector<std::size_t> starts;  ///< where in `points` each connected line, or point, begins

  void clear() {
    points.clear();
    starts.clear();
  }
};

/// Chooses from the points of a trace those whose lines give the same picture as the lines through
/// all points, looking at cells of the grid rather than at points. Points that follow one another
/// within one column of cells, or one row, are drawn by their outline, or of thin lines by the two
/// ends of what they light; points that follow one another on one side of the grid by the first and
/// the last. Where the depth of points matters, only those within one cell are. `path` receives the
/// result; its memory is used again.
void reducePath(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path);

/// All points.
void wholePath(const PointSequence& points, ReducedPath& path);

}  // namespace zyn
