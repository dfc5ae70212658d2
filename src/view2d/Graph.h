#pragma once

#include <array>
#include <string>

#include "core/PixelImage.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// Red, green, blue from 0 to 1.
using GraphColour = std::array<double, 3>;

/// What stands at the end of an axis: name and unit, by the bytes for which the font has glyphs, or
/// a picture in their place.
struct AxisTitle {
  std::string name;
  std::string unit;
  PixelImage picture;
};

/// A graph with linear axes, in model units.
struct LinearGraph {
  struct Axis {
    AxisTitle title;
    double min = 0.0;
    double max = 0.0;
    double bigStep = 0.0;    ///< between graduations with labels
    double smallStep = 0.0;  ///< between those without
  };

  GraphColour colour{};
  Axis x;
  Axis y;
};

/// A graph with logarithmic axes: model units are decades (powers of ten).
struct LogLogGraph {
  struct Axis {
    PixelImage picture;  ///< its title
    double min = 0.0;
    double max = 0.0;
    GraphColour graduationColour{};
  };

  GraphColour colour{};
  Axis x;
  Axis y;
};

/// How a graph lies in its window, in model units: what the window shows, and the size of a pixel
/// of a screen. A negative scale makes a size negative and swaps the bounds: xMin is always at the
/// left edge of the window, yMin at the lower one.
struct GraphPlacement {
  Rect2 visible;
  double unitsPerPixelX = 0.0;
  double unitsPerPixelY = 0.0;
  double pixelScale = 1.0;  ///< pixels of the window for one pixel of a screen
};

}  // namespace zyn
