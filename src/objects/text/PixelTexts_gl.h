#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "core/GlMatrix.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/text/GlyphPixels.h"

namespace zyn {

/// Where pixels are in the current context.
struct PixelStage {
  PixelStage();

  GlMatrix projection;
  std::array<GLint, 4> viewport{};
};

/// Upright texts of one colour, drawn at once from pixels that are kept.
class PixelTexts {
 public:
  /// Of glyphs that outlive this, and that nobody else takes until these texts are drawn.
  explicit PixelTexts(GlyphPixels& glyphs) : pixels_(&glyphs) {}

  /// Adds a text whose baseline starts at the origin of a model-view matrix, whose unit is an em
  /// height. False for one that is turned, stretched or very large. Throws std::bad_alloc.
  bool add(std::string_view text, double opacity, const GlMatrix& plane, const PixelStage& stage);

  /// Whether it is time to draw, lest too much is kept.
  bool areMany() const;

  /// Draws what has been added, and forgets it, where it was added for. The depth test is off, and
  /// opacity blended; the state is left as it was. Throws std::bad_alloc.
  void draw(const Float4& colour, const PixelStage& stage);

 private:
  /// A text that is seen.
  struct Placed {
    std::size_t glyphs;  ///< from this on
    CoverBox box;
  };

  void place(const PixelText& text, const PixelStage& stage);
  bool belongTogether() const;
  void drawApart(const Float4& colour, const PixelStage& stage) const;
  void drawPart(std::size_t first, std::size_t end, const CoverBox& box, const Float4& colour,
                const PixelStage& stage) const;

  GlyphPixels* pixels_;
  std::vector<PixelGlyph> glyphs_;
  std::vector<Placed> texts_;
  CoverBox box_;
};

}  // namespace zyn
