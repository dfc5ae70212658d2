#include "vector/SimpleText.h"

#include <cstddef>

#include "core/Utf8.h"

namespace zyn {

std::optional<std::vector<SimplePart>> simpleParts(const DrawnText& text) {
  if (!text.shaped) {
    return std::nullopt;
  }
  const std::vector<FontGlyph>& glyphs = text.shaped->fontGlyphs;
  std::wstring all;
  std::vector<SimplePart> parts;
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    const FontGlyph& glyph = glyphs[i];
    if (glyph.text.size() != 1 || glyph.at.y != 0) {
      return std::nullopt;
    }
    if (i == 0 || glyphs[i - 1].font != glyph.font) {
      parts.push_back({text.shaped->fonts[glyph.font], {}, {}, glyph.at.x});
    }
    const double end = i + 1 < glyphs.size() ? glyphs[i + 1].at.x : text.shaped->width;
    parts.back().text += glyph.text;
    parts.back().ends.push_back(end - parts.back().start);
    all += glyph.text;
  }
  return all == wideOf(text.text) ? std::optional(std::move(parts)) : std::nullopt;
}

}  // namespace zyn
