#pragma once

#include <string_view>

#include "objects/CGLFontContext_gl.h"

namespace zyn {

/// Draws a number with the digit font of a size (1 to 8, compiled before) in the raster colour, its
/// lower left corner at the raster position, which moves on behind it. Digits and "." or "," come
/// from the fonts' lists, "-", "+" and "e" are small strokes of a digit's width, any other
/// character is a gap as wide. May be compiled into a display list.
void drawDigitText(const CGLFontContext& fonts, int size, std::string_view text);

}  // namespace zyn
