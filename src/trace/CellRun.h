#pragma once

#include <cstddef>

#include "trace/PixelGrid.h"
#include "trace/PointSequence.h"
#include "trace/RunBoxes.h"
#include "trace/WindowMapping.h"

namespace zyn {

/// A trace and where it is drawn. `boxes` are those of `points`.
struct TraceInWindow {
  const PointSequence& points;
  const RunBoxes& boxes;
  const WindowMapping& mapping;

  double at(const AffineForm& form, std::size_t i) const {
    return form.at(points.x(i), points.y(i), points.z(i));
  }
  double windowX(std::size_t i) const { return at(mapping.x, i); }
  double windowY(std::size_t i) const { return at(mapping.y, i); }
};

/// Consecutive points, by their index.
struct IndexRange {
  std::size_t first = 0;
  std::size_t last = 0;  ///< inclusive
};

/// What a run covers along one axis.
struct RunExtent {
  Range pixels;
  IndexRange lowest;  ///< points among which its ends are, or the first of the next run
  IndexRange highest;

  void unite(const Range& other, const IndexRange& points) {
    if (other.low < pixels.low) {
      pixels.low = other.low;
      lowest = points;
    }
    if (other.high > pixels.high) {
      pixels.high = other.high;
      highest = points;
    }
  }
};

/// Consecutive points within one column of cells, or one row, or both.
struct CellRun {
  IndexRange points;
  RunExtent x;
  RunExtent y;
  Range depth;
  PixelCell column;  ///< where it begins
  PixelCell row;
  bool isInColumn = false;  ///< all of it
  bool isInRow = false;

  bool isOutside() const { return (isInColumn && column.isOutside) || (isInRow && row.isOutside); }
  bool isFlat(const PixelGrid& grid) const { return depth.size() <= grid.depthStep; }
};

}  // namespace zyn
