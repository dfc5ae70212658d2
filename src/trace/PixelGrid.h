#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {

/// What lies so close, in pixels, to an edge or to the middle of pixels may be on either side of
/// it: more than the 1/256 to which OpenGL rounds vertices.
constexpr double kRounding = 1.0 / 128;

/// The numbers from `low` to `high`, ends included.
struct Range {
  double low = 0.0;
  double high = 0.0;

  double size() const { return high - low; }
  bool holds(double value) const { return value >= low && value <= high; }
  bool holds(const Range& other) const { return other.low >= low && other.high <= high; }
};

/// Whether a place may be in the middle between two edges of pixels.
inline bool isInMiddle(double place) {
  return std::fabs(place - std::floor(place) - 0.5) < kRounding;
}

/// A column or a row of a grid's cells, along the axis that tells it from its neighbours.
struct PixelCell {
  Range pixels;            ///< what it holds, in window coordinates
  double middle = 0.0;     ///< between its edges
  bool isEdge = false;     ///< the strip around an edge, which rounding may count to either side
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
  bool isSoft = false;  ///< a pixel shows by how much a line covers it: SoftWriter
  bool isMagnified = false;  ///< cells are so small that a run shows only how far it reaches
  bool isDashed = false;     ///< dashes are counted from where lines begin, seen or not
  bool takesSpans = false;   ///< pixels of thin lines may be lit by other lines, at any depth
  double depthStep = 0.0;    ///< depths that lie closer to each other are the same

  bool operator==(const PixelGrid&) const = default;

  /// Whether it shows where lines begin and end that lead out of sight.
  bool showsBegins() const { return isSoft || isDashed; }

  /// The column and the row of cells that hold a coordinate.
  PixelCell column(double x) const { return cell(x, {left, right}); }
  PixelCell row(double y) const { return cell(y, {bottom, top}); }

  /// Whether all of an area lies beyond one bound.
  bool isOutside(const Range& x, const Range& y) const {
    return x.high < left || x.low > right || y.high < bottom || y.low > top;
  }

 private:
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
    if (isSoft || isMagnified) {
      return {within(lower, upper), (lower + upper) / 2};
    }
    if (pixel - lower <= kRounding) {
      return {within(lower - kRounding, lower + kRounding), lower, true};
    }
    if (upper - pixel <= kRounding) {
      return {within(upper - kRounding, upper + kRounding), upper, true};
    }
    return {within(lower + kRounding, upper - kRounding), (lower + upper) / 2};
  }
};

}  // namespace zyn
