#pragma once

#include <array>

#include "core/GlMatrix.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// Reads of the current context's state. Without a current context they give zeros.
using Float4 = std::array<GLfloat, 4>;

inline bool isEnabled(GLenum capability) { return glIsEnabled(capability) == GL_TRUE; }

inline void setEnabled(GLenum capability, bool on) {
  if (on) {
    glEnable(capability);
  } else {
    glDisable(capability);
  }
}

inline bool booleanState(GLenum name) {
  GLboolean value = GL_FALSE;
  glGetBooleanv(name, &value);
  return value == GL_TRUE;
}

inline GLint integerState(GLenum name) {
  GLint value = 0;
  glGetIntegerv(name, &value);
  return value;
}

inline GLenum enumState(GLenum name) { return static_cast<GLenum>(integerState(name)); }

/// Whether what is drawn goes into a display list: state that is read now is not what the list will
/// find when it is called.
inline bool isRecording() { return integerState(GL_LIST_INDEX) != 0; }

/// Not so in selection and feedback, where some platforms lock up in display lists.
inline bool isRendering() { return enumState(GL_RENDER_MODE) == GL_RENDER; }

inline GLfloat floatState(GLenum name) {
  GLfloat value = 0;
  glGetFloatv(name, &value);
  return value;
}

inline GlMatrix matrixState(GLenum name) {
  GlMatrix matrix{};
  glGetDoublev(name, matrix.data());
  return matrix;
}

}  // namespace zyn
