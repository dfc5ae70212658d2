#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Sets the point size in pixels for a scope.
class AutoGLPointSize : CountedGuard {
 public:
  explicit AutoGLPointSize(double size);
  virtual ~AutoGLPointSize();
  AutoGLPointSize(const AutoGLPointSize&) = delete;
  AutoGLPointSize& operator=(const AutoGLPointSize&) = delete;

 private:
  GLfloat saved_;
};

}  // namespace zyn
