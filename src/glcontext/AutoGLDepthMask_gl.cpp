#include "glcontext/AutoGLDepthMask_gl.h"

namespace zyn {

AutoGLDepthMask::AutoGLDepthMask(int mode) : saved_(booleanState(GL_DEPTH_WRITEMASK)) {
  if (mode == 1 && !saved_) {
    glDepthMask(GL_TRUE);
  } else if (mode == -1 && saved_) {
    glDepthMask(GL_FALSE);
  }
}

AutoGLDepthMask::~AutoGLDepthMask() { glDepthMask(saved_ ? GL_TRUE : GL_FALSE); }

}  // namespace zyn
