#pragma once

#include <gtest/gtest.h>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "support/EglContext_gl.h"
#include "support/GlState_gl.h"

namespace zyn::test {

/// A test with an OpenGL context of its own, in OpenGL's initial state. At its end no guard of the
/// state may be left, and all must have gone in the reverse order of their coming.
class GlTest : public testing::Test {
 protected:
  ~GlTest() override {
    EXPECT_TRUE(CountedGuard::account().living.empty());
    EXPECT_EQ(CountedGuard::account().disordered, 0U);
    CountedGuard::account() = {};
  }

  static constexpr int kSide = 64;  ///< of the picture, in pixels

  EglContext context{kSide, kSide};
};

}  // namespace zyn::test
