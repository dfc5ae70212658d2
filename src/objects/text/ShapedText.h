#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "objects/text/FontFace.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphShape.h"

namespace zyn {

/// A glyph, and where it starts on or about the baseline.
struct PlacedGlyph {
  std::shared_ptr<const GlyphShape> shape;
  PlanePoint at;
};

/// A glyph as files name it.
struct FontGlyph {
  std::size_t font = 0;      ///< which of the text's fonts
  std::uint16_t number = 0;  ///< in that font
  PlanePoint at{};           ///< where it starts
  std::wstring text{};       ///< what it stands for; empty where that is told by another one
};

/// A line of text as it is drawn, in em heights from the start of its baseline.
struct ShapedText {
  std::vector<PlacedGlyph> glyphs;  ///< from left to right; blanks are left out
  double left = 0.0;                ///< ends of what is seen
  double right = 0.0;
  double width = 0.0;  ///< to where another text would follow
  TextLine text;       ///< of the font that was asked for, as FontMetrics has it
  TextLine digits;

  std::vector<FontFace> fonts{};        ///< in which the glyphs are
  std::vector<FontGlyph> fontGlyphs{};  ///< from left to right, blanks too

  /// Around it, as high as one of its lines.
  TextBox box(const TextLine& line) const { return {left, right, line.bottom, line.top}; }
};

}  // namespace zyn
