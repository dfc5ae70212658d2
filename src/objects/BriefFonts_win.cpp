#include "objects/BriefFonts_win.h"

#include <set>

#include "objects/TextFont_win.h"
#include "objects/TextGlyphs_win.h"

namespace zyn {

namespace {

constexpr GLsizei kLists = 256;  ///< one a byte

void draw(GLenum mode, const std::vector<PlanePoint>& points) {
  glBegin(mode);
  for (const PlanePoint& point : points) {
    glVertex2d(point.x, point.y);
  }
  glEnd();
}

/// Lists that each draw a character and move on to the next.
template <class Draw>
GLuint compileLists(const std::set<unsigned char>& characters, Draw drawGlyph) {
  const GLuint first = glGenLists(kLists);
  if (first == 0) {
    return 0;
  }
  for (const unsigned char character : characters) {
    glNewList(first + character, GL_COMPILE);
    drawGlyph(textGlyphs()[character]);
    glTranslated(textFontMetrics().glyphs[character].cellIncX, 0, 0);
    glEndList();
  }
  return first;
}

}  // namespace

BriefFonts::BriefFonts(std::string_view text) {
  const std::set<unsigned char> characters(text.begin(), text.end());
  const GLuint filled = compileLists(
      characters, [](const TextGlyph& glyph) { draw(GL_TRIANGLES, glyph.filled.corners); });
  const GLuint outline = compileLists(characters, [](const TextGlyph& glyph) {
    for (const Contour& contour : glyph.contours) {
      draw(GL_LINE_LOOP, contour);
    }
  });
  fonts_.setGlyphs(textFontMetrics(), filled, outline);
}

}  // namespace zyn
