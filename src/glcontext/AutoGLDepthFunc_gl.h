#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Sets the depth comparison for a scope.
class AutoGLDepthFunc : CountedGuard {
 public:
  explicit AutoGLDepthFunc(GLenum function);
  virtual ~AutoGLDepthFunc();
  AutoGLDepthFunc(const AutoGLDepthFunc&) = delete;
  AutoGLDepthFunc& operator=(const AutoGLDepthFunc&) = delete;

 private:
  GLenum saved_;
};

}  // namespace zyn
