#pragma once

#include <cstddef>
#include <vector>

#include "core/PixelBox.h"
#include "core/PlanePoint.h"
#include "trace/PathReduction.h"

namespace zyn {

/// What the kinds of series draw, in window coordinates: pixels from the lower left corner. Each
/// takes as much as can be seen of it, whatever the number of points.

/// Connected lines.
struct PixelLines {
  std::vector<PlanePoint> points;
  std::vector<std::size_t> starts;  ///< where in `points` each begins
};

/// The lines of a path that was reduced without spans.
PixelLines linesOf(const ReducedPath& path, const WindowMapping& mapping);

/// The same in steps: the height of a point is held up to the next one's place.
PixelLines stepsOf(const ReducedPath& path, const WindowMapping& mapping);

/// The upper (or lower) edge of the area between lines and a base: where a line crosses the base
/// there is a point, so that each piece lies on one side of it.
PixelLines areaOf(const PixelLines& lines, double base);

/// Lines that do not leave a box, in which they are the same: what is outside runs along its edges.
PixelLines heldIn(const PixelLines& lines, const PixelBox& box);

/// A rectangle.
struct PixelBar {
  double left = 0.0;
  double right = 0.0;
  double low = 0.0;
  double high = 0.0;
};

struct BarStyle {
  double width = 1.0;  ///< in units of the x axis
  double shift = 0.0;  ///< of their middles from the points, in units of the x axis
  double base = 0.0;   ///< height in the window from which they rise or fall
};

/// Bars at points; at least one pixel wide. Where there are more than a few for each column of
/// pixels, one for each column that covers what those in it cover.
std::vector<PixelBar> barsOf(const TraceInWindow& trace, const PixelGrid& grid,
                             const BarStyle& style);

/// The points at which markers are to be drawn, in order: of those within one pixel, the first.
std::vector<std::size_t> markersOf(const TraceInWindow& trace, const PixelGrid& grid);

}  // namespace zyn
