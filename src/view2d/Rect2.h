#pragma once

#include <algorithm>

namespace zyn {

/// A rectangle in the plane, given by its bounds. Nothing keeps a lower bound below the upper one.
struct Rect2 {
  double xMin = 0.0;
  double xMax = 0.0;
  double yMin = 0.0;
  double yMax = 0.0;

  bool operator==(const Rect2& other) const = default;

  double width() const { return xMax - xMin; }
  double height() const { return yMax - yMin; }

  /// The same rectangle with its bounds in order.
  Rect2 ordered() const {
    return {std::min(xMin, xMax), std::max(xMin, xMax), std::min(yMin, yMax), std::max(yMin, yMax)};
  }
};

}  // namespace zyn
