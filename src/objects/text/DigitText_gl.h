#pragma once

#include <string_view>

#include "objects/text/CGLFontContext_gl.h"

namespace zyn {

/// Draws a number with the digit font of a size (1 to 8) in the raster colour, its lower left
/// corner at the raster position, which moves on behind it. Characters as digitGlyph gives them,
/// printable ones.
void drawDigitText(const CGLFontContext& fonts, int size, std::string_view text);

}  // namespace zyn
