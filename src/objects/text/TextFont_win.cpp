#include "objects/text/TextFont_win.h"

#include <cwchar>

#include "platform/MadeOnce_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

namespace {

constexpr UINT kGlyphs = 255;  ///< the last byte is never drawn

/// Units of the font's own design in an em height; 0 for a font without outlines.
UINT designUnits(HDC dc) {
  const UniqueFont font = makeTextFont();
  if (!font) {
    return 0;
  }
  const SelectedFont selected(dc, font.get());
  OUTLINETEXTMETRICW measures = {};
  return GetOutlineTextMetricsW(dc, sizeof measures, &measures) != 0 ? measures.otmEMSquare : 0;
}

GlyphMetrics measureGlyph(HDC dc, UINT character, float unitsInEm, bool& isWhole) {
  constexpr MAT2 kUpright = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
  GLYPHMETRICS glyph = {};
  if (GetGlyphOutlineA(dc, character, GGO_METRICS, &glyph, 0, nullptr, &kUpright) == GDI_ERROR) {
    isWhole = false;
    return {};
  }
  return {static_cast<float>(glyph.gmBlackBoxX) / unitsInEm,
          static_cast<float>(glyph.gmBlackBoxY) / unitsInEm,
          static_cast<float>(glyph.gmptGlyphOrigin.x) / unitsInEm,
          static_cast<float>(glyph.gmptGlyphOrigin.y) / unitsInEm,
          static_cast<float>(glyph.gmCellIncX) / unitsInEm,
          static_cast<float>(glyph.gmCellIncY) / unitsInEm};
}

FontMetrics measureTextFont(bool& isWhole) {
  FontMetrics metrics;
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UINT units = dc ? designUnits(dc.get()) : 0;
  // As large as it was designed, nothing is rounded.
  const UniqueFont font = makeTextFont(-static_cast<LONG>(units));
  if (units == 0 || !font) {
    isWhole = false;
    return metrics;
  }
  const SelectedFont selected(dc.get(), font.get());
  for (UINT character = 0; character < kGlyphs; ++character) {
    metrics.glyphs[character] =
        measureGlyph(dc.get(), character, static_cast<float>(units), isWhole);
  }
  metrics.measureLines();
  return metrics;
}

}  // namespace

UniqueFont makeTextFont(LONG height) {
  LOGFONTW wanted = {};
  wanted.lfHeight = height;
  wanted.lfWeight = FW_BOLD;
  wanted.lfCharSet = DEFAULT_CHARSET;
  wanted.lfOutPrecision = OUT_TT_PRECIS;
  wanted.lfClipPrecision = CLIP_DEFAULT_PRECIS;
  wanted.lfQuality = PROOF_QUALITY;
  wanted.lfPitchAndFamily = DEFAULT_PITCH;
  std::wcscpy(wanted.lfFaceName, L"arial");
  return UniqueFont(CreateFontIndirectW(&wanted));
}

std::shared_ptr<const FontMetrics> textFontMetrics() {
  static MadeOnce<FontMetrics> metrics;
  return metrics.get(measureTextFont);
}

}  // namespace zyn
