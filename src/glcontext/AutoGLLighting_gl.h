#pragma once

#include "glcontext/AutoGLCapability_gl.h"

namespace zyn {

/// Switches lighting for a scope: mode 1 on, -1 off, any other leaves it.
class AutoGLLighting : public AutoGLCapability {
 public:
  explicit AutoGLLighting(int mode) : AutoGLCapability(GL_LIGHTING, mode) {}
};

}  // namespace zyn
