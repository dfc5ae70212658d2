#include "glcontext/StateGuards_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

struct Case {
  int mode;
  bool before;
  bool during;
};

class AutoGLDepthMaskTest : public test::GlTest, public testing::WithParamInterface<Case> {};

TEST_P(AutoGLDepthMaskTest, SetsTheMaskForItsLifetime) {
  glDepthMask(GetParam().before ? GL_TRUE : GL_FALSE);
  const GlState before = readGlState();
  GlState expected = before;
  expected["GL_DEPTH_WRITEMASK"] = {GetParam().during ? 1.0 : 0.0};
  {
    const AutoGLDepthMask guard(GetParam().mode);
    EXPECT_EQ(differences(expected, readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_P(AutoGLDepthMaskTest, GivesTheMaskBackWhateverHappenedWithin) {
  glDepthMask(GetParam().before ? GL_TRUE : GL_FALSE);
  {
    const AutoGLDepthMask guard(GetParam().mode);
    glDepthMask(GetParam().before ? GL_FALSE : GL_TRUE);
  }
  EXPECT_EQ(booleanState(GL_DEPTH_WRITEMASK), GetParam().before);
}

INSTANTIATE_TEST_SUITE_P(Modes, AutoGLDepthMaskTest,
                         testing::Values(Case{1, false, true}, Case{1, true, true},
                                         Case{-1, false, false}, Case{-1, true, false},
                                         Case{0, false, false}, Case{0, true, true},
                                         Case{2, false, false}, Case{-2, true, true}));

}  // namespace
}  // namespace zyn
