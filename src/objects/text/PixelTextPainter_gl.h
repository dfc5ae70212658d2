#pragma once

#include <string_view>

#include "objects/text/CGLFontContext_gl.h"

namespace zyn {

/// Whether texts that face the viewer look as drawGlyphs draws them when they are drawn from pixels
/// that are kept, but for a 32nd of a pixel. Not so where there are no pixels (lists, feedback), or
/// several samples of each; where somebody has left tests, clip planes, patterns or textures on.
/// The colour has to be blended by its opacity.
bool lookAlikeAsPixels(const CGLFontContext& fonts, double lineWidth);

/// Draws a text as drawGlyphs would, from pixels that are kept, in a small part of the time, and
/// leaves the state as it was. False, with nothing drawn, where it would not look the same: see
/// above, and PixelTexts::add.
bool drawAsPixels(const CGLFontContext& fonts, std::string_view text, double lineWidth);

}  // namespace zyn
