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

class AutoGLCapabilityTest : public test::GlTest, public testing::WithParamInterface<Case> {
 protected:
  template <class Guard>
  static void check(GLenum capability, const char* name) {
    setEnabled(capability, GetParam().before);
    const GlState before = readGlState();
    GlState expected = before;
    expected[name] = {GetParam().during ? 1.0 : 0.0};
    {
      const Guard guard(GetParam().mode);
      EXPECT_EQ(differences(expected, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
    {
      const Guard guard(GetParam().mode);
      setEnabled(capability, !GetParam().before);
    }
    EXPECT_EQ(isEnabled(capability), GetParam().before);
  }
};

TEST_P(AutoGLCapabilityTest, DepthTest) { check<AutoGLDepthTest>(GL_DEPTH_TEST, "GL_DEPTH_TEST"); }

TEST_P(AutoGLCapabilityTest, Lighting) { check<AutoGLLighting>(GL_LIGHTING, "GL_LIGHTING"); }

INSTANTIATE_TEST_SUITE_P(Modes, AutoGLCapabilityTest,
                         testing::Values(Case{1, false, true}, Case{1, true, true},
                                         Case{-1, false, false}, Case{-1, true, false},
                                         Case{0, false, false}, Case{0, true, true},
                                         Case{2, false, false}, Case{-2, true, true}));

}  // namespace
}  // namespace zyn
