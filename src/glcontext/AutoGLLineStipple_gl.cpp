#include "glcontext/AutoGLLineStipple_gl.h"

namespace zyn {

AutoGLLineStipple::AutoGLLineStipple(GLint factor, GLushort pattern)
    : enabled_(isEnabled(GL_LINE_STIPPLE)) {
  if (enabled_) {
    factor_ = integerState(GL_LINE_STIPPLE_REPEAT);
    pattern_ = static_cast<GLushort>(integerState(GL_LINE_STIPPLE_PATTERN));
  } else {
    glEnable(GL_LINE_STIPPLE);
  }
  glLineStipple(factor, pattern);
}

AutoGLLineStipple::~AutoGLLineStipple() {
  if (enabled_) {
    glLineStipple(factor_, pattern_);
  } else {
    glDisable(GL_LINE_STIPPLE);
  }
}

}  // namespace zyn
