#include "bench/GlyphLists.h"

#include <stdexcept>

#include "objects/TextFont_win.h"

namespace zyn::bench {

GlyphLists::GlyphLists(HDC dc) {
  const UniqueFont font = makeTextFont();
  const SelectedFont selected(dc, font.get());
  outlines_ = make(dc, WGL_FONT_LINES);
  filled_ = make(dc, WGL_FONT_POLYGONS);
}

GLuint GlyphLists::make(HDC dc, int format) {
  const GLuint first = glGenLists(kGlyphs);
  if (!wglUseFontOutlinesA(dc, 0, kGlyphs, first, 0, 0, format, metrics_.data())) {
    throw std::runtime_error("no glyph lists");
  }
  return first;
}

double GlyphLists::widthOf(const std::string& text) const {
  double width = 0;
  for (const char character : text) {
    width += metrics_[static_cast<unsigned char>(character)].gmfCellIncX;
  }
  return width;
}

}  // namespace zyn::bench
