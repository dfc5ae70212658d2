#include "glcontext/StateGuards_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

class PushedAttributesTest : public test::GlTest {};

TEST_F(PushedAttributesTest, GivesBackItsGroups) {
  const GlState before = readGlState();
  {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    glColor4f(0, 1, 0, 0.5F);
    glLineWidth(3);
    EXPECT_NE(differences(before, readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(PushedAttributesTest, GivesBackAColourThatNothingWasDrawnWithBeforeOthersWerePushed) {
  const GlState before = readGlState();
  {
    const PushedAttributes attributes(GL_CURRENT_BIT);
    glColor4f(0, 1, 0, 0.5F);
    const PushedAttributes others(GL_CURRENT_BIT);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

}  // namespace
}  // namespace zyn
