#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Sets the line width in pixels for a scope. Lines of a whole width are drawn without smoothing,
/// which would only blur them. Where smoothing was on, its hint is GL_DONT_CARE afterwards.
class AutoGLLineWidth : CountedGuard {
 public:
  explicit AutoGLLineWidth(double width);
  virtual ~AutoGLLineWidth();
  AutoGLLineWidth(const AutoGLLineWidth&) = delete;
  AutoGLLineWidth& operator=(const AutoGLLineWidth&) = delete;

 private:
  GLfloat saved_;
  bool smooth_;
};

}  // namespace zyn
