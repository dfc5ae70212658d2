#pragma once

#include "glcontext/Tile.h"
#include "objects/scale/ScaleBar.h"
#include "objects/text/CGLFontContext_gl.h"

namespace zyn {

/// Draws a scale as a bar, its frame, ticks and texts with a halo, so that they are legible on
/// every background, in front of all that is drawn before and after. The viewport shows `part` of
/// the picture. Without fonts there are no texts. The state is left as it was.
void drawScaleBar(const ScaleBar& bar, const ColourScale& scale, const CGLFontContext* fonts,
                  const PicturePart& part, double pixelScale, double opacity);

}  // namespace zyn
