#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Switches depth writes for a scope: mode 1 on, -1 off, any other leaves them.
class AutoGLDepthMask : CountedGuard {
 public:
  explicit AutoGLDepthMask(int mode);
  virtual ~AutoGLDepthMask();
  AutoGLDepthMask(const AutoGLDepthMask&) = delete;
  AutoGLDepthMask& operator=(const AutoGLDepthMask&) = delete;

 private:
  bool saved_;
};

}  // namespace zyn
