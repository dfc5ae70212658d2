#pragma once

#include "view2d/Rect2.h"

namespace zyn {

/// How a graph lies in its window, in model units: what the window shows, and the size of a pixel.
/// A negative scale makes a size negative and swaps the bounds: xMin is always at the left edge of
/// the window, yMin at the lower one.
struct GraphPlacement {
  Rect2 visible;
  double unitsPerPixelX = 0.0;
  double unitsPerPixelY = 0.0;
};

}  // namespace zyn
