#pragma once

#include "view3d/CParamsVue3D.h"
#include "view3d/LightBlock.h"

namespace zyn {

/// Draws each light whose switch is exactly 1 as a line from its side of the camera's view box to
/// the middle of the box, in the light's colour; a white light black, to show on white. Leaves the
/// state as it was.
void drawLightLines(const CParamsVue3D& camera, const LightBlock& lights);

}  // namespace zyn
