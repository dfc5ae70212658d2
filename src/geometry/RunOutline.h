#pragma once

#include <cstddef>
#include <vector>

#include "geometry/PixelGrid.h"
#include "geometry/PointSequence.h"
#include "geometry/RunBoxes.h"
#include "geometry/WindowMapping.h"

namespace zyn {

/// A trace and where it is drawn. `boxes` are those of `points`.
struct TraceInWindow {
  const PointSequence& points;
  const RunBoxes& boxes;
  const WindowMapping& mapping;

  double windowX(std::size_t i) const {
    return mapping.x.at(points.x(i), points.y(i), points.z(i));
  }
  double windowY(std::size_t i) const {
    return mapping.y.at(points.x(i), points.y(i), points.z(i));
  }
};

/// Consecutive points within one column of cells, or one row, or both.
struct CellRun {
  std::size_t first = 0;
  std::size_t last = 0;  ///< inclusive
  double column = 0.0;
  double row = 0.0;
  bool isInColumn = false;
  bool isInRow = false;
  bool isFlat = true;  ///< all at one depth
};

/// Appends to `chosen`, in order, the points of the run whose lines light the same pixels as the
/// lines through all of its points.
void outlineRun(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
                std::vector<std::size_t>& chosen);

}  // namespace zyn
