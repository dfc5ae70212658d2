#pragma once

#include <gtest/gtest.h>

#include "glcontext/StateQuery_gl.h"
#include "support/EglContext_gl.h"
#include "support/GlState_gl.h"

namespace zyn::test {

/// A test with an OpenGL context of its own, in OpenGL's initial state.
class GlTest : public testing::Test {
 protected:
  static constexpr int kSide = 64;  ///< of the picture, in pixels

  EglContext context{kSide, kSide};
};

}  // namespace zyn::test
