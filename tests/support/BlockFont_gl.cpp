#include "support/BlockFont_gl.h"

namespace zyn::test {

namespace {

constexpr GLuint kGlyphs = 256;

GLuint makeBlocks(GLenum kind) {
  const GLuint lists = glGenLists(kGlyphs);
  for (GLuint glyph = 0; glyph < kGlyphs; ++glyph) {
    glNewList(lists + glyph, GL_COMPILE);
    glFrontFace(GL_CCW);
    glNormal3f(0, 0, 1);
    glBegin(kind);
    glVertex2f(kBlockLeft, kBlockBottom);
    glVertex2f(kBlockRight, kBlockBottom);
    glVertex2f(kBlockRight, kBlockTop);
    glVertex2f(kBlockLeft, kBlockTop);
    glEnd();
    glTranslatef(kBlockAdvance, 0, 0);
    glEndList();
  }
  return lists;
}

}  // namespace

void giveBlocks(CGLFontContext& fonts, bool outlines) {
  FontMetrics metrics;
  metrics.glyphs.fill({.blackBoxX = kBlockRight - kBlockLeft,
                       .blackBoxY = kBlockTop - kBlockBottom,
                       .originX = kBlockLeft,
                       .originY = kBlockTop,
                       .cellIncX = kBlockAdvance});
  metrics.measureLines();
  fonts.setGlyphs(metrics, makeBlocks(GL_QUADS), outlines ? makeBlocks(GL_LINE_LOOP) : 0);
}

}  // namespace zyn::test
