#pragma once

#include <array>

#include "view2d/CParamsVue2D.h"

namespace zyn {

/// The grid of a 2D view: lines at the multiples of its steps (model units). A step that is not
/// above 0, or so small that there would be more lines than pixels, gives no lines.
struct Grid {
  std::array<float, 3> colour{0.7F, 0.7F, 0.7F};
  double stepX = 0.0;  ///< between vertical lines
  double stepY = 0.0;
};

/// Draws the grid over the whole viewport, which shows the view: lines of one pixel of a screen
/// (`pixelScale` pixels), unlit. Loads matrices of its own; leaves all else as it was.
void drawGrid(const Grid& grid, const ScaledView& scaled, double pixelScale = 1.0);

}  // namespace zyn
