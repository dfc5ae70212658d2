#pragma once

#include <array>
#include <vector>

#include "objects/Tessellation_gl.h"

namespace zyn {

/// The shape of a character in the text font, in em heights from the start of the baseline.
struct TextGlyph {
  std::vector<Contour> contours;
  Tessellation filled;
};

/// The shapes of the characters that bytes stand for, made once per process; the last byte, which
/// is never drawn, has none. Any thread.
const std::array<TextGlyph, 256>& textGlyphs();

}  // namespace zyn
