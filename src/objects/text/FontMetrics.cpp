#include "objects/text/FontMetrics.h"

#include <algorithm>

namespace zyn {

namespace {

double topOf(const GlyphMetrics& glyph) { return glyph.originY; }

double bottomOf(const GlyphMetrics& glyph) { return double{glyph.originY} - glyph.blackBoxY; }

}  // namespace

void FontMetrics::measureLines() {
  digits = {bottomOf(glyphs['0']), topOf(glyphs['0'])};
  for (std::size_t digit = '1'; digit <= '9'; ++digit) {
    digits.bottom = std::min(digits.bottom, bottomOf(glyphs[digit]));
    digits.top = std::max(digits.top, topOf(glyphs[digit]));
  }
  // Ten times the margin above: room for accents on capitals, almost none under descenders.
  const TextLine letters{bottomOf(glyphs['p']), topOf(glyphs['M'])};
  text = {letters.bottom - 0.02 * letters.height(), letters.top + 0.2 * letters.height()};
}

}  // namespace zyn
