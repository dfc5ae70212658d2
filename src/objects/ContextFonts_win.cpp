#include "objects/ContextFonts_win.h"

#include <algorithm>

#include "objects/CrossedGlyphs_win.h"
#include "objects/TextFont_win.h"

namespace zyn {

namespace {

constexpr GLsizei kLists = 256;  ///< one a byte
constexpr DWORD kGlyphs = 255;   ///< the last byte has a list without a glyph
constexpr FLOAT kDeviation = 0;  ///< from the font's curves: as little as the system can do
constexpr FLOAT kExtrusion = 0;  ///< flat

GlyphMetrics metricsOf(const GLYPHMETRICSFLOAT& glyph) {
  return {glyph.gmfBlackBoxX,       glyph.gmfBlackBoxY, glyph.gmfptGlyphOrigin.x,
          glyph.gmfptGlyphOrigin.y, glyph.gmfCellIncX,  glyph.gmfCellIncY};
}

/// Lists of the glyphs of the font selected into `dc`, and their measures; 0 where the system
/// cannot make them.
GLuint makeLists(HDC dc, int format, FontMetrics& metrics) {
  const GLuint first = glGenLists(kLists);
  if (first == 0) {
    return 0;
  }
  std::array<GLYPHMETRICSFLOAT, kLists> glyphs = {};
  if (!wglUseFontOutlinesA(dc, 0, kGlyphs, first, kDeviation, kExtrusion, format, glyphs.data())) {
    glDeleteLists(first, kLists);
    return 0;
  }
  std::transform(glyphs.begin(), glyphs.end(), metrics.glyphs.begin(), metricsOf);
  metrics.measureLines();
  return first;
}

/// Compiles the filled glyphs anew that the system may have left out.
void completeGlyphs(GLuint lists, const FontMetrics& metrics) {
  for (const auto& [character, corners] : crossedGlyphs()) {
    const GlyphMetrics& glyph = metrics.glyphs.at(character);
    glNewList(lists + character, GL_COMPILE);
    glNormal3d(0, 0, 1);
    glBegin(GL_TRIANGLES);
    for (const PlanePoint& corner : corners) {
      glVertex2d(corner.x, corner.y);
    }
    glEnd();
    glTranslatef(glyph.cellIncX, glyph.cellIncY, 0);
    glEndList();
  }
}

}  // namespace

void buildOutlineFonts(CGLFontContext& fonts, HDC dc, bool outlineLines) {
  const UniqueFont font = makeTextFont();
  if (!font) {
    return;
  }
  const SelectedFont selected(dc, font.get());
  if (!selected) {
    return;
  }
  FontMetrics metrics = fonts.metrics();
  GLuint outline = outlineLines ? fonts.outlineLists() : 0;
  if (outlineLines && outline == 0) {
    outline = makeLists(dc, WGL_FONT_LINES, metrics);
  }
  GLuint filled = fonts.filledLists();
  if (filled == 0) {
    filled = makeLists(dc, WGL_FONT_POLYGONS, metrics);
    if (filled != 0) {
      completeGlyphs(filled, metrics);
    }
  }
  fonts.setGlyphs(metrics, filled, outline);
}

ContextFonts::ContextFonts(FontOwner owner, HDC dc, bool outlineLines)
    : fonts_(std::make_shared<CGLFontContext>()), context_(wglGetCurrentContext()) {
  buildOutlineFonts(*fonts_, dc, outlineLines);
  FontRegister::instance().enter(owner, context_, fonts_);
}

ContextFonts::~ContextFonts() {
  FontRegister::instance().leave(fonts_.get());
  fonts_->release();
}

}  // namespace zyn
