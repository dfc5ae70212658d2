#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "trace/Range.h"

namespace zyn {

/// A column or a row of a grid's cells, along the axis that tells it from its neighbours.
struct PixelCell {
  Range pixels;         ///< what it holds, in window coordinates
  double middle = 0.0;  ///< between its edges
  bool isEdge =
      false;  ///< the narrow strip around an edge, which rounding may count to either side
  bool isOutside = false;  ///< all that lies beyond one bound of the grid
};

/// The pixels on which a trace is drawn, in window coordinates, divided into cells along each axis.
class PixelGrid {
 public:
  double left = 0.0;  ///< what lies outside of these bounds cannot be seen
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;
  double cellsPerPixel = 1.0;
  bool isShifted = false;  ///< by half a cell: cells change in the middle of pixels
  bool isThin = false;  ///< lines are one pixel wide, and a pixel shows only whether one lights it
  bool takesSpans = false;  ///< pixels of thin lines may be lit by other lines, at any depth
  double depthStep = 0.0;   ///< depths that lie closer to each other are the same

  bool operator==(const PixelGrid&) const = default;

  /// The column and the row of cells that hold a coordinate.
  PixelCell column(double x) const { return cell(x, {left, right}); }
  PixelCell row(double y) const { return cell(y, {bottom, top}); }

  /// Whether all of an area lies beyond one bound.
  bool isOutside(const Range& x, const Range& y) const {
    return x.high < left || x.low > right || y.high < bottom || y.low > top;
  }

 private:
  /// Half the width of the strip around an edge, in pixels: more than the 1/256 of a pixel to which
  /// vertices are rounded.
  static constexpr double kEdge = 1.0 / 128;

  double toPixels(double cells) const { return (cells - (isShifted ? 0.5 : 0.0)) / cellsPerPixel; }

  PixelCell cell(double pixel, const Range& bounds) const {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (pixel < bounds.low) {
      return {{-kInfinity, bounds.low}, -kInfinity, false, true};
    }
    if (pixel > bounds.high) {
      return {{bounds.high, kInfinity}, kInfinity, false, true};
    }
    const double cells = pixel * cellsPerPixel + (isShifted ? 0.5 : 0.0);
    const double below = std::floor(cells);
    const double lower = toPixels(below);
    const double upper = toPixels(below + 1);
    const auto within = [&bounds](double low, double high) {
      return Range{std::max(low, bounds.low), std::min(high, bounds.high)};
    };
    if (pixel - lower <= kEdge) {
      return {within(lower - kEdge, lower + kEdge), lower, true};
    }
    if (upper - pixel <= kEdge) {
      return {within(upper - kEdge, upper + kEdge), upper, true};
    }
    return {within(lower + kEdge, upper - kEdge), (lower + upper) / 2};
  }
};

}  // namespace zyn
