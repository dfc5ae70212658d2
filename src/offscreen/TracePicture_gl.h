#pragma once

#include <functional>

#include "glcontext/Tile.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// What one pass over the traces of a picture shows, and how.
struct TracePicture {
  ScaledView shown;
  PicturePart part;
  double pixelScale = 1.0;  ///< width of a plain line and size of a plain point, in pixels; above 0
};

/// Draws traces into the current context: clears, then calls `drawList` with projection and
/// model-view matrix set, which stay. What it throws is passed on; the stacks are balanced on every
/// path.
void drawTraces(const TracePicture& picture, const std::function<void()>& drawList);

}  // namespace zyn
