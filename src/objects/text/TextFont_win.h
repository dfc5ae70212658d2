#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphShapes_gl.h"

namespace zyn {

/// A text in the system's ANSI code page, one byte a character in the western ones, as the glyphs
/// of fonts are numbered; up to its first null character.
std::string narrowText(std::wstring_view text);

/// A text in the system's ANSI code page, as it reads.
std::wstring wideText(std::string_view text);

/// The measures of the glyphs of the font that all text is drawn with, as rendering contexts have
/// them, without a rendering context; all 0 where the system has no such font.
std::shared_ptr<const FontMetrics> textFontMetrics();

/// The shapes of the text font's characters, made once per process; the last byte, which is never
/// drawn, has none. Any thread.
std::shared_ptr<const GlyphShapes> textGlyphs();

}  // namespace zyn
