#include "glcontext/BorrowedState_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

GlMatrix numbered(double first) {
  GlMatrix matrix{};
  for (double& value : matrix) {
    value = first++;
  }
  return matrix;
}

/// Everything a painter may touch.
void upsetState() {
  glMatrixMode(GL_TEXTURE);
  glColor4f(0.1F, 0.2F, 0.3F, 0.4F);
  glNormal3f(0, 1, 0);
  glRasterPos2f(0.5F, 0.5F);
  glListBase(77);
  glLineWidth(5);
  glDisable(GL_DITHER);
  glEnable(GL_BLEND);
  glBlendFunc(GL_DST_COLOR, GL_ZERO);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glPixelZoom(3, 3);
  glDepthFunc(GL_GREATER);
}

/// What painters do to the stacks within.
void pushTwice() {
  glPushAttrib(GL_CURRENT_BIT);
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glPushMatrix();
  glScalef(2, 3, 4);
  glPopMatrix();
  glPopMatrix();
  glPopClientAttrib();
  glPopAttrib();
}

class BorrowedStateTest : public test::GlTest {
 protected:
  BorrowedStateTest() {
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(numbered(1).data());
    glMatrixMode(GL_PROJECTION);
    glListBase(12);
    glRasterPos2f(0.25F, -0.25F);
    glColor4f(0.75F, 0.5F, 0.25F, 1);
    glLineWidth(3);
  }
};

TEST_F(BorrowedStateTest, EverythingIsGivenBack) {
  const GlState before = readGlState();
  ASSERT_TRUE(BorrowedState::isAvailable());
  {
    const BorrowedState borrowed;
    upsetState();
    pushTwice();
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(BorrowedStateTest, TheModelViewMatrixIsCurrentWithin) {
  const BorrowedState borrowed;
  EXPECT_EQ(enumState(GL_MATRIX_MODE), static_cast<GLenum>(GL_MODELVIEW));
  EXPECT_EQ(currentModelView(), numbered(1));
}

TEST_F(BorrowedStateTest, FullStacksOfMatricesAreGivenBackWhole) {
  glMatrixMode(GL_MODELVIEW);
  const GLint most = integerState(GL_MAX_MODELVIEW_STACK_DEPTH);
  for (GLint depth = 2; depth <= most; ++depth) {
    glPushMatrix();
    glLoadMatrixd(numbered(depth).data());
    const GlState before = readGlState();
    ASSERT_TRUE(BorrowedState::isAvailable());
    {
      const BorrowedState borrowed;
      EXPECT_EQ(currentModelView(), numbered(depth));
      glLoadIdentity();
      pushTwice();
    }
    EXPECT_EQ(differences(before, readGlState()), kNone) << depth;
  }
  for (GLint depth = most; depth >= 1; --depth) {
    EXPECT_EQ(currentModelView(), numbered(depth)) << depth;
    glPopMatrix();
  }
}

TEST_F(BorrowedStateTest, IsNotAvailableOnAFullStackOfAttributes) {
  const GLint most = integerState(GL_MAX_ATTRIB_STACK_DEPTH);
  for (GLint depth = 0; depth < most; ++depth) {
    EXPECT_EQ(BorrowedState::isAvailable(), depth + 2 <= most) << depth;
    glPushAttrib(GL_CURRENT_BIT);
  }
  EXPECT_FALSE(BorrowedState::isAvailable());
  EXPECT_EQ(readGlState()["error"], std::vector<double>());
}

TEST_F(BorrowedStateTest, IsNotAvailableOnAFullStackOfClientAttributes) {
  const GLint most = integerState(GL_MAX_CLIENT_ATTRIB_STACK_DEPTH);
  for (GLint depth = 0; depth < most; ++depth) {
    EXPECT_TRUE(BorrowedState::isAvailable()) << depth;
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  }
  EXPECT_FALSE(BorrowedState::isAvailable());
}

TEST_F(BorrowedStateTest, IsNotAvailableOnAFullStackOfNames) {
  GLuint buffer[16] = {};
  glSelectBuffer(16, buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  const GLint most = integerState(GL_MAX_NAME_STACK_DEPTH);
  for (GLint depth = 0; depth < most; ++depth) {
    EXPECT_EQ(BorrowedState::isAvailable(), depth + 2 <= most) << depth;
    glPushName(1);
  }
  glRenderMode(GL_RENDER);
  EXPECT_TRUE(BorrowedState::isAvailable());
}

TEST_F(BorrowedStateTest, AListGivesBackWhatItFindsWhenItIsCalled) {
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  EXPECT_TRUE(BorrowedState::isAvailable());
  {
    const BorrowedState borrowed;
    glTranslated(1, 2, 3);
    glEnable(GL_FOG);
    glLineWidth(5);
  }
  glEndList();
  glLineWidth(3);
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(numbered(7).data());
  glMatrixMode(GL_PROJECTION);
  const GlState before = readGlState();
  glCallList(list);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  glDeleteLists(list, 1);
}

TEST_F(BorrowedStateTest, TellsHowTheOwnerLooksAtTheModel) {
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(numbered(40).data());
  glViewport(1, 2, 30, 20);
  const Lens lens = currentLens();
  EXPECT_EQ(lens.projection, numbered(40));
  EXPECT_EQ(lens.viewport, (std::array<double, 4>{1, 2, 30, 20}));
}

}  // namespace
}  // namespace zyn
