#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/PlanePoint.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphShape.h"

namespace zyn {

/// A rectangle of pixels, rows from bottom to top without gaps, and how much of each is covered,
/// 255 for all.
struct PixelCover {
  int left = 0;
  int bottom = 0;
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bytes;
};

/// A run of text as pixels see it: upright, pixels counted from the lower left of what is seen.
struct PixelText {
  std::string_view text;  ///< one byte a character
  PlanePoint start;       ///< of its baseline
  double em = 0.0;        ///< pixels of an em height, 1 to kLargestEm
  double opacity = 1.0;

  static constexpr double kLargestEm = 100.0;
};

/// A glyph in its place.
struct PixelGlyph {
  const PixelCover* background;  ///< how much of what is behind it is seen, 255 for all
  int x;                         ///< the pixel that its place is counted from
  int y;
};

/// Pixels from the lower left of what is seen.
struct CoverBox {
  int left = 0;
  int bottom = 0;
  int right = 0;  ///< the first outside
  int top = 0;

  bool isEmpty() const { return right <= left || top <= bottom; }
  std::size_t area() const {
    return isEmpty()
               ? 0
               : static_cast<std::size_t>(right - left) * static_cast<std::size_t>(top - bottom);
  }
  void unite(const CoverBox& other);
};

/// What glyphs cover together of a box.
PixelCover coverOf(std::span<const PixelGlyph> glyphs, const CoverBox& box);

/// The glyphs of a font as pixels. Each is made when it is first needed, for a height, an opacity
/// and a place between pixels, and kept within a bound.
class GlyphPixels {
 public:
  GlyphPixels(std::shared_ptr<const GlyphShapes> shapes, const FontMetrics& metrics)
      : shapes_(std::move(shapes)), metrics_(metrics) {}

  /// More than this is kept of the texts alone that were placed last.
  static constexpr std::size_t kMostBytes = std::size_t{4} << 20U;
  std::size_t keptBytes() const { return bytes_; }

  /// Adds those of a text that may be seen in a picture `width` times `height` pixels large to
  /// `glyphs`, and tells what they can cover of it. They live until forgetMany() is called. Throws
  /// std::bad_alloc.
  CoverBox place(const PixelText& text, int width, int height, std::vector<PixelGlyph>& glyphs);

  /// Forgets all if more are kept than the bound allows.
  void forgetMany();

 private:
  const PixelCover& glyphOf(unsigned char code, int phaseX, int phaseY, const PixelText& text);

  std::shared_ptr<const GlyphShapes> shapes_;
  FontMetrics metrics_;
  std::unordered_map<std::uint64_t, PixelCover> glyphs_;  ///< as in PixelGlyph
  std::size_t bytes_ = 0;
};

}  // namespace zyn
