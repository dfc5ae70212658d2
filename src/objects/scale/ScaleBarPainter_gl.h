#pragma once

#include "glcontext/Tile.h"
#include "objects/scale/ScaleBar.h"
#include "objects/text/CGLFontContext_gl.h"

namespace zyn {

/// What a bar has to know about the picture.
struct BarView {
  PicturePart part{};       ///< that the viewport shows
  double pixelScale = 1.0;  ///< pixels for one pixel of the bar's measures
  bool isOnDark = false;    ///< the background is nearer to black than to white
  double opacity = 1.0;
};

/// Draws a scale as a bar in front of all that is drawn before and after; frame, ticks and texts
/// with a halo, so that they are legible on the scene too. Without fonts there are no texts. The
/// state is left as it was.
void drawScaleBar(const ScaleBar& bar, const ColourScale& scale, const CGLFontContext* fonts,
                  const BarView& view);

}  // namespace zyn
