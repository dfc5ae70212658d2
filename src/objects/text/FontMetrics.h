#pragma once

#include <array>

namespace zyn {

/// Measures of one glyph in units of the font's em height, laid out as the platform's
/// GLYPHMETRICSFLOAT. The origin is the black box's upper left corner, relative to the point on the
/// baseline where the glyph starts.
struct GlyphMetrics {
  float blackBoxX = 0.0F;
  float blackBoxY = 0.0F;
  float originX = 0.0F;
  float originY = 0.0F;
  float cellIncX = 0.0F;  ///< advance to the next glyph
  float cellIncY = 0.0F;
};

/// Lower and upper end of a line of text, in em heights above the baseline.
struct TextLine {
  double bottom = 0.0;
  double top = 0.0;

  double height() const { return top - bottom; }
  double middle() const { return (bottom + top) / 2.0; }
};

/// Measures of a font's glyphs, by the byte that stands for the character, and of its lines.
struct FontMetrics {
  std::array<GlyphMetrics, 256> glyphs{};
  TextLine text;    ///< "M" to "p" with room for accents above
  TextLine digits;  ///< exactly the digits

  /// Sets both lines from the glyphs.
  void measureLines();
};

}  // namespace zyn
