#pragma once

#include "contract/TriangleShape.h"

namespace zyn {

/// Draws the triangle in the current context: mode 1 its outline, any other mode the filled
/// surface. The state is left as it was, as far as AutoGLColor gives it back.
void drawTriangle3D(const TriangleShape& shape, int mode);

/// The same in the plane z = 0, facing +Z and with the plain colour even where the triangle has a
/// material.
void drawTriangle2D(const TriangleShape& shape, int mode);

}  // namespace zyn
