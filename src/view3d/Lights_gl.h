#pragma once

#include "view3d/LightBlock.h"

namespace zyn {

/// Sets the global ambient light, GL_LIGHT0 and GL_LIGHT1 of the current context. Directions are
/// taken in the coordinates of the model-view matrix, which is the identity for lights that turn
/// with the eye.
void applyLights(const LightBlock& lights);

}  // namespace zyn
