#include "objects/text/TextFont_win.h"

#include <windows.h>

#include <cstddef>

#include "objects/text/GdiFont_win.h"
#include "platform/MadeOnce_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

namespace {

constexpr UINT kCharacters = 255;  ///< the last byte is never drawn
constexpr LONG kEm = 1024;         ///< in which outlines are exact enough

/// Of the font that all text is drawn with; 0 where the system has none with outlines.
UINT textFontUnits(HDC dc) {
  const UniqueFont font = makeFont(FontFace{});
  if (!font) {
    return 0;
  }
  const SelectedFont selected(dc, font.get());
  return designUnits(dc);
}

FontMetrics measureTextFont(bool& isWhole) {
  FontMetrics metrics;
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UINT units = dc ? textFontUnits(dc.get()) : 0;
  // As large as it was designed, nothing is rounded.
  const UniqueFont font = makeFont(FontFace{}, -static_cast<LONG>(units));
  if (units == 0 || !font) {
    isWhole = false;
    return metrics;
  }
  const SelectedFont selected(dc.get(), font.get());
  for (UINT character = 0; character < kCharacters; ++character) {
    const auto glyph = glyphMetrics(dc.get(), {GetGlyphOutlineA, character}, units);
    metrics.glyphs[character] = glyph.value_or(GlyphMetrics{});
    isWhole = isWhole && glyph;
  }
  metrics.measureLines();
  return metrics;
}

GlyphShape makeGlyph(HDC dc, unsigned char character, bool& isWhole) {
  const auto contours = glyphContours(dc, {GetGlyphOutlineA, character}, kEm);
  if (!contours) {
    isWhole = false;
    return {};
  }
  return {*contours, tessellate(*contours)};
}

GlyphShapes makeGlyphs(bool& isWhole) {
  GlyphShapes glyphs;
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UniqueFont font = makeFont(FontFace{}, -kEm);
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

std::string narrowText(std::wstring_view text) {
  const std::wstring_view shown = text.substr(0, text.find(L'\0'));
  if (shown.empty()) {
    return {};
  }
  const auto convert = [&](char* place, int size) {
    return WideCharToMultiByte(CP_ACP, 0, shown.data(), static_cast<int>(shown.size()), place, size,
                               nullptr, nullptr);
  };
  std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(narrow.data(), static_cast<int>(narrow.size()));
  return narrow;
}

std::wstring wideText(std::string_view text) {
  if (text.empty()) {
    return {};
  }
  const auto convert = [&](wchar_t* place, int size) {
    return MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), place, size);
  };
  std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
  convert(wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::shared_ptr<const FontMetrics> textFontMetrics() {
  static MadeOnce<FontMetrics> metrics;
  return metrics.get(measureTextFont);
}

std::shared_ptr<const GlyphShapes> textGlyphs() {
  static MadeOnce<GlyphShapes> glyphs;
  return glyphs.get(makeGlyphs);
}

}  // namespace zyn
