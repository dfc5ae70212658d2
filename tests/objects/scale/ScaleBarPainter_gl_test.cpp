#include "objects/scale/ScaleBarPainter_gl.h"

#include "support/BlockFont_gl.h"
#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

class ScaleBarPainterTest : public GlTest {
 protected:
  ScaleBarPainterTest() {
    giveBlocks(fonts, false);
    bar.x = bar.y = 0.5;
    bar.reference = 9;
    bar.width = 10;
    bar.height = 40;
    scale.palette = ColourPalette(ColourPalette::kGrey);
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }
  ~ScaleBarPainterTest() override { fonts.release(); }

  void draw(double opacity = 1) { drawScaleBar(bar, scale, &fonts, {.opacity = opacity}); }

  ScaleBar bar;
  ColourScale scale;
  CGLFontContext fonts;
};

constexpr Rgb kBackground{0, 0, 255};

TEST_F(ScaleBarPainterTest, ShowsTheScaleInItsFrame) {
  draw();
  const Image image = context.read();
  for (int row = 1; row < 39; ++row) {
    const Rgb pixel = image.at(32, kSide - 1 - (12 + row));
    EXPECT_NEAR(pixel.r, 255 * (row + 0.5) / 40, 1.5) << row;
    EXPECT_EQ(pixel.r, pixel.b);
  }
  EXPECT_EQ(image.at(27, 32), (Rgb{26, 26, 26}));
  EXPECT_EQ(image.at(36, 32), (Rgb{26, 26, 26}));
  EXPECT_NE(image.at(20, 32), kBackground) << "the label in the middle";
  EXPECT_EQ(image.at(20, 22), kBackground);
}

TEST_F(ScaleBarPainterTest, ItsFrameIsLightOnDark) {
  drawScaleBar(bar, scale, &fonts, {.isOnDark = true});
  EXPECT_EQ(context.read().at(27, 32), (Rgb{242, 242, 242}));
}

TEST_F(ScaleBarPainterTest, BandsEndBetweenPixels) {
  scale.bands = 4;
  draw();
  const Image image = context.read();
  for (int row = 1; row < 39; ++row) {
    EXPECT_EQ(image.at(32, kSide - 1 - (12 + row)).r, 85 * (row / 10)) << row;
  }
}

TEST_F(ScaleBarPainterTest, StaysInFrontOfWhatComesLater) {
  glEnable(GL_DEPTH_TEST);
  draw();
  const Rgb middle = context.read().at(32, 20);
  glColor3d(1, 0, 0);
  glRectd(-1, -1, 1, 1);
  const Image image = context.read();
  EXPECT_EQ(image.at(32, 20), middle);
  EXPECT_EQ(image.at(5, 5), (Rgb{255, 0, 0}));
}

TEST_F(ScaleBarPainterTest, APartIsThatOfTheWhole) {
  draw();
  const Image whole = context.read();
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glViewport(0, 0, kSide / 2, kSide);
  drawScaleBar(bar, scale, &fonts, {.part = {0.5, 1, 0, 1}});
  const Image right = context.read();
  for (int x = 0; x < kSide / 2; ++x) {
    for (int y = 0; y < kSide; ++y) {
      ASSERT_EQ(right.at(x, y), whole.at(kSide / 2 + x, y)) << x << ", " << y;
    }
  }
}

TEST_F(ScaleBarPainterTest, OpacityLetsTheBackgroundThrough) {
  draw(0.5);
  const Rgb pixel = context.read().at(32, 13);  // white below the upper edge
  EXPECT_NEAR(pixel.r, 126, 4);
  EXPECT_GT(pixel.b, 240);
}

TEST_F(ScaleBarPainterTest, GivesTheStateBack) {
  glMatrixMode(GL_PROJECTION);
  glOrtho(0, 5, 0, 7, -1, 1);
  glMatrixMode(GL_TEXTURE);
  glEnable(GL_LIGHTING);
  glEnable(GL_CULL_FACE);
  glDepthRange(0.25, 0.5);
  glPolygonMode(GL_FRONT, GL_LINE);
  const GlState before = readGlState();
  draw();
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

}  // namespace
}  // namespace zyn::test
