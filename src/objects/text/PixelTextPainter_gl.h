#pragma once

#include <string_view>

#include "objects/text/CGLFontContext_gl.h"

namespace zyn {

/// Draws a text as drawGlyphs would, from pixels that are kept, and leaves the state as it was.
/// This takes a small part of the time, and looks the same but for a 32nd of a pixel. False, with
/// nothing drawn, where it would not look the same: what does not become pixels (lists, feedback),
/// or is sampled more than once a pixel; a text that is turned, stretched or very large; tests,
/// clip planes, patterns or textures that somebody has left on. The current colour has to be
/// blended by its opacity.
bool drawAsPixels(const CGLFontContext& fonts, std::string_view text, double lineWidth);

}  // namespace zyn
