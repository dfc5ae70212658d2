#include "objects/picture/SpritePainter_gl.h"

#include <array>
#include <tuple>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::boxOf;
using test::differences;
using test::GlState;
using test::kNone;
using test::PixelBox;
using test::readGlState;
using test::Rgb;

constexpr Rgb kBlue{0, 0, 255};

std::shared_ptr<const PixelImage> blueImage(int width, int height) {
  auto image = std::make_shared<PixelImage>(PixelImage{width, height, {}});
  for (int i = 0; i < width * height; ++i) {
    image->pixels.insert(image->pixels.end(), {0, 0, 255, 255});
  }
  return image;
}

class SpritePainterTest : public test::GlTest {
 protected:
  void SetUp() override {
    lookAt(kSide);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    shape_.position = {20, 30, 0};
    shape_.image = blueImage(10, 6);
  }

  /// The viewport shows this height from the origin on.
  static void lookAt(double height) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, height, 0, height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
  }

  void expectBlue(int left, int bottom, int width, int height) const {
    const PixelBox box = boxOf(context.read(), kBlue);
    EXPECT_EQ(box.left, left);
    EXPECT_EQ(kSide - 1 - box.bottom, bottom);
    EXPECT_EQ(box.right - box.left + 1, width);
    EXPECT_EQ(box.bottom - box.top + 1, height);
  }

  SpriteShape shape_;
};

TEST_F(SpritePainterTest, ItsLowerLeftCornerIsAtThePosition) {
  drawSprite3D(shape_, 1);
  expectBlue(20, 30, 10, 6);
}

TEST_F(SpritePainterTest, ItsOriginIsAtThePosition) {
  shape_.originX = 10;
  shape_.originY = 3;
  drawSprite2D(shape_, 1);
  expectBlue(10, 27, 10, 6);
}

TEST_F(SpritePainterTest, InFinePicturesItGrowsAboutItsOrigin) {
  shape_.originX = 5;
  shape_.originY = 3;
  drawSprite3D(shape_, 3);
  expectBlue(5, 21, 30, 18);
}

TEST_F(SpritePainterTest, ItsSizeIsInPixelsWhateverTheZoom) {
  for (const double height : {0.64, 6.4, 640.0}) {
    lookAt(height);
    glClear(GL_COLOR_BUFFER_BIT);
    shape_.position = {height / 2, height / 4, 0};
    drawSprite3D(shape_, 1);
    expectBlue(32, 16, 10, 6);
    glClear(GL_COLOR_BUFFER_BIT);
    drawSprite2D(shape_, 1);
    expectBlue(32, 16, 10, 6);
  }
}

TEST_F(SpritePainterTest, In3DItCoversWhatIsInFrontOfIt) {
  glEnable(GL_DEPTH_TEST);
  shape_.position.z = -0.9;
  glColor3f(1, 0, 0);
  glRectf(0, 0, kSide, kSide);
  drawSprite3D(shape_, 1);
  expectBlue(20, 30, 10, 6);
}

TEST_F(SpritePainterTest, In2DTheDepthTestOfTheContextHolds) {
  glEnable(GL_DEPTH_TEST);
  glBegin(GL_QUADS);
  for (const auto& [x, y] : {std::array{0, 0}, {kSide, 0}, {kSide, kSide}, {0, kSide}}) {
    glVertex3d(x, y, 0.5);
  }
  glEnd();
  drawSprite2D(shape_, 1);
  EXPECT_TRUE(boxOf(context.read(), kBlue).empty());
}

TEST_F(SpritePainterTest, In2DItLiesInThePlane) {
  shape_.position.z = 5;
  drawSprite2D(shape_, 1);
  expectBlue(20, 30, 10, 6);
}

/// lighting, colour material, other state
using Surroundings = std::tuple<bool, bool, bool>;

class SpriteStateTest : public SpritePainterTest,
                        public testing::WithParamInterface<Surroundings> {};

TEST_P(SpriteStateTest, DrawingLeavesTheStateAsItWas) {
  const auto [lighting, colourMaterial, other] = GetParam();
  setEnabled(GL_LIGHTING, lighting);
  setEnabled(GL_COLOR_MATERIAL, colourMaterial);
  setEnabled(GL_DEPTH_TEST, other);
  setEnabled(GL_BLEND, other);
  glMatrixMode(other ? GL_TEXTURE : GL_MODELVIEW);
  glPixelStorei(GL_UNPACK_ALIGNMENT, other ? 8 : 2);
  glRasterPos2d(7, 8);
  readGlState();  // Mesa applies materials set so far only now, over those from the colour
  glColor4f(0.125F, 0.25F, 0.375F, 0.5F);
  glNormal3f(0.25F, 0.5F, 0.75F);
  const GlState before = readGlState();
  for (const Point& position : {Point(20, 30, 0), Point(-2, 30, 0), Point(20, 30, 7)}) {
    shape_.position = position;
    drawSprite3D(shape_, 2);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "3D";
    drawSprite2D(shape_, 2);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "2D";
    drawSpriteRectangle2D(shape_, 2, 5);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "rectangle";
  }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, SpriteStateTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool()));

/// Scales of the model along x and y, and the height that the view shows.
using Scales = std::tuple<double, double, double>;

class SpriteRectangleTest : public SpritePainterTest, public testing::WithParamInterface<Scales> {
 protected:
  /// The view's projection, behind whatever the projection matrix already holds.
  static void setView() {
    const auto [scaleX, scaleY, height] = GetParam();
    glMatrixMode(GL_PROJECTION);
    glOrtho(-height / 2, height / 2, -height / 2, height / 2, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glScaled(scaleX, scaleY, 1);
  }

  bool isHit(double x, double y) const {
    constexpr GLdouble kPickSize = 0.25;
    GLuint buffer[16] = {};
    glSelectBuffer(16, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    gluPickMatrix(x, y, kPickSize, kPickSize, viewport);
    setView();
    drawSpriteRectangle2D(shape_, 1, std::get<2>(GetParam()));
    return glRenderMode(GL_RENDER) > 0;
  }
};

TEST_P(SpriteRectangleTest, CoversThePixelsOfThePicture) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  setView();
  const auto [scaleX, scaleY, height] = GetParam();
  // A quarter of a pixel from the corner of a pixel, so that rounding does not move the picture.
  const double pixel = height / kSide;
  shape_.position = {0.25 * pixel / scaleX, 0.25 * pixel / scaleY, 0};
  shape_.originX = 4;
  shape_.originY = 7;
  drawSprite2D(shape_, 1);
  expectBlue(28, 25, 10, 6);

  glEnable(GL_CULL_FACE);
  for (int y = 20; y < 36; ++y) {
    for (int x = 24; x < 42; ++x) {
      const bool covered = x >= 28 && x < 38 && y >= 25 && y < 31;
      EXPECT_EQ(isHit(x + 0.5, y + 0.5), covered) << x << ", " << y;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Views, SpriteRectangleTest,
                         testing::Values(Scales{1, 1, 64}, Scales{1, 1, 0.001}, Scales{3, 0.25, 10},
                                         Scales{1000, 1e-3, 1}, Scales{-2, 5, 10},
                                         Scales{2, -5, 10}));

}  // namespace
}  // namespace zyn
