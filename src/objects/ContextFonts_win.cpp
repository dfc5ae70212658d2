#include "objects/ContextFonts_win.h"

#include <algorithm>

#include "objects/TextFont_win.h"
#include "objects/TextGlyphs_win.h"

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

/// Compiles a glyph anew from its triangles.
void completeGlyph(GLuint list, const GlyphShape& shape, const GlyphMetrics& metrics) {
  glNewList(list, GL_COMPILE);
  glNormal3d(0, 0, 1);
  glBegin(GL_TRIANGLES);
  for (const PlanePoint& corner : shape.filled.corners) {
    glVertex2d(corner.x, corner.y);
  }
  glEnd();
  glTranslatef(metrics.cellIncX, metrics.cellIncY, 0);
  glEndList();
}

/// wglUseFontOutlines of some systems (Wine) leaves glyphs out whose contours cross: letters with a
/// cedilla or a ring, mostly.
void completeGlyphs(GLuint lists, const FontMetrics& metrics) {
  for (GLuint character = 0; character < kGlyphs; ++character) {
    if (textGlyphs()[character].filled.hasCrossings) {
      completeGlyph(lists + character, textGlyphs()[character], metrics.glyphs[character]);
    }
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
