#include "objects/text/CGLFontContext_gl.h"

#include <optional>
#include <string>

#include "support/GlTest_gl.h"
#include "support/LetterFont_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;
using test::Rgb;

constexpr int kX = 5;  ///< where the glyphs are drawn, from the lower left corner
constexpr int kY = 7;
constexpr GLsizei kGlyphLists = 256;
constexpr std::string_view kPrintable =
    " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{"
    "|}~";

/// Scene units are pixels from the lower left corner.
class CGLFontContextTest : public test::GlTest {
 protected:
  void SetUp() override {
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kSide, 0, kSide, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    clear();
  }

  static void clear() {
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glColor3f(0, 0, 0);
    glRasterPos2i(kX, kY);
  }

  static Image expected(const DigitGlyph& glyph, int height) {
    Image image(kSide, kSide);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const int row = kSide - 1 - y - kY;
        const int column = x - kX;
        const bool isInside = row >= 0 && row < height && column >= 0 && column < 8;
        const bool isSet =
            isInside && (glyph.rows.at(static_cast<std::size_t>(row)) >> (7 - column) & 1) != 0;
        image.at(x, y) = isSet ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
      }
    }
    return image;
  }

  static std::array<GLfloat, 4> rasterPosition() {
    std::array<GLfloat, 4> position{};
    glGetFloatv(GL_CURRENT_RASTER_POSITION, position.data());
    return position;
  }

  /// Glyph lists as an owner makes them.
  static GLuint makeGlyphLists() {
    const GLuint first = glGenLists(kGlyphLists);
    for (GLuint list = first; list < first + kGlyphLists; ++list) {
      glNewList(list, GL_COMPILE);
      glEndList();
    }
    return first;
  }

  static int countLists(GLuint first, GLsizei count) {
    int found = 0;
    for (GLuint list = first; list < first + static_cast<GLuint>(count); ++list) {
      found += glIsList(list) == GL_TRUE ? 1 : 0;
    }
    return found;
  }

  CGLFontContext fonts;
};

TEST_F(CGLFontContextTest, IsEmptyAtFirst) {
  EXPECT_EQ(fonts.filledLists(), 0U);
  EXPECT_EQ(fonts.outlineLists(), 0U);
  for (int size = 1; size <= kDigitSizes; ++size) {
    EXPECT_EQ(fonts.digitLists(size), 0U);
  }
}

TEST_F(CGLFontContextTest, DigitsAreDrawnPixelByPixelAndAdvance) {
  fonts.buildDigits();
  for (int size = 1; size <= kDigitSizes; ++size) {
    for (GLuint glyph = 0; glyph <= 10; ++glyph) {
      const char character = glyph == 10 ? '.' : static_cast<char>('0' + glyph);
      SCOPED_TRACE(std::string(1, character) + " of size " + std::to_string(size));
      clear();
      const auto before = rasterPosition();
      glCallList(fonts.digitLists(size) + glyph);
      const DigitGlyph& drawn = digitGlyph(character, size);
      EXPECT_EQ(context.read(), expected(drawn, digitHeight(size)));
      auto after = before;
      after[0] += static_cast<GLfloat>(drawn.advance);
      EXPECT_EQ(rasterPosition(), after);
    }
  }
}

TEST_F(CGLFontContextTest, AnyPrintableTextCallsListsOfItsFontOnly) {
  const GLuint others = makeGlyphLists();
  fonts.setGlyphs({}, others, 0);
  fonts.buildDigits();
  for (int size = 1; size <= kDigitSizes; ++size) {
    for (const char character : kPrintable) {
      SCOPED_TRACE(std::string(1, character) + " of size " + std::to_string(size));
      clear();
      const auto before = rasterPosition();
      glListBase(fonts.digitLists(size) - '0');
      glCallLists(1, GL_BYTE, &character);
      const DigitGlyph& drawn = digitGlyph(character, size);
      EXPECT_EQ(context.read(), expected(drawn, digitHeight(size)));
      EXPECT_EQ(rasterPosition()[0], before[0] + static_cast<GLfloat>(drawn.advance));
    }
  }
}

TEST_F(CGLFontContextTest, DigitsDoNotDependOnHowImagesAreRead) {
  glPixelStorei(GL_UNPACK_LSB_FIRST, GL_TRUE);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 40);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, 3);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 2);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
  fonts.buildDigits();
  glCallList(fonts.digitLists(8) + 5);
  EXPECT_EQ(context.read(), expected(digitGlyph('5', 8), digitHeight(8)));
}

