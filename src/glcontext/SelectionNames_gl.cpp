#include "glcontext/SelectionNames_gl.h"

namespace zyn {

SelectionNames::SelectionNames(GLint typeSelection, GLint nomSelection, bool pushTypeSelection) {
  if (nomSelection < 0) {
    return;
  }
  if (pushTypeSelection) {
    glPushName(static_cast<GLuint>(typeSelection));
    ++pushed_;
  }
  glPushName(static_cast<GLuint>(nomSelection));
  ++pushed_;
}

SelectionNames::~SelectionNames() {
  for (; pushed_ > 0; --pushed_) {
    glPopName();
  }
}

}  // namespace zyn
