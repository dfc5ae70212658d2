#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/PlanePoint.h"

namespace zyn {

/// Height of a line of text, in one of several units.
struct FontSize {
  enum Unit : std::int32_t {
    kPixel,
    kMillimetre,
    kInch,
    kPoint,
    kModelMillimetre,
    kModelInch,
    kModel
  };

  double value = 20.0;
  std::int32_t unit = kPixel;  ///< any other value counts as pixels

  /// Whether it is a length in the model, whose size on the screen depends on the view.
  bool isInModel() const { return unit >= kModelMillimetre && unit <= kModel; }

  /// In pixels, on paper of `resolution` dots per inch, where a pixel is `pixel` model units long.
  /// The model unit is the metre for lengths in millimetres and inches.
  double inPixels(double pixel, double resolution) const;
};

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

/// Box around a run of text, relative to the start of its baseline; in em heights unless it says
/// otherwise.
struct TextBox {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;

  double height() const { return top - bottom; }
};

/// The box of a text, one byte a character, as high as `line`; without width for an empty text.
TextBox measureText(const FontMetrics& metrics, std::string_view text, const TextLine& line);

/// The point of the box that a text is held by: 1 bottom left, 2 bottom right, 3 top right, 4 top
/// left, 5 bottom centre, 6 right middle, 7 top centre, 8 left middle, 9 centre, any other the
/// start of the baseline.
PlanePoint anchorOf(const TextBox& box, std::int32_t reference);

}  // namespace zyn
