#include "glcontext/StateGuards_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

class AutoGLDepthFuncTest : public test::GlTest {};

TEST_F(AutoGLDepthFuncTest, SetsTheFunctionForItsLifetime) {
  for (const GLenum saved : {GL_LESS, GL_NEVER, GL_ALWAYS}) {
    for (const GLenum wanted : {GL_LEQUAL, GL_ALWAYS, GL_LESS}) {
      glDepthFunc(saved);
      const GlState before = readGlState();
      GlState expected = before;
      expected["GL_DEPTH_FUNC"] = {static_cast<double>(wanted)};
      {
        const AutoGLDepthFunc guard(wanted);
        EXPECT_EQ(differences(expected, readGlState()), kNone);
      }
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
  }
}

}  // namespace
}  // namespace zyn
