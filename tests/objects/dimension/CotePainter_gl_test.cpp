#include "objects/dimension/CotePainter_gl.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "glcontext/BorrowedState_gl.h"
#include "support/BlockFont_gl.h"
#include "support/EglContext_gl.h"
#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::PixelBox;
using test::readGlState;
using test::Rgb;

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kBlue{0, 0, 255};
constexpr Colour4 kOpaqueRed{1, 0, 0, 1};

PixelImage blueImage(int width, int height) {
  PixelImage image{width, height, {}};
  for (int i = 0; i < width * height; ++i) {
    image.pixels.insert(image.pixels.end(), {0, 0, 255, 255});
  }
  return image;
}

/// A picture whose pixels are model units, from its lower left corner on. A text of two blocks
/// measures 35 by 20 pixels.
class CotePainterTest : public testing::Test {
 protected:
  static constexpr int kWidth = 200;
  static constexpr int kHeight = 150;

  CotePainterTest() {
    test::giveBlocks(fonts_, true);
    glViewport(0, 0, kWidth, kHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kWidth, 0, kHeight, -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    shape_.type = CoteShape::kHorizontal;
    shape_.first = {30.5, 20.5, 0};  // centres of pixels
    shape_.second = {170.5, 20.5, 0};
    shape_.offset = 40;
    content_.text = {test::kBlockLeft, test::kBlockAdvance + test::kBlockRight, test::kBlockBottom,
                     test::kBlockTop};
    content_.size.value = 20;
  }
  ~CotePainterTest() override { fonts_.release(); }

  std::optional<CoteLayout> layOut() const {
    return layOutCote(shape_, content_, ScreenMap(currentModelView(), currentLens()));
  }

  void draw(const PixelImage* picture = nullptr) {
    content_.pictureWidth = picture ? picture->width : 0;
    content_.pictureHeight = picture ? picture->height : 0;
    const auto layout = layOut();
    ASSERT_TRUE(layout);
    const BorrowedState borrowed;
    drawCote(*layout, colour_, fonts_, text_, picture);
  }

  /// Hit records of all the cover, or of what of it lies within a square of the picture, from the
  /// top: the names of each.
  std::vector<std::vector<GLuint>> pick(double x = -1, double y = -1) {
    const auto layout = layOut();
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    if (x >= 0) {
      GLint viewport[4] = {0, 0, kWidth, kHeight};
      glLoadIdentity();
      gluPickMatrix(x, y, 1, 1, viewport);
      glOrtho(0, kWidth, 0, kHeight, -1000, 1000);
    }
    {
      const BorrowedState borrowed;
      drawCoteCover(*layout, colour_, names_);
    }
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    std::vector<std::vector<GLuint>> hits;
    const GLuint* record = buffer;
    for (GLint left = glRenderMode(GL_RENDER); left > 0; --left) {
      hits.emplace_back(record + 3, record + 3 + record[0]);
      record += 3 + record[0];
    }
    return hits;
  }

  /// Counted from below, as the model is.
  static Rgb at(const Image& image, int x, int y) { return image.at(x, kHeight - 1 - y); }
  Rgb at(int x, int y) const { return at(context_.read(), x, y); }

  test::EglContext context_{kWidth, kHeight};
  CGLFontContext fonts_;
  CoteShape shape_;
  CoteContent content_;
  CoteNames names_{10, 20, 30, 40, false};
  Colour4 colour_ = kOpaqueRed;
  std::string text_ = "MM";
};

TEST_F(CotePainterTest, DrawsLinesArrowsAndText) {
  draw();
  const Image image = context_.read();
  // Dimension line, extension lines and their ends.
  EXPECT_EQ(at(image, 60, 60), kRed);
  EXPECT_EQ(at(image, 140, 60), kRed);
  for (const int x : {30, 170}) {
    EXPECT_EQ(at(image, x, 40), kRed) << x;
    EXPECT_EQ(at(image, x, 63), kRed) << x;
    EXPECT_EQ(at(image, x, 67), kBlack) << x;
    EXPECT_EQ(at(image, x, 17), kBlack) << x;
  }
  // Arrows, wide at their bases.
  EXPECT_EQ(at(image, 42, 61), kRed);
  EXPECT_EQ(at(image, 42, 59), kRed);
  EXPECT_EQ(at(image, 157, 61), kRed);
  EXPECT_EQ(at(image, 50, 62), kBlack);
  // Text: two blocks with a gap, 15 pixels over the line.
  EXPECT_EQ(at(image, 85, 85), kRed);
  EXPECT_EQ(at(image, 114, 85), kRed);
  EXPECT_EQ(at(image, 100, 85), kBlack);
  EXPECT_EQ(at(image, 90, 73), kBlack);
  EXPECT_EQ(at(image, 90, 76), kRed);
  EXPECT_EQ(at(image, 90, 93), kRed);
  EXPECT_EQ(at(image, 90, 97), kBlack);
}

TEST_F(CotePainterTest, LinesAlongPixelsAreOnePixelWide) {
  shape_.arrowLength = 0;
  text_.clear();
  draw();
  const Image image = context_.read();
  for (const int x : {60, 100, 140}) {
    int found = 0;
    for (int y = 50; y < 70; ++y) {
      EXPECT_TRUE(at(image, x, y) == kBlack || at(image, x, y) == kRed);
      found += at(image, x, y) == kRed ? 1 : 0;
    }
    EXPECT_EQ(found, 1);
  }
}

TEST_F(CotePainterTest, ThePictureIsDrawnUprightInItsPixels) {
  const PixelImage picture = blueImage(16, 10);
  draw(&picture);
  const PixelBox box = boxOf(context_.read(), kBlue);
  EXPECT_EQ(box.right - box.left + 1, 16);
  EXPECT_EQ(box.bottom - box.top + 1, 10);
  // 16 + 4 + 35 pixels stand over the middle of the line.
  EXPECT_NEAR(box.left, 100.5 - 27.5, 1);
  EXPECT_NEAR(kHeight - box.centreY(), 85.5, 1);
}

TEST_F(CotePainterTest, IsSeenOverWhateverTheOwnerHasDrawn) {
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_NEVER);
  draw();
  EXPECT_EQ(at(60, 60), kRed);
  EXPECT_EQ(at(90, 85), kRed);
}