TEST_F(CGLFontContextTest, BuildingLeavesTheStateAsItWas) {
  for (const GLint alignment : {1, 2, 8}) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, alignment * 3);
    const GlState before = readGlState();
    fonts.buildDigits();
    EXPECT_EQ(differences(before, readGlState()), kNone);
    fonts.release();
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(CGLFontContextTest, DigitsThatAreThereStay) {
  fonts.buildDigits();
  std::vector<GLuint> lists;
  for (int size = 1; size <= kDigitSizes; ++size) {
    lists.push_back(fonts.digitLists(size));
  }
  fonts.buildDigits();
  for (int size = 1; size <= kDigitSizes; ++size) {
    EXPECT_EQ(fonts.digitLists(size), lists.at(static_cast<std::size_t>(size - 1)));
  }
}

TEST_F(CGLFontContextTest, ReleaseDeletesAllLists) {
  const GLuint unused = glGenLists(1);
  glDeleteLists(unused, 1);
  const GLuint filled = makeGlyphLists();
  const GLuint outline = makeGlyphLists();
  fonts.setGlyphs({}, filled, outline);
  fonts.buildDigits();
  const auto last = static_cast<GLsizei>(fonts.digitLists(kDigitSizes) + 200 - unused);
  ASSERT_GT(countLists(unused, last), 2 * kGlyphLists + 8 * 11);

  fonts.release();
  EXPECT_EQ(countLists(unused, last), 0);
  EXPECT_EQ(fonts.filledLists(), 0U);
  EXPECT_EQ(fonts.outlineLists(), 0U);
  for (int size = 1; size <= kDigitSizes; ++size) {
    EXPECT_EQ(fonts.digitLists(size), 0U);
  }
  fonts.release();
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CGLFontContextTest, DigitsCanBeBuiltAgainAfterRelease) {
  fonts.buildDigits();
  fonts.release();
  fonts.buildDigits();
  clear();
  glCallList(fonts.digitLists(3) + 2);
  EXPECT_EQ(context.read(), expected(digitGlyph('2', 3), digitHeight(3)));
}

TEST_F(CGLFontContextTest, OtherGlyphsReplaceTheListsThereWere) {
  FontMetrics metrics;
  metrics.glyphs['A'].cellIncX = 0.5F;
  const GLuint first = makeGlyphLists();
  const GLuint lines = makeGlyphLists();
  fonts.setGlyphs(metrics, first, lines);
  EXPECT_EQ(fonts.metrics().glyphs['A'].cellIncX, 0.5F);

  fonts.setGlyphs(metrics, first, 0);  // the same filled glyphs
  EXPECT_EQ(countLists(first, kGlyphLists), kGlyphLists);
  EXPECT_EQ(countLists(lines, kGlyphLists), 0);

  const GLuint second = makeGlyphLists();
  fonts.setGlyphs(metrics, second, 0);
  EXPECT_EQ(countLists(first, kGlyphLists), 0);
  EXPECT_EQ(countLists(second, kGlyphLists), kGlyphLists);
  EXPECT_EQ(fonts.filledLists(), second);
}

TEST_F(CGLFontContextTest, ListsOfShapesAreCompiledWhenTheyAreNeeded) {
  const GLuint unused = glGenLists(1);
  glDeleteLists(unused, 1);
  test::giveLetters(fonts);
  EXPECT_TRUE(fonts.hasGlyphs());
  EXPECT_TRUE(fonts.smoothsEdges());
  EXPECT_EQ(countLists(unused, 3 * kGlyphLists), 0);

  const GLuint recorded = glGenLists(1);
  glNewList(recorded, GL_COMPILE);
  EXPECT_EQ(fonts.filledLists(), 0U);
  EXPECT_EQ(fonts.outlineLists(), 0U);
  glEndList();
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
  glDeleteLists(recorded, 1);

  fonts.compileGlyphs();
  EXPECT_EQ(countLists(unused, 3 * kGlyphLists), 2 * kGlyphLists);
  const GLuint filled = fonts.filledLists();
  fonts.setShapes(fonts.metrics(), std::make_shared<GlyphShapes>(*fonts.shapes()), false);
  EXPECT_EQ(fonts.filledLists(), filled);
  EXPECT_EQ(fonts.outlineLists(), 0U);
  EXPECT_EQ(countLists(unused, 3 * kGlyphLists), kGlyphLists);

  fonts.release();
  EXPECT_FALSE(fonts.hasGlyphs());
  EXPECT_EQ(fonts.filledLists(), 0U);
  EXPECT_EQ(countLists(unused, 3 * kGlyphLists), 0);
}

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
