#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/Point.h"
#include "objects/text/DimensionLayout.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/ShapedText.h"

namespace zyn {

/// What lies behind a text.
struct TextBackground {
  bool isFilled = false;
  bool isFramed = false;  ///< by lines in the text's colour
  double r = 1.0, g = 1.0, b = 1.0, alpha = 1.0;
};

/// A text, or a number, at a model position, with a height in pixels; in a plane also a linear
/// dimension with it.
struct TextLabel {
  std::string text;  ///< one byte a character of the font
  double value = 0.0;
  bool isNumeric = false;    ///< shows the value instead of the text
  bool numericSize = false;  ///< the line is as high as digits are
  std::int32_t height = 20;  ///< of the line, pixels
  double r = 0.0, g = 0.0, b = 0.0, alpha = 1.0;
  Point position;              ///< model units
  std::int32_t reference = 0;  ///< what of the text lies at the position, see anchorOf
  bool alwaysReadable = true;  ///< faces the viewer and ignores depth
  std::int32_t nomSelection = 0;
  std::int32_t typeSelection = 0;
  bool pushTypeSelection = false;
  TextBackground background;
  DimensionSettings dimension;

  /// What is drawn in place of the shown text in the glyphs of the rendering context; null: that.
  std::shared_ptr<const ShapedText> shaped;

  std::string shownText() const;

  /// Its line of text.
  const TextLine& line(const FontMetrics& metrics) const;

  /// Around the shown text, in em heights.
  TextBox box(const FontMetrics& metrics) const;

  /// Whether there is anything behind a text with this box.
  bool hasBackground(const TextBox& box) const {
    return (background.isFilled || background.isFramed) && box.right > box.left;
  }

  /// Around all that is seen, where the text has this box.
  TextBox surround(const TextBox& box) const;

  /// Pixels of an em height where the line of a text with this box is as high as it should be; 0
  /// where nothing is to be seen.
  double emHeight(const TextBox& box) const;

  /// The size of the digit font that a 2D view draws it with, `pixelScale` pixels for one of the
  /// label's measures; 0: none.
  int digitSize(double pixelScale) const;

  /// Around the number as a digit font draws it, in pixels.
  TextBox digitBox(int size) const;

  /// What surrounds the text, in pixels, relative to the position, its sides moved outwards to
  /// whole pixels.
  TextBox pixelBox(const FontMetrics& metrics) const;
};

}  // namespace zyn
