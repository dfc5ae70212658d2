#pragma once

#include "contract/PickQuery.h"
#include "objects/picture/SpriteShape.h"

namespace zyn {

/// False when the sprite's raster position in a selection pass lies outside, which hits nothing.
bool mayPickSprite(const SpriteShape& shape, const PickQuery& query);

/// False when drawSpriteRectangle2D would hit nothing.
bool mayPickSpriteRectangle(const SpriteShape& shape, double pixelScale, double viewHeight,
                            const PickQuery& query);

}  // namespace zyn
