#include "objects/scale/ScaleTexture_gl.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

class ScaleTextureTest : public GlTest {
 protected:
  /// A rectangle over the picture, with these values at its left and at its right end.
  void draw(double left, double right) const {
    const ScaleTexels texels(scale);
    const ScaleTexture texture(texels);
    const std::int32_t row = texels.rowFor(std::max(left, right));
    glColor3d(1, 1, 1);
    glBegin(GL_QUADS);
    for (const auto& [x, y] :
         {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)}) {
      glTexCoord2fv(texels.coordinateOf(x < 0 ? left : right, row).data());
      glVertex2d(x, y);
    }
    glEnd();
  }

  void expectScale(double left, double right, int tolerance) const {
    const Image image = context.read();
    for (int x = 0; x < kSide; ++x) {
      const double place = (x + 0.5) / kSide;
      const auto expected = scale.colourOf(left + place * (right - left));
      const Rgb pixel = image.at(x, kSide / 2);
      EXPECT_NEAR(pixel.r, 255 * expected[0], tolerance) << x;
      EXPECT_NEAR(pixel.g, 255 * expected[1], tolerance) << x;
      EXPECT_NEAR(pixel.b, 255 * expected[2], tolerance) << x;
    }
  }

  ColourScale scale;
};

TEST_F(ScaleTextureTest, ShowsTheWholePaletteBetweenTwoCorners) {
  draw(0, 1);
  expectScale(0, 1, 1);
}

TEST_F(ScaleTextureTest, TheColoursAtTheEndsGoOn) {
  draw(-3, 5);
  expectScale(-3, 5, 2);
}

TEST_F(ScaleTextureTest, BandsHaveSharpEdges) {
  scale.bands = 8;
  draw(-0.5, 1.5);
  expectScale(-0.5, 1.5, 1);
  scale.bands = 5;
  draw(0, 1);
  expectScale(0, 1, 1);
}

TEST_F(ScaleTextureTest, LogarithmicScalesInterpolateTheValue) {
  scale.isLogarithmic = true;
  for (const ScaleRange range : {ScaleRange{1, 100}, ScaleRange{1e6, 1e-3}, ScaleRange{2, 3}}) {
    scale.range = range;
    for (const auto& [left, right] :
         {std::pair(1.0, 100.0), std::pair(0.01, 0.3), std::pair(5e5, 4.0), std::pair(2.0, 2.5)}) {
      draw(left, right);
      expectScale(left, right, 2);
    }
  }
}

TEST_F(ScaleTextureTest, MultipliesWhatLightingMakes) {
  scale.palette = ColourPalette({{1, 0.5, 0}, {1, 0.5, 0}});
  const ScaleTexels texels(scale);
  const ScaleTexture texture(texels);
  glColor3d(0.5, 0.5, 0.5);
  glRectd(-1, -1, 1, 1);
  EXPECT_EQ(context.read().at(5, 5), (Rgb{128, 64, 0}));
}

TEST_F(ScaleTextureTest, GivesTheStateBack) {
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glMatrixMode(GL_TEXTURE);
  glScaled(3, 3, 3);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_BLEND);
  glEnable(GL_TEXTURE_1D);
  glEnable(GL_TEXTURE_GEN_S);
  glEnable(GL_TEXTURE_GEN_T);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
  glTexCoord1f(0.25F);
  const GlState before = readGlState();
  draw(0, 1);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  EXPECT_EQ(integerState(GL_TEXTURE_BINDING_2D), static_cast<GLint>(texture));
}

TEST_F(ScaleTextureTest, HoldsInADisplayList) {
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  draw(0, 1);
  glEndList();
  glClear(GL_COLOR_BUFFER_BIT);
  for (int i = 0; i < 2; ++i) {
    glCallList(list);
    expectScale(0, 1, 1);
  }
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace zyn::test
