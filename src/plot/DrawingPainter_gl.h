#pragma once

#include "core/PlanePoint.h"
#include "glcontext/Tile.h"
#include "plot/Drawing.h"

namespace zyn {

/// Draws a graph into the current context, in front of all that was drawn before. `picture`: its
/// width and height in pixels; `part` of it is what the viewport shows. The state is left as it
/// was.
void paintDrawing(const Drawing& drawing, const PlanePoint& picture, const PicturePart& part);

}  // namespace zyn
