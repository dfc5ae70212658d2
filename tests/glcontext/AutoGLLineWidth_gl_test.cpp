#include "glcontext/StateGuards_gl.h"

#include <cmath>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

class AutoGLLineWidthTest : public test::GlTest {
 protected:
  static GlState with(GlState state, double width, bool smooth) {
    state["GL_LINE_WIDTH"] = {width};
    state["GL_LINE_SMOOTH"] = {smooth ? 1.0 : 0.0};
    return state;
  }
};

TEST_F(AutoGLLineWidthTest, AWholeWidthIsDrawnWithoutSmoothing) {
  glEnable(GL_LINE_SMOOTH);
  glLineWidth(1.25F);
  const GlState before = readGlState();
  for (const double width : {1.0, 2.0, 5.0}) {
    {
      const AutoGLLineWidth guard(width);
      EXPECT_EQ(differences(with(before, width, false), readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(AutoGLLineWidthTest, AFractionalWidthKeepsSmoothing) {
  glEnable(GL_LINE_SMOOTH);
  const GlState before = readGlState();
  {
    const AutoGLLineWidth guard(1.5);
    EXPECT_EQ(differences(with(before, 1.5, true), readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(AutoGLLineWidthTest, UnsmoothedLinesStayUnsmoothed) {
  glLineWidth(3);
  const GlState before = readGlState();
  for (const double width : {1.5, 2.0}) {
    {
      const AutoGLLineWidth guard(width);
      EXPECT_EQ(differences(with(before, width, false), readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(AutoGLLineWidthTest, SmoothingSwitchedWithinIsGivenBack) {
  {
    const AutoGLLineWidth guard(1.5);
    glEnable(GL_LINE_SMOOTH);
  }
  EXPECT_FALSE(isEnabled(GL_LINE_SMOOTH));
  glEnable(GL_LINE_SMOOTH);
  {
    const AutoGLLineWidth guard(1.5);
    glDisable(GL_LINE_SMOOTH);
  }
  EXPECT_TRUE(isEnabled(GL_LINE_SMOOTH));
}

TEST_F(AutoGLLineWidthTest, SmoothingSwitchedOnAgainHasNoPreferredQuality) {
  glEnable(GL_LINE_SMOOTH);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  { const AutoGLLineWidth guard(1.5); }
  EXPECT_EQ(enumState(GL_LINE_SMOOTH_HINT), static_cast<GLenum>(GL_NICEST));
  { const AutoGLLineWidth guard(2.0); }
  EXPECT_EQ(enumState(GL_LINE_SMOOTH_HINT), static_cast<GLenum>(GL_DONT_CARE));
}

TEST_F(AutoGLLineWidthTest, WidthsThatOpenGLRefusesLeaveNoError) {
  glLineWidth(3);
  const GlState before = readGlState();
  for (const double width : {0.0, -1.0, std::nan("")}) {
    {
      const AutoGLLineWidth guard(width);
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

}  // namespace
}  // namespace zyn
