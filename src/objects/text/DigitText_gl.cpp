#include "objects/text/DigitText_gl.h"

#include "glcontext/StateGuards_gl.h"

namespace zyn {

namespace {

void drawBitmaps(int size, std::string_view text) {
  const PlainPixelStore byteRows(1);
  for (const char character : text) {
    drawDigit(digitGlyph(character, size), size);
  }
}

}  // namespace

void drawDigitText(const CGLFontContext& fonts, int size, std::string_view text) {
  const GLuint lists = isRendering() ? fonts.digitLists(size) : 0;
  if (lists == 0) {
    drawBitmaps(size, text);
    return;
  }
  const PushedAttributes listBase(GL_LIST_BIT);
  glListBase(lists - '0');
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

}  // namespace zyn
