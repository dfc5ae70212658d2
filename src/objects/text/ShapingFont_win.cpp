#include "objects/text/ShapingFont_win.h"

#include <algorithm>

#include "objects/text/GlyphShapes_gl.h"

namespace zyn {

namespace {

/// Glyphs that a font keeps: more than all letters of most scripts, some megabytes.
constexpr std::size_t kMostGlyphs = 4096;

/// Of a font's design in an em height: 0 for one without outlines; none where the system refuses to
/// tell.
std::optional<UINT> unitsOf(HDC dc, const FontFace& face) {
  const UniqueFont font = makeFont(face);
  if (!font) {
    return std::nullopt;
  }
  const SelectedFont selected(dc, font.get());
  const UINT units = designUnits(dc);
  TEXTMETRICW measures = {};
  const bool hasOutlines = units != 0 || GetTextMetricsW(dc, &measures) == FALSE ||
                           (measures.tmPitchAndFamily & TMPF_TRUETYPE) != 0;
  return units != 0 || !hasOutlines ? std::optional(units) : std::nullopt;
}

void measureEnds(ShapingFont::Glyph& glyph) {
  const PlanePoint& any = glyph.shape->contours.front().front();
  glyph.left = glyph.right = any.x;
  for (const Contour& contour : glyph.shape->contours) {
    for (const PlanePoint& point : contour) {
      glyph.left = std::min(glyph.left, point.x);
      glyph.right = std::max(glyph.right, point.x);
    }
  }
}

}  // namespace

std::shared_ptr<ShapingFont> ShapingFont::make(HDC dc, const FontFace& face, bool& isWhole) {
  const std::optional<UINT> units = unitsOf(dc, face);
  UniqueFont font = units && *units != 0 ? makeFont(face, -static_cast<LONG>(*units)) : nullptr;
  if (!font) {
    isWhole = isWhole && units && *units == 0;
    return nullptr;
  }
  const SelectedFont selected(dc, font.get());
  return std::make_shared<ShapingFont>(dc, face, std::move(font), *units, isWhole);
}

ShapingFont::ShapingFont(HDC dc, const FontFace& face, UniqueFont font, double em, bool& isWhole)
    : face_(face), font_(std::move(font)), em_(em), characters_(charactersOf(dc, isWhole)) {
  measureLines(dc, isWhole);
}

void ShapingFont::measureLines(HDC dc, bool& isWhole) {
  TEXTMETRICW whole = {};
  isWhole = GetTextMetricsW(dc, &whole) != FALSE && isWhole;
  text_ = digits_ = {-whole.tmDescent / em_, whole.tmAscent / em_};
  FontMetrics metrics;
  for (const char character : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'M', 'p'}) {
    const auto code = static_cast<unsigned char>(character);
    const auto glyph = glyphMetrics(dc, {GetGlyphOutlineW, code}, em_);
    isWhole = isWhole && glyph;
    if (!glyph || !characters_.contain(code)) {
      return;  // a font of signs
    }
    metrics.glyphs[code] = *glyph;
  }
  metrics.measureLines();
  text_ = metrics.text;
  digits_ = metrics.digits;
}

std::optional<ShapingFont::Glyph> ShapingFont::glyph(HDC dc, WORD number) {
  if (const auto known = glyphs_.find(number); known != glyphs_.end()) {
    return known->second;
  }
  const GlyphQuestion question{GetGlyphOutlineW, number, GGO_GLYPH_INDEX};
  const auto metrics = glyphMetrics(dc, question, em_);
  auto contours = glyphContours(dc, question, em_);
  if (!metrics || !contours) {
    return std::nullopt;
  }
  Glyph glyph{.shape = nullptr, .advance = metrics->cellIncX};
  if (!contours->empty()) {
    Triangles filled = tessellate(*contours);
    glyph.shape =
        std::make_shared<const GlyphShape>(GlyphShape{std::move(*contours), std::move(filled)});
    measureEnds(glyph);
  }
  if (glyphs_.size() >= kMostGlyphs) {
    glyphs_.clear();
  }
  glyphs_.emplace(number, glyph);
  return glyph;
}

}  // namespace zyn
