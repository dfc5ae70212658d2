#pragma once

#include "view2d/Grid.h"
#include "view2d/ScaledView.h"

namespace zyn {

/// Draws the grid over the whole viewport, which shows the view: lines of one pixel, unlit. Loads
/// matrices of its own; leaves all else as it was.
void drawGrid(const Grid& grid, const ScaledView& scaled);

}  // namespace zyn
