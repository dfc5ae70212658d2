#pragma once

#include "view3d/CParamsVue3D.h"

namespace zyn {

/// Draws the directions of the coordinate axes near the lower left corner of the viewport, in front
/// of the scene: X red, Y green, Z blue, with their letters. Leaves the state as it was, except
/// that depth is cleared to the far plane from now on. `pixelScale`: pixels for one pixel of a
/// screen; up to 3 the axes grow with it.
void drawTrihedron(const CParamsVue3D& camera, double pixelScale = 1.0);

}  // namespace zyn
