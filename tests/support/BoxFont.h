#pragma once

#include "objects/text/FontMetrics.h"

namespace zyn::test {

/// A font in which every character from "!" is a black box, 0.3 em wide in the middle of 0.5 and
/// from the baseline to 0.75, "p" going on to 0.25 below.
inline FontMetrics boxFont() {
  FontMetrics font;
  for (std::size_t i = 0; i < font.glyphs.size(); ++i) {
    GlyphMetrics& glyph = font.glyphs.at(i);
    glyph.cellIncX = 0.5F;
    if (i > ' ') {
      glyph.blackBoxX = 0.3F;
      glyph.blackBoxY = i == 'p' ? 1.0F : 0.75F;
      glyph.originX = 0.1F;
      glyph.originY = 0.75F;
    }
  }
  font.measureLines();
  return font;
}

}  // namespace zyn::test
