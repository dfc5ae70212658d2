#include "view/CursorGlyph_gl.h"

#include <optional>

#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

constexpr int kGlyphSide = 13;
constexpr const char* kGlyph[kGlyphSide] = {
    ".....###.....",  //
    ".....###.....",  //
    ".....###.....",  //
    ".....###.....",  //
    "......#......",  //
    "####.....####",  //
    "#####...#####",  //
    "####.....####",  //
    "......#......",  //
    ".....###.....",  //
    ".....###.....",  //
    ".....###.....",  //
    ".....###.....",  //
};

/// Scene units are pixels from the lower left corner.
class CursorGlyphTest : public GlTest {
 protected:
  CursorGlyphTest() {
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kSide, 0, kSide, -10, 10);
    glMatrixMode(GL_MODELVIEW);
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glyph.emplace();
  }
  ~CursorGlyphTest() override { glyph.reset(); }

  std::optional<CursorGlyph> glyph;
};

TEST_F(CursorGlyphTest, IsACrossCentredOnThePosition) {
  glyph->draw(20.5F, 40.5F, 0);
  const Image image = context.read();
  for (int y = 0; y < kGlyphSide; ++y) {
    for (int x = 0; x < kGlyphSide; ++x) {
      const Rgb expected = kGlyph[y][x] == '#' ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
      EXPECT_EQ(image.at(20 - 6 + x, kSide - 1 - 40 - 6 + y), expected) << x << ',' << y;
    }
  }
  EXPECT_EQ(image.count({0, 0, 0}) + image.count({255, 255, 255}), kSide * kSide);
  const PixelBox box = boxOf(image, {0, 0, 0});
  EXPECT_EQ(box.right - box.left, 12);
  EXPECT_EQ(box.bottom - box.top, 12);
}

TEST_F(CursorGlyphTest, GrowsPixelByPixel) {
  glyph->draw(40.5F, 40.5F, 0, 2);
  const Image image = context.read();
  EXPECT_EQ(image.count({0, 0, 0}), 4 * 52);
  const PixelBox box = boxOf(image, {0, 0, 0});
  EXPECT_EQ(box.right - box.left, 25);
  EXPECT_EQ(box.bottom - box.top, 25);
  EXPECT_NEAR(box.centreX(), 40.5, 0.5);
  for (int y = 0; y < 2 * kGlyphSide; ++y) {
    for (int x = 0; x < 2 * kGlyphSide; ++x) {
      const Rgb expected = kGlyph[y / 2][x / 2] == '#' ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
      ASSERT_EQ(image.at(box.left + x, box.top + y), expected) << x << ',' << y;
    }
  }
}

TEST_F(CursorGlyphTest, IsBlackWhateverTheColourAndTheLights) {
  glColor3f(1, 0, 0);
  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
  glyph->draw(20.5F, 40.5F, 0);
  EXPECT_EQ(context.read().count({0, 0, 0}), 52);
  EXPECT_TRUE(isEnabled(GL_LIGHTING));
}

TEST_F(CursorGlyphTest, IsHiddenBehindTheScene) {
  glEnable(GL_DEPTH_TEST);
  glBegin(GL_QUADS);
  glColor3f(1, 0, 0);
  glVertex3d(0, 0, 5);
  glVertex3d(kSide, 0, 5);
  glVertex3d(kSide, kSide, 5);
  glVertex3d(0, kSide, 5);
  glEnd();
  glyph->draw(20.5F, 40.5F, 0);
  EXPECT_EQ(context.read().count({0, 0, 0}), 0);
  glyph->draw(20.5F, 40.5F, 6);
  EXPECT_GT(context.read().count({0, 0, 0}), 0);
}

TEST_F(CursorGlyphTest, IsNotDrawnOutsideTheView) {
  glyph->draw(-5, 40, 0);
  glyph->draw(20, 40, 50);
  EXPECT_EQ(context.read().count({255, 255, 255}), kSide * kSide);
}

TEST_F(CursorGlyphTest, LeavesTheStateAsItWas) {
  glColor3f(0.25F, 0.5F, 0.75F);
  glRasterPos2f(3, 4);
  for (const bool lit : {false, true}) {
    setEnabled(GL_LIGHTING, lit);
    const GlState before = readGlState();
    glyph->draw(20.5F, 40.5F, 0);
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(CursorGlyphTest, RowsOfImagesAreByteAlignedAfterwards) {
  EXPECT_EQ(integerState(GL_UNPACK_ALIGNMENT), 1);
}

TEST_F(CursorGlyphTest, FreesItsDisplayList) {
  const GLuint next = glGenLists(1);
  EXPECT_TRUE(glIsList(next - 1));
  glyph.reset();
  EXPECT_FALSE(glIsList(next - 1));
}

}  // namespace
}  // namespace zyn::test