TEST_F(CotePainterTest, IsDrawnPlainlyHoweverTheOwnerDraws) {
  const GLfloat white[] = {1, 1, 1, 1};
  const GLubyte texel[] = {0, 255, 0, 255};
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, texel);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glFogfv(GL_FOG_COLOR, white);
  glFogf(GL_FOG_DENSITY, 100);
  glAlphaFunc(GL_NEVER, 0);
  glLogicOp(GL_CLEAR);
  glLineStipple(1, 0);
  glCullFace(GL_FRONT_AND_BACK);
  glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
  glBlendFunc(GL_ZERO, GL_ONE);
  glLineWidth(7);
  const GLubyte nothing[128] = {};
  glPolygonStipple(nothing);
  for (const GLenum capability :
       {GL_TEXTURE_2D, GL_FOG, GL_ALPHA_TEST, GL_COLOR_LOGIC_OP, GL_LINE_STIPPLE, GL_CULL_FACE,
        GL_BLEND, GL_POLYGON_STIPPLE, GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL, GL_LINE_SMOOTH,
        GL_POLYGON_SMOOTH, GL_DEPTH_TEST}) {
    glEnable(capability);
  }
  draw();
  const Image upset = context_.read();
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glDisable(GL_COLOR_LOGIC_OP);
  glClear(GL_COLOR_BUFFER_BIT);
  glPopAttrib();
  EXPECT_EQ(at(upset, 60, 60), kRed);
  EXPECT_EQ(at(upset, 60, 63), kBlack);
  EXPECT_EQ(at(upset, 42, 61), kRed);
  EXPECT_EQ(at(upset, 90, 85), kRed);
}

