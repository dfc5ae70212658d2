#include "vector/SimpleText.h"

#include <cstddef>

#include "vector/Utf8.h"

namespace zyn {

std::wstring utf16Of(std::string_view utf8) {
  std::wstring text;
  for (const char32_t character : charactersOf(utf8)) {
    if (character < 0x10000) {
      text += static_cast<wchar_t>(character);
    } else {
      text += static_cast<wchar_t>(0xD7C0 + (character >> 10));
      text += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
    }
  }
  return text;
}

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
  return all == utf16Of(text.text) ? std::optional(std::move(parts)) : std::nullopt;
}

}  // namespace zyn
