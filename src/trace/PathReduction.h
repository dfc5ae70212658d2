#pragma once

#include <cstddef>
#include <vector>

#include "core/Point.h"
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
  std::vector<Point> places;        ///< of these points: among all, each is far from the others
  std::vector<std::size_t> starts;  ///< where in `points` each connected line, or point, begins
  std::vector<PixelSpan> spans;     ///< besides; only on grids that take them

  /// Goes on from the last point, or begins a line.
  void write(std::size_t point, bool goesOn) {
    if (!goesOn) {
      starts.push_back(points.size());
    }
    points.push_back(point);
  }

  /// Tells the places of all points that have been written.
  void locate(const PointSequence& trace) {
    places.reserve(points.size());
    for (const std::size_t i : points) {
      places.push_back(trace.at(i));
    }
  }
};

/// Chooses from the points of a trace those whose lines give the same picture as the lines through
/// all points, looking at cells of the grid rather than at points. Points that follow one another
/// within one column of cells, or one row, are drawn by their outline, or of thin lines by a span;
/// points that follow one another on one side of the grid by the first and the last. Where the
/// depth of points matters, only those within one cell are.
ReducedPath reducePath(const TraceInWindow& trace, const PixelGrid& grid);

/// All points but those whose lines lie outside of the grid's bounds.
ReducedPath pathInSight(const TraceInWindow& trace, const PixelGrid& grid);

/// All points.
ReducedPath wholePath(const PointSequence& points);

}  // namespace zyn
