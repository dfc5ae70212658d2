#include "objects/text/DigitText_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;

class DigitTextTest : public test::GlTest {
 protected:
  void SetUp() override {
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kSide, 0, kSide, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    fonts.buildDigits();
    start();
  }

  static void start() {
    glClear(GL_COLOR_BUFFER_BIT);
    glRasterPos2i(3, 3);
  }

  CGLFontContext fonts;
};

TEST_F(DigitTextTest, ANumberIsTheRowOfItsGlyphs) {
  for (int size = 1; size <= kDigitSizes; ++size) {
    start();
    for (const char character : {'-', '1', ':', '5', 'e', '+', '2'}) {
      glListBase(fonts.digitLists(size) - '0');
      glCallLists(1, GL_BYTE, &character);
    }
    const Image expected = context.read();
    start();
    drawDigitText(fonts, size, "-1,5E+2");
    EXPECT_EQ(context.read(), expected) << size;
    start();
    drawDigitText(fonts, size, "-1.5e+2");
    EXPECT_EQ(context.read(), expected) << size;
  }
}

TEST_F(DigitTextTest, CompilesIntoAList) {
  drawDigitText(fonts, 2, "-12.5");
  const Image expected = context.read();

  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  drawDigitText(fonts, 2, "-12.5");
  glEndList();
  start();
  glListBase(77);
  glCallList(list);
  EXPECT_EQ(context.read(), expected);
  GLint base = 0;
  glGetIntegerv(GL_LIST_BASE, &base);
  EXPECT_EQ(base, 77);
}

TEST_F(DigitTextTest, OnlyTheRasterPositionMoves) {
  glListBase(77);
  GlState before = readGlState();
  drawDigitText(fonts, 2, "60");
  GlState after = readGlState();
  ASSERT_TRUE(before.count("GL_CURRENT_RASTER_POSITION"));
  EXPECT_EQ(after.at("GL_CURRENT_RASTER_POSITION").at(0),
            before.at("GL_CURRENT_RASTER_POSITION").at(0) + 10);
  before["GL_CURRENT_RASTER_POSITION"] = after["GL_CURRENT_RASTER_POSITION"];
  EXPECT_EQ(differences(before, after), kNone);
}

TEST_F(DigitTextTest, WithoutTheListsTheSameIsDrawn) {
  drawDigitText(fonts, 3, "-12.5");
  const Image expected = context.read();
  start();
  drawDigitText(CGLFontContext(), 3, "-12.5");
  EXPECT_EQ(context.read(), expected);
}

}  // namespace
}  // namespace zyn
