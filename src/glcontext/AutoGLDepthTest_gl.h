#pragma once

#include "glcontext/AutoGLCapability_gl.h"

namespace zyn {

/// Switches the depth test for a scope: mode 1 on, -1 off, any other leaves it.
class AutoGLDepthTest : public AutoGLCapability {
 public:
  explicit AutoGLDepthTest(int mode) : AutoGLCapability(GL_DEPTH_TEST, mode) {}
};

}  // namespace zyn
