#pragma once

#include <memory>
#include <vector>

#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphShape.h"

namespace zyn {

/// A glyph, and where it starts on or about the baseline.
struct PlacedGlyph {
  std::shared_ptr<const GlyphShape> shape;
  PlanePoint at;
};

/// A line of text as it is drawn, in em heights from the start of its baseline.
struct ShapedText {
  std::vector<PlacedGlyph> glyphs;  ///< from left to right; blanks are left out
  double left = 0.0;                ///< ends of what is seen
  double right = 0.0;
  double width = 0.0;  ///< to where another text would follow
  TextLine text;       ///< of the font that was asked for, as FontMetrics has it
  TextLine digits;

  /// Around it, as high as one of its lines.
  TextBox box(const TextLine& line) const { return {left, right, line.bottom, line.top}; }
};

}  // namespace zyn
