#include "objects/text/DigitText_gl.h"

#include "glcontext/StateGuards_gl.h"

namespace zyn {

void drawDigitText(const CGLFontContext& fonts, int size, std::string_view text) {
  const GLuint lists = fonts.digitLists(size);
  if (lists == 0) {
    return;
  }
  const PushedAttributes listBase(GL_LIST_BIT);
  glListBase(lists - '0');
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

}  // namespace zyn
