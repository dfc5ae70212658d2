#include "objects/text/TextPainter_gl.h"

#include "glcontext/ViewMeasures_gl.h"
#include "support/BlockFont_gl.h"
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

constexpr Rgb kRed{255, 0, 0};

/// A scene of 64 x 64 units, one a pixel.
class TextPainterTest : public test::GlTest {
 protected:
  void SetUp() override {
    test::giveBlocks(fonts_, false);
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kSide, 0, kSide, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glColor3f(1, 0, 0);
    placement_.position = {10, 20, 0};
    placement_.scale = 16;
  }
  void TearDown() override { fonts_.release(); }

  void expectRed(int left, int bottom, int width, int height) const {
    const PixelBox box = boxOf(context.read(), kRed);
    EXPECT_EQ(box.left, left);
    EXPECT_EQ(kSide - 1 - box.bottom, bottom);
    EXPECT_EQ(box.right - box.left + 1, width);
    EXPECT_EQ(box.bottom - box.top + 1, height);
  }

  CGLFontContext fonts_;
  TextPlacement placement_;
};

TEST_F(TextPainterTest, StartsItsBaselineAtThePosition) {
  drawText(fonts_, "MM", placement_);
  expectRed(12, 16, 28, 16);
}

TEST_F(TextPainterTest, HasItsAnchorAtThePosition) {
  placement_.anchor = {0.5, -0.25};
  drawText(fonts_, "M", placement_);
  expectRed(4, 20, 12, 16);
}

TEST_F(TextPainterTest, TurnsToTheViewerOnly) {
  glTranslated(20, 0, 0);
  glRotated(90, 0, 0, 1);
  placement_.position = {10, 0, 0};
  placement_.facesViewer = true;
  drawText(fonts_, "M", placement_);
  expectRed(22, 6, 12, 16);
  glClear(GL_COLOR_BUFFER_BIT);
  placement_.facesViewer = false;
  placement_.position = {10, -20, 0};
  drawText(fonts_, "M", placement_);
  expectRed(28, 12, 16, 12);
}

TEST_F(TextPainterTest, TheBoxIsThatOfTheText) {
  const TextBox box = measureText(fonts_.metrics(), "MM", fonts_.metrics().digits);
  drawTextBox(box, placement_);
  expectRed(12, 16, 28, 16);
}

TEST_F(TextPainterTest, LeavesTheStateAsItWas) {
  glMatrixMode(GL_PROJECTION);
  glListBase(3);
  glNormal3f(0.25F, 0.5F, 0.75F);
  glFrontFace(GL_CW);
  const GlState before = readGlState();
  drawText(fonts_, "MM", placement_);
  placement_.facesViewer = true;
  drawText(fonts_, "MM", placement_);
  drawTextBox({0, 1, 0, 1}, placement_);
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(TextPainterTest, MeasuresOfTheView) {
  EXPECT_FLOAT_EQ(static_cast<float>(shownHeight()), kSide);
  EXPECT_DOUBLE_EQ(pixelLength(32), 32.0 / kSide);
  glViewport(0, 0, 16, 8);
  EXPECT_DOUBLE_EQ(pixelLength(32), 4);
  glViewport(0, 0, 16, 0);
  EXPECT_EQ(pixelLength(32), 0);
}

}  // namespace
}  // namespace zyn
