#include "glcontext/StateGuards_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::kNone;
using test::readGlState;

class BalancedStacksTest : public test::GlTest {};

void pushMatrix(GLenum mode) {
  glMatrixMode(mode);
  glPushMatrix();
  glScalef(2, 2, 2);
}

TEST_F(BalancedStacksTest, TakesOffWhatWasLeftOnEveryStack) {
  glMatrixMode(GL_PROJECTION);
  const auto before = readGlState();
  {
    const BalancedStacks stacks;
    pushMatrix(GL_PROJECTION);
    pushMatrix(GL_MODELVIEW);
    pushMatrix(GL_MODELVIEW);
    pushMatrix(GL_TEXTURE);
    glPushAttrib(GL_ENABLE_BIT);
    glEnable(GL_BLEND);
    glPushAttrib(GL_LINE_BIT);
    glLineWidth(5);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(BalancedStacksTest, LeavesAloneWhatWasThereBefore) {
  pushMatrix(GL_MODELVIEW);
  glPushAttrib(GL_ENABLE_BIT);
  const auto before = readGlState();
  { const BalancedStacks stacks; }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(BalancedStacksTest, TakesNamesOffInASelectionPass) {
  GLuint buffer[16];
  glSelectBuffer(16, buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(1);
  {
    const BalancedStacks stacks;
    glPushName(2);
    glPushName(3);
  }
  EXPECT_EQ(integerState(GL_NAME_STACK_DEPTH), 1);
  glRenderMode(GL_RENDER);
}

}  // namespace
}  // namespace zyn
