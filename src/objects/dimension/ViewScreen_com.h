#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "core/ScreenMap.h"

namespace zyn {

/// The pixels of a view.
struct ViewScreen {
  ScreenMap map;
  double top = 0.0;  ///< row of the map at which the view's client area begins

  /// A pixel of the map in client coordinates, y downwards.
  PlanePoint clientPixel(const Point& point) const {
    const PlanePoint pixel = map.pixelOf(point);
    return {pixel.x, top - pixel.y};
  }
};

/// The screen of `view` where that is one of our views with something to be seen; else that of the
/// current rendering context; without one, a pixel for each model unit.
ViewScreen screenOf(IDispatch* view);

}  // namespace zyn
