#pragma once

#include "view/Pixels.h"

namespace zyn {

/// Draws the outline of a rubber band, one pixel of a screen (`pixelScale` pixels) wide and in
/// black and white, so that it shows on any background. Its corners are exactly the two pixels.
/// Leaves the state as it was.
void drawRubberBand(const RubberBand& band, double pixelScale = 1.0);

}  // namespace zyn
