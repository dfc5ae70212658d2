#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "glcontext/gl_api.h"
#include "objects/text/DigitFont.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/GlyphPixels.h"
#include "objects/text/GlyphShapes_gl.h"

namespace zyn {

/// The fonts of one rendering context: display lists of scalable glyphs made from the outlines of a
/// font, one em high, and eight small bitmap fonts of the digits.
///
/// The lists belong to the rendering context, and its owner releases them with it; whoever draws
/// with the fonts holds them weakly or finds them empty afterwards.
class CGLFontContext {
 public:
  CGLFontContext() = default;
  CGLFontContext(const CGLFontContext&) = delete;
  CGLFontContext& operator=(const CGLFontContext&) = delete;

  const FontMetrics& metrics() const { return metrics_; }
  /// Another number for each set of glyphs, of any context; 0 before the first.
  std::uint64_t glyphsNumber() const { return glyphsNumber_; }

  /// Whether there are glyphs to draw with; not before the first, and not after their release.
  bool hasGlyphs() const { return filledLists_ != 0 || compiles_; }
  /// Whether lines along their outlines smooth the glyphs' edges.
  bool smoothsEdges() const { return smoothsEdges_; }

  /// First of 256 lists, one a byte, that draw filled glyphs and move on to the next; 0: none.
  /// The first call compiles them, but not while another list is recorded.
  GLuint filledLists() const;
  /// The same with the glyphs' outlines as lines; 0: none.
  GLuint outlineLists() const;
  /// Compiles both now, for a list that is about to be recorded: without them it would have to
  /// hold the glyphs of its texts.
  void compileGlyphs() const;
  /// First of 11 lists that draw the digits 0 to 9 and the decimal point as bitmaps at the raster
  /// position and move it on, for a size of 1 (4 pixels high) to 8 (11 pixels high); 0: not built.
  /// With a list base of this - '0', glCallLists draws any printable text by the bytes: signs,
  /// exponent and "." have their lists too, the rest leaves gaps (digitGlyph, digitTextWidth).
  GLuint digitLists(int size) const { return digitLists_[static_cast<std::size_t>(size - 1)]; }

  /// What the lists draw, for where none may be called; null: not known.
  const GlyphShapes* shapes() const { return shapes_.get(); }

  /// What the lists draw, as pixels; null: not known, or the glyphs have no smooth edges.
  GlyphPixels* pixels() const { return pixels_.get(); }

  /// Lists of these glyphs are compiled in the current context when they are first needed: most
  /// contexts draw texts as pixels only. Lists that are there already stay as they are, since other
  /// lists may call them, but for outlines that are no longer to smooth edges.
  void setShapes(const FontMetrics& metrics, std::shared_ptr<const GlyphShapes> shapes,
                 bool smoothsEdges);

  /// Takes over lists of the current context, in place of those there were.
  void setGlyphs(const FontMetrics& metrics, GLuint filledLists, GLuint outlineLists,
                 std::shared_ptr<const GlyphShapes> shapes = nullptr);

  /// Compiles the digit fonts in the current context, unless they are there.
  void buildDigits();

  /// Deletes all lists. The context that they belong to has to be current.
  void release();

 private:
  void setLook(const FontMetrics& metrics, std::shared_ptr<const GlyphShapes> shapes,
               bool smoothsEdges);

  FontMetrics metrics_;
  std::shared_ptr<const GlyphShapes> shapes_;
  std::unique_ptr<GlyphPixels> pixels_;
  std::uint64_t glyphsNumber_ = 0;
  bool compiles_ = false;
  bool smoothsEdges_ = false;
  mutable GLuint filledLists_ = 0;
  mutable GLuint outlineLists_ = 0;
  std::array<GLuint, kDigitSizes> digitLists_{};
};

/// Draws a number with the digit font of a size (1 to 8) in the raster colour, its lower left
/// corner at the raster position, which moves on behind it. Characters as digitGlyph gives them,
/// printable ones.
void drawDigitText(const CGLFontContext& fonts, int size, std::string_view text);

}  // namespace zyn
