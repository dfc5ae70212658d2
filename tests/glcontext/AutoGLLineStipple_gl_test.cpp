#include "glcontext/StateGuards_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

class AutoGLLineStippleTest : public test::GlTest {
 protected:
  static GlState stippled(GlState state) {
    state["GL_LINE_STIPPLE"] = {1};
    state["GL_LINE_STIPPLE_REPEAT"] = {3};
    state["GL_LINE_STIPPLE_PATTERN"] = {0xF0F1};
    return state;
  }
};

TEST_F(AutoGLLineStippleTest, GivesAnEarlierStippleBack) {
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(7, 0x8421);
  const GlState before = readGlState();
  {
    const AutoGLLineStipple guard(3, 0xF0F1);
    EXPECT_EQ(differences(stippled(before), readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(AutoGLLineStippleTest, OnlySwitchesOffAgainWhereNothingWasStippled) {
  glLineStipple(7, 0x8421);
  const GlState before = readGlState();
  GlState after = stippled(before);
  after["GL_LINE_STIPPLE"] = {0};
  {
    const AutoGLLineStipple guard(3, 0xF0F1);
    EXPECT_EQ(differences(stippled(before), readGlState()), kNone);
  }
  EXPECT_EQ(differences(after, readGlState()), kNone);
}

TEST_F(AutoGLLineStippleTest, NestedGuardsEndInReverseOrder) {
  const AutoGLLineStipple outer(2, 0x00FF);
  const GlState before = readGlState();
  { const AutoGLLineStipple inner(3, 0xF0F1); }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

}  // namespace
}  // namespace zyn
