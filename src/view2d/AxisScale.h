#pragma once

#include <cmath>

namespace zyn {

/// An axis of a graph in its window: its range in model units, and the size of a pixel.
struct AxisScale {
  double min = 0.0;
  double max = 0.0;
  double unitsPerPixel = 0.0;  ///< below 0 where the axis is mirrored

  /// Pixels from the start of the axis.
  double position(double value) const { return (value - min) / unitsPerPixel; }

  double length() const { return position(max); }

  /// How many pixels there are along it; 0 where that has no sense.
  double pixels() const { return std::isfinite(length()) ? std::abs(length()) : 0.0; }
};

}  // namespace zyn
