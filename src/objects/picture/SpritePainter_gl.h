#pragma once

#include "objects/picture/SpriteShape.h"

namespace zyn {

/// Draws the picture over what has been drawn before, `pixelScale` pixels for each of its own.
/// Leaves the state as it was, as the other functions here do.
void drawSprite3D(const SpriteShape& shape, double pixelScale);

/// Draws it at z = 0 with the tests of the context.
void drawSprite2D(const SpriteShape& shape, double pixelScale);

/// Draws, for a selection pass over a 2D view, the rectangle that the picture covers. `viewHeight`:
/// model units that the view shows from bottom to top, scales of the model apart.
void drawSpriteRectangle2D(const SpriteShape& shape, double pixelScale, double viewHeight);

}  // namespace zyn
