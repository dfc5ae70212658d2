#include "objects/text/TextGlyphs_win.h"

#include "objects/text/GlyphContours_win.h"
#include "objects/text/TextFont_win.h"
#include "platform/MadeOnce_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

namespace {

constexpr LONG kEm = 1024;  ///< in which outlines are exact enough
constexpr double kDeviation = 0.25;
constexpr std::size_t kCharacters = 255;  ///< the last byte is never drawn

GlyphShape makeGlyph(HDC dc, unsigned char character, bool& isWhole) {
  GlyphShape glyph;
  glyph.contours = glyphContours(dc, character, kDeviation, isWhole);
  for (Contour& contour : glyph.contours) {
    for (PlanePoint& point : contour) {
      point = {point.x / kEm, point.y / kEm};
    }
  }
  glyph.filled = tessellate(glyph.contours);
  return glyph;
}

GlyphShapes makeGlyphs(bool& isWhole) {
  GlyphShapes glyphs;
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UniqueFont font = makeTextFont(-kEm);
  if (!dc || !font) {
    isWhole = false;
    return glyphs;
  }
  const SelectedFont selected(dc.get(), font.get());
  for (std::size_t byte = 0; byte < kCharacters; ++byte) {
    glyphs[byte] = makeGlyph(dc.get(), static_cast<unsigned char>(byte), isWhole);
  }
  return glyphs;
}

}  // namespace

std::shared_ptr<const GlyphShapes> textGlyphs() {
  static MadeOnce<GlyphShapes> glyphs;
  return glyphs.get(makeGlyphs);
}

}  // namespace zyn
