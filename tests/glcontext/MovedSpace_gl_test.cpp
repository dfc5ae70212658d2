#include "glcontext/MovedSpace_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

constexpr GLenum kRescale = 0x803A;

GlMatrix scaled(double x, double y, double z) {
  return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1};
}
GlMatrix translated(double x, double y, double z) {
  return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

class MovedSpaceTest : public test::GlTest {
 protected:
  static bool keepsNormals() { return isEnabled(GL_NORMALIZE) || isEnabled(kRescale); }
};

TEST_F(MovedSpaceTest, MovesForItsScope) {
  glTranslated(1, 2, 3);
  glMatrixMode(GL_TEXTURE);
  const GlMatrix before = matrixState(GL_MODELVIEW_MATRIX);
  {
    const MovedSpace space(scaled(2, 3, 4), false);
    EXPECT_TRUE(space.isUsable());
    EXPECT_EQ(matrixState(GL_MODELVIEW_MATRIX), product(before, scaled(2, 3, 4)));
    EXPECT_EQ(enumState(GL_MATRIX_MODE), GLenum{GL_TEXTURE});
    EXPECT_EQ(integerState(GL_MODELVIEW_STACK_DEPTH), 1);
  }
  EXPECT_EQ(matrixState(GL_MODELVIEW_MATRIX), before);
  EXPECT_EQ(enumState(GL_MATRIX_MODE), GLenum{GL_TEXTURE});
}

TEST_F(MovedSpaceTest, KeepsNormalsOneLongOnlyWhereTheyWouldChange) {
  {
    const MovedSpace space(translated(1, 2, 3), false);
    EXPECT_FALSE(keepsNormals());
  }
  {
    const MovedSpace even(scaled(2, 2, 2), false);
    EXPECT_TRUE(keepsNormals());
    const MovedSpace uneven(scaled(2, 1, 1), false);
    EXPECT_TRUE(isEnabled(GL_NORMALIZE));
  }
  EXPECT_FALSE(keepsNormals());
  glEnable(GL_NORMALIZE);
  { const MovedSpace uneven(scaled(2, 1, 1), false); }
  EXPECT_TRUE(isEnabled(GL_NORMALIZE)) << "as it was found";
}

TEST_F(MovedSpaceTest, MirrorsTurnTheWindingThatTheyFind) {
  for (const GLenum found : {GL_CCW, GL_CW}) {
    glFrontFace(found);
    {
      const MovedSpace mirror(scaled(-1, 1, 1), false);
      EXPECT_NE(enumState(GL_FRONT_FACE), found);
      const MovedSpace back(scaled(1, 1, -1), false);
      EXPECT_EQ(enumState(GL_FRONT_FACE), found);
    }
    EXPECT_EQ(enumState(GL_FRONT_FACE), found);
  }
}

TEST_F(MovedSpaceTest, WhatOpenGlCannotCalculateWithIsLeftAlone) {
  const GlMatrix before = matrixState(GL_MODELVIEW_MATRIX);
  {
    const MovedSpace space(scaled(1e30, 1, 1), false);
    EXPECT_FALSE(space.isUsable());
  }
  EXPECT_EQ(matrixState(GL_MODELVIEW_MATRIX), before);
}

TEST_F(MovedSpaceTest, InThePlaneTheProjectionHoldsWhatIsRoundedOff) {
  constexpr double kFar = 45000.123456;
  const GlMatrix before = matrixState(GL_PROJECTION_MATRIX);
  {
    const MovedSpace space(translated(-kFar, 0, 0), true);
    const double rounded = matrixState(GL_MODELVIEW_MATRIX)[12];
    EXPECT_NE(rounded, -kFar);
    const GlMatrix projection = matrixState(GL_PROJECTION_MATRIX);
    EXPECT_NEAR(projection[12] / before[0] + rounded, before[12] / before[0] - kFar, 1e-6);
  }
  EXPECT_EQ(matrixState(GL_PROJECTION_MATRIX), before);
}

TEST_F(MovedSpaceTest, IsRecordedRelativeToWhatTheListFinds) {
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  {
    const MovedSpace space(scaled(-2, 1, 1), false);
    glBegin(GL_POINTS);
    glEnd();
  }
  glEndList();
  glTranslated(5, 0, 0);
  glMatrixMode(GL_PROJECTION);
  const GlMatrix before = matrixState(GL_MODELVIEW_MATRIX);
  glCallList(list);
  EXPECT_EQ(matrixState(GL_MODELVIEW_MATRIX), before);
  EXPECT_EQ(enumState(GL_MATRIX_MODE), GLenum{GL_PROJECTION});
  EXPECT_EQ(enumState(GL_FRONT_FACE), GLenum{GL_CCW});
  EXPECT_FALSE(keepsNormals());
  glDeleteLists(list, 1);
}

}  // namespace
}  // namespace zyn
