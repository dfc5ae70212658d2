#include "glcontext/AutoGLLineWidth_gl.h"

#include <cmath>

namespace zyn {

AutoGLLineWidth::AutoGLLineWidth(double width)
    : saved_(floatState(GL_LINE_WIDTH)), smooth_(isEnabled(GL_LINE_SMOOTH)) {
  if (smooth_ && std::floor(width) == width) {
    glDisable(GL_LINE_SMOOTH);
  }
  if (width > 0) {  // OpenGL refuses any other
    glLineWidth(static_cast<GLfloat>(width));
  }
}

AutoGLLineWidth::~AutoGLLineWidth() {
  const bool smoothNow = isEnabled(GL_LINE_SMOOTH);
  if (smooth_ && !smoothNow) {
    glEnable(GL_LINE_SMOOTH);
    glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  } else if (!smooth_ && smoothNow) {
    glDisable(GL_LINE_SMOOTH);
  }
  glLineWidth(saved_);
}

}  // namespace zyn
