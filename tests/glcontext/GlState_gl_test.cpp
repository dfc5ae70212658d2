#include "support/GlState_gl.h"

#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

class GlStateTest : public GlTest {};

TEST_F(GlStateTest, ReadingDisturbsNothingAndMeetsNoError) {
  const GlState first = readGlState();
  EXPECT_EQ(differences(first, readGlState()), kNone);
  EXPECT_TRUE(first.at("error").empty());
}

TEST_F(GlStateTest, NamesWhatDiffers) {
  const GlState before = readGlState();
  glEnable(GL_LIGHT3);
  glLineWidth(2);
  glPushMatrix();
  EXPECT_EQ(differences(before, readGlState()),
            (std::vector<std::string>{"GL_LIGHT3: 0 -> 1", "GL_LINE_WIDTH: 1 -> 2",
                                      "GL_MODELVIEW_STACK_DEPTH: 1 -> 2"}));
}

TEST_F(GlStateTest, PendingErrorsCount) {
  glEnable(GL_LINES);
  EXPECT_EQ(readGlState().at("error"), std::vector<double>{GL_INVALID_ENUM});
  EXPECT_TRUE(readGlState().at("error").empty());
}

}  // namespace
}  // namespace zyn::test
