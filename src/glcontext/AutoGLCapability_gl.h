#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Switches a capability for a scope: mode 1 on, -1 off, any other leaves it.
class AutoGLCapability : CountedGuard {
 public:
  AutoGLCapability(GLenum capability, int mode);
  virtual ~AutoGLCapability();
  AutoGLCapability(const AutoGLCapability&) = delete;
  AutoGLCapability& operator=(const AutoGLCapability&) = delete;

 private:
  GLenum capability_;
  bool saved_;
};

}  // namespace zyn
