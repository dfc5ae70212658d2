#include "glcontext/AutoGLDepthFunc_gl.h"

namespace zyn {

AutoGLDepthFunc::AutoGLDepthFunc(GLenum function) : saved_(enumState(GL_DEPTH_FUNC)) {
  glDepthFunc(function);
}

AutoGLDepthFunc::~AutoGLDepthFunc() {
  if (saved_ != 0) {
    glDepthFunc(saved_);
  }
}

}  // namespace zyn
