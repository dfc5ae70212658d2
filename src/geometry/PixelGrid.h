#pragma once

#include <cmath>
#include <limits>

namespace zyn {

/// The pixels on which a trace is drawn, in window coordinates, divided into cells along each axis.
/// A cell is named by the position of its middle, in cells: whole numbers and a half. Whole numbers
/// name the narrow strips around the edges between cells, which rounding may count to either.
class PixelGrid {
 public:
  double left = 0.0;  ///< what lies outside of these bounds cannot be seen
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;
  double cellsPerPixel = 1.0;
  bool isShifted = false;  ///< by half a cell: cells change in the middle of pixels
  double depthStep = 0.0;  ///< depths that lie closer to each other are the same

  /// The column and the row of cells of a coordinate; infinite outside of the bounds.
  double column(double x) const { return cell(x, left, right); }
  double row(double y) const { return cell(y, bottom, top); }

  /// The coordinate of the middle of a column or row.
  double middle(double cell) const { return (cell - offset()) / cellsPerPixel; }

 private:
  /// Half the width of the strip around an edge, in pixels: more than the 1/256 of a pixel to which
  /// vertices are rounded.
  static constexpr double kEdge = 1.0 / 128;

  double offset() const { return isShifted ? 0.5 : 0.0; }

  double cell(double pixel, double low, double high) const {
    constexpr double kOutside = std::numeric_limits<double>::infinity();
    if (pixel < low || pixel > high) {
      return pixel < low ? -kOutside : kOutside;
    }
    const double cells = pixel * cellsPerPixel + offset();
    const double edge = std::round(cells);
    return std::fabs(cells - edge) <= kEdge * cellsPerPixel ? edge : std::floor(cells) + 0.5;
  }
};

}  // namespace zyn
