#include "glcontext/AutoGLPointSize_gl.h"

namespace zyn {

AutoGLPointSize::AutoGLPointSize(double size) : saved_(floatState(GL_POINT_SIZE)) {
  if (size > 0) {  // OpenGL refuses any other
    glPointSize(static_cast<GLfloat>(size));
  }
}

AutoGLPointSize::~AutoGLPointSize() { glPointSize(saved_); }

}  // namespace zyn