TEST_F(CotePainterTest, OpacityBlends) {
  glClearColor(0, 0, 1, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  colour_[3] = 0.25F;
  draw();
  EXPECT_LE(difference(at(60, 60), Rgb{64, 0, 191}), 2);
}

TEST_F(CotePainterTest, LeavesTheStateOfTheContextAsItWas) {
  const PixelImage picture = blueImage(16, 10);
  for (const bool unusual : {false, true}) {
    if (unusual) {
      glEnable(GL_LIGHTING);
      glEnable(GL_COLOR_MATERIAL);
      glEnable(GL_CULL_FACE);
      glFrontFace(GL_CW);
      glListBase(99);
      glPixelZoom(2, -2);
      glPixelStorei(GL_UNPACK_ROW_LENGTH, 5);
      glMatrixMode(GL_TEXTURE);
      glColor4f(0.25F, 0.5F, 0.75F, 0.5F);
      glRasterPos2f(10, 20);
      glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
    }
    for (const std::int32_t type : {0, 1, 2, 3}) {
      for (const bool readable : {true, false}) {
        shape_.type = type;
        shape_.alwaysReadable = readable;
        const GlState before = readGlState();
        draw(&picture);
        EXPECT_EQ(differences(before, readGlState()), kNone) << type << readable << unusual;
        pick();
        glMatrixMode(unusual ? GL_TEXTURE : GL_MODELVIEW);
        EXPECT_EQ(differences(before, readGlState()), kNone) << type << readable << unusual;
      }
    }
  }
}

TEST_F(CotePainterTest, APictureBeyondTheEdgeIsCutOff) {
  const PixelImage picture = blueImage(40, 30);
  content_.text.right = content_.text.left;
  text_.clear();
  shape_.type = 0;
  shape_.position = {-10, 145, 0};
  shape_.reference = 1;
  const GlState before = readGlState();
  draw(&picture);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  const PixelBox box = boxOf(context_.read(), kBlue);
  EXPECT_EQ(box.left, 0);
  EXPECT_EQ(box.right, 29);
  EXPECT_EQ(box.top, 0);
  EXPECT_EQ(box.bottom, 4);
}

TEST_F(CotePainterTest, ExtremesDoNoHarm) {
  const PixelImage picture = blueImage(16, 10);
  for (const double far : {1e6, 1e12, 1e17}) {
    for (const std::int32_t type : {0, 1, 2, 3}) {
      shape_.type = type;
      shape_.position = {far, -far, 0};
      shape_.first = {-far, far, 0};
      shape_.second = {far, far / 3, 0};
      shape_.offset = far;
      shape_.arrowLength = shape_.arrowWidth = std::numeric_limits<std::int32_t>::max();
      content_.size.value = far;
      const GlState before = readGlState();
      draw(&picture);
      pick();
      EXPECT_EQ(differences(before, readGlState()), kNone) << far << ' ' << type;
    }
  }
}

// --- selection -----------------------------------------------------------------------------------

using Hits = std::vector<std::vector<GLuint>>;

TEST_F(CotePainterTest, TextAndEndsHaveTheirNames) {
  EXPECT_EQ(pick(90, 85), (Hits{{10}}));
  EXPECT_EQ(pick(26, 20), (Hits{{20}}));
  EXPECT_EQ(pick(40, 63), (Hits{{20}}));
  EXPECT_EQ(pick(174, 20), (Hits{{30}}));
  EXPECT_EQ(pick(160, 63), (Hits{{30}}));
  EXPECT_EQ(pick(100, 20), Hits());
}

TEST_F(CotePainterTest, LinesAreHitAfterTheEndsThatTheyRunThrough) {
  EXPECT_EQ(pick(), (Hits{{10}, {20}, {30}, {10}}));
  EXPECT_EQ(pick(100, 60), (Hits{{10}}));
  EXPECT_EQ(pick(100, 62.5), Hits());
  EXPECT_EQ(pick(30, 40), (Hits{{10}}));
  EXPECT_EQ(pick(33, 40), Hits());
  EXPECT_EQ(pick(170, 65), (Hits{{30}, {10}}));
  EXPECT_EQ(pick(30, 20), (Hits{{20}, {10}}));
}

TEST_F(CotePainterTest, EndsWithoutANameHaveThatOfTheWhole) {
  names_.first.reset();
  EXPECT_EQ(pick(26, 20), (Hits{{10}}));
  EXPECT_EQ(pick(40, 63), (Hits{{10}}));
  EXPECT_EQ(pick(174, 20), (Hits{{30}}));
}

TEST_F(CotePainterTest, TheTextIsHitWithinItsBoxExactly) {
  // 35 by 20 pixels over the line's middle, 15 pixels away.
  EXPECT_EQ(pick(83.5, 85), (Hits{{10}}));
  EXPECT_EQ(pick(81, 85), Hits());
  EXPECT_EQ(pick(116.5, 85), (Hits{{10}}));
  EXPECT_EQ(pick(119, 85), Hits());
  EXPECT_EQ(pick(100, 76), (Hits{{10}}));
  EXPECT_EQ(pick(100, 73), Hits());
  EXPECT_EQ(pick(100, 94), (Hits{{10}}));
  EXPECT_EQ(pick(100, 97), Hits());
}

TEST_F(CotePainterTest, TheTypeComesBeforeEachName) {
  names_.pushType = true;
  EXPECT_EQ(pick(), (Hits{{40, 10}, {40, 20}, {40, 30}, {40, 10}}));
}

TEST_F(CotePainterTest, NegativeNamesAreNotPushed) {
  names_.pushType = true;
  names_.whole = -1;
  EXPECT_EQ(pick(), (Hits{{}}));
  names_ = {10, -20, -30, 40, true};
  EXPECT_EQ(pick(), (Hits{{40, 10}, {}, {40, 10}}));
}

TEST_F(CotePainterTest, CulledSidesAreHitToo) {
  glEnable(GL_CULL_FACE);
  glCullFace(GL_FRONT_AND_BACK);
  EXPECT_EQ(pick(90, 85), (Hits{{10}}));
}

TEST_F(CotePainterTest, AnEmptyTextIsNotHit) {
  content_.text.right = content_.text.left;
  EXPECT_EQ(pick(), (Hits{{20}, {30}, {10}}));
}

TEST_F(CotePainterTest, ThePictureIsHitUnderTheNameOfTheText) {
  content_.text.right = content_.text.left;
  content_.pictureWidth = content_.pictureHeight = 20;
  EXPECT_EQ(pick(100, 85), (Hits{{10}}));
}

TEST_F(CotePainterTest, ATextOnlyHasNoEnds) {
  shape_.type = 0;
  shape_.position = {100, 100, 0};
  EXPECT_EQ(pick(), (Hits{{10}}));
}

}  // namespace
}  // namespace zyn
