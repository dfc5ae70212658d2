#include "glcontext/ModelView_gl.h"

#include <array>
#include <limits>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using Matrix = std::array<GLdouble, 16>;

class ModelViewTest : public test::GlTest {
 protected:
  static Matrix current() {
    Matrix matrix{};
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
    return matrix;
  }

  static void expectCurrent(const Matrix& expected) {
    const Matrix matrix = current();
    for (std::size_t i = 0; i < matrix.size(); ++i) {
      EXPECT_NEAR(matrix[i], expected[i], 1e-5) << i;
    }
  }
};

TEST_F(ModelViewTest, IsTheCurrentOne) {
  glRotated(30, 1, 2, 3);
  glTranslated(4, 5, 6);
  const Matrix before = current();
  const ModelView matrix;
  glLoadIdentity();
  matrix.load();
  expectCurrent(before);
}

TEST_F(ModelViewTest, MovesAsTranslationDoes) {
  glRotated(30, 1, 2, 3);
  glScaled(2, 3, 4);
  ModelView matrix;
  matrix.moveTo({4, -5, 6});
  glTranslated(4, -5, 6);
  const Matrix expected = current();
  matrix.load();
  expectCurrent(expected);
}

TEST_F(ModelViewTest, MovesExactlyFarFromTheOrigin) {
  glTranslated(-1e9, 0, 0);
  ModelView matrix;
  matrix.moveTo({1e9 + 0.25, 0, 0});
  matrix.load();
  EXPECT_EQ(current()[12], 0.25);
}

TEST_F(ModelViewTest, FacesTheViewer) {
  glTranslated(1, 2, 3);
  glRotated(70, 1, 2, 3);
  ModelView matrix;
  matrix.faceViewer();
  matrix.scale(2);
  matrix.load();
  expectCurrent({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1});
}

TEST_F(ModelViewTest, TakesTheLengthOfAnAxisOut) {
  glRotated(90, 0, 0, 1);
  glScaled(4, 0.5, 1);
  ModelView matrix;
  EXPECT_NEAR(matrix.normalize(0), 4, 1e-6);
  EXPECT_NEAR(matrix.normalize(1), 0.5, 1e-6);
  matrix.load();
  expectCurrent({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
  glScaled(0, 1, 1);
  ModelView flat;
  EXPECT_EQ(flat.normalize(0), 1);
}

TEST_F(ModelViewTest, TellsWhatOpenGlCannotCalculateWith) {
  EXPECT_TRUE(ModelView().isUsable());
  for (const double odd : {std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::infinity(), 1e30, -1e300}) {
    ModelView matrix;
    matrix.moveTo({odd, 0, 0});
    EXPECT_FALSE(matrix.isUsable()) << odd;
  }
  ModelView far;
  far.moveTo({1e30, 0, 0});
  far.moveTo({-1e30, 0, 0});
  EXPECT_TRUE(far.isUsable());
}

TEST_F(ModelViewTest, InADisplayListItIsRelativeToTheMatrixOfTheCall) {
  glTranslated(1, 2, 3);
  glRotated(30, 1, 2, 3);
  glScaled(2, 3, 4);
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  ModelView matrix;
  matrix.moveTo({4, -5, 6});
  matrix.scale(2);
  EXPECT_TRUE(matrix.isUsable());
  matrix.load();
  glEndList();
  glLoadIdentity();
  glRotated(70, 3, 2, 1);
  glPushMatrix();
  glTranslated(4, -5, 6);
  glScaled(2, 2, 2);
  const Matrix expected = current();
  glPopMatrix();
  glCallList(list);
  expectCurrent(expected);
  glDeleteLists(list, 1);
}

TEST_F(ModelViewTest, InADisplayListAMatrixWithoutInverseIsNoUse) {
  glScaled(1, 0, 1);
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  EXPECT_FALSE(ModelView().isUsable());
  glEndList();
  EXPECT_TRUE(ModelView().isUsable());
  glDeleteLists(list, 1);
}

}  // namespace
}  // namespace zyn
