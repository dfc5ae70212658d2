#pragma once

#include <cstdlib>

#include "view/PixelPoint.h"

namespace zyn {

/// The rectangle that a pick looks at, in client pixels (x from the left, y from the top).
struct PickRegion {
  double centreX = 0.0;
  double centreY = 0.0;
  double width = 1.0;
  double height = 1.0;

  bool operator==(const PickRegion& other) const = default;

  /// A square of `size` pixels about the point that the pixel's coordinates name.
  static PickRegion around(PixelPoint pixel, double size) {
    return {static_cast<double>(pixel.x), static_cast<double>(pixel.y), size, size};
  }

  /// The rectangle between two pixels.
  static PickRegion between(PixelPoint a, PixelPoint b) {
    return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0, static_cast<double>(std::abs(a.x - b.x)),
            static_cast<double>(std::abs(a.y - b.y))};
  }
};

}  // namespace zyn
