#pragma once

#include <memory>

#include "contract/PickQuery.h"
#include "core/PixelImage.h"
#include "core/Point.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// A picture and where it is shown.
struct SpriteShape {
  Point position;
  double originX = 0.0;  ///< of the point of the picture that lies at the position, in pixels
  double originY = 0.0;  ///< from its lower left corner
  std::shared_ptr<const PixelImage> image;  ///< null without a picture
};

/// Draws the picture over what has been drawn before, `pixelScale` pixels for each of its own, its
/// alpha multiplied by `opacity`. Leaves the state as it was, as the other functions here do.
void drawSprite3D(const SpriteShape& shape, double pixelScale, double opacity = 1);

/// Draws it at z = 0 with the tests of the context.
void drawSprite2D(const SpriteShape& shape, double pixelScale, double opacity = 1);

/// Draws, for a selection pass over a 2D view, the rectangle that the picture covers. `viewHeight`:
/// model units that the view shows from bottom to top, scales of the model apart.
void drawSpriteRectangle2D(const SpriteShape& shape, double pixelScale, double viewHeight);

/// The same where groups around the picture turn the model's axes, which it does not follow.
void drawUprightRectangle2D(const SpriteShape& shape, double pixelScale, double viewHeight,
                            GLenum frontFace);

/// False when the sprite's raster position in a selection pass lies outside, which hits nothing.
bool mayPickSprite(const SpriteShape& shape, const PickQuery& query);

/// False when drawSpriteRectangle2D or, within groups, drawUprightRectangle2D would hit nothing.
bool mayPickSpriteRectangle(const SpriteShape& shape, double pixelScale, double viewHeight,
                            const PickQuery& query);

}  // namespace zyn
