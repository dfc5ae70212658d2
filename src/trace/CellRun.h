#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "trace/PixelGrid.h"
#include "trace/PointSequence.h"
#include "trace/WindowMapping.h"

namespace zyn {

/// A trace and where it is drawn. `boxes` are those of `points`.
struct TraceInWindow {
  const PointSequence& points;
  const RunBoxes& boxes;
  const WindowMapping& mapping;

  /// What is chosen does not depend on where boxes begin: a trace that has lost its oldest points
  /// is drawn as a new one of those that are left.
  bool isStable = false;

  /// A form, or anything else that has a value `at` a place, at a point.
  template <class Form>
  double at(const Form& form, std::size_t i) const {
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
  bool isOnEdge() const { return (isInColumn && column.isEdge) || (isInRow && row.isEdge); }
  bool isFlat(const PixelGrid& grid) const { return depth.size() <= grid.depthStep; }

  /// The column that holds the run, or else the row.
  const PixelCell& lane() const { return isInColumn ? column : row; }
  const RunExtent& along() const { return isInColumn ? y : x; }
  const AffineForm& along(const WindowMapping& mapping) const {
    return isInColumn ? mapping.y : mapping.x;
  }
  const AffineForm& across(const WindowMapping& mapping) const {
    return isInColumn ? mapping.x : mapping.y;
  }
};

/// Appends to `chosen`, in order, the points of the run whose lines light the same pixels as the
/// lines through all of its points.
void outlineRun(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
                std::vector<std::size_t>& chosen);

/// How far a point reaches along a column into the diamond in the middle of its pixel: OpenGL draws
/// the pixels whose diamond a line leaves, so that the corners of a pixel do not count.
struct DiamondReach {
  AffineForm along;
  AffineForm across;
  double middle;    ///< of the column
  bool isAtMiddle;  ///< the middles of pixels lie there, not at the column's edges

  double at(double x, double y, double z) const {
    const double away = std::fabs(across.at(x, y, z) - middle);
    return isAtMiddle ? along.at(x, y, z) - away : along.at(x, y, z) + away;
  }
  double highest(const Box3& box) const {
    const double low = across.lowest(box) - middle;
    const double high = across.highest(box) - middle;
    return isAtMiddle ? along.highest(box) - std::max({low, -high, 0.0})
                      : along.highest(box) + std::max(-low, high);
  }
};

}  // namespace zyn
