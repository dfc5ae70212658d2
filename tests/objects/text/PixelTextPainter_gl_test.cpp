#include "objects/text/PixelTextPainter_gl.h"

#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "objects/text/TextPainter_gl.h"
#include "support/GlTest_gl.h"
#include "support/LetterFont_gl.h"
#include "support/Random.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::Random;
using test::readGlState;

/// A plane of units as large as pixels, with white letters on black.
class PixelTextPainterTest : public test::GlTest {
 protected:
  static constexpr int kWidth = 256;
  static constexpr int kHeight = 64;

  void SetUp() override { prepare(fonts_); }
  void TearDown() override { fonts_.release(); }

  static void prepare(CGLFontContext& fonts) {
    glViewport(0, 0, kWidth, kHeight);
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, kWidth, 0, kHeight, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4d(1, 1, 1, 1);
    test::giveLetters(fonts);
  }

  static void moveTo(const PlanePoint& start, double em) {
    glLoadIdentity();
    glTranslated(start.x, start.y, 0);
    glScaled(em, em, em);
  }

  Image picture(const std::function<void()>& draw) const {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    return wide_.read();
  }
  Image pixels(std::string_view text) const {
    return picture([&] { EXPECT_TRUE(drawAsPixels(fonts_, text, 0.1)); });
  }
  Image outlines(std::string_view text) const {
    return picture([&] { drawGlyphs(fonts_, text); });
  }

  /// That this is no text for pixels, and that nothing has been drawn of it.
  void expectNone(const char* why) const {
    const Image empty = picture([] {});
    EXPECT_TRUE(picture([&] { EXPECT_FALSE(drawAsPixels(fonts_, "abc", 0.1)) << why; }) == empty)
        << why;
  }

  test::EglContext wide_{kWidth, kHeight};
  CGLFontContext fonts_;
};

/// Of the pixels within the box of a text.
double meanOverBox(const Image& a, const Image& b, const PlanePoint& start, double em,
                   const TextBox& box) {
  double sum = 0;
  int count = 0;
  const int bottom = a.height() - static_cast<int>(std::floor(start.y + em * box.bottom));
  const int right = static_cast<int>(std::ceil(start.x + em * box.right));
  for (int y = a.height() - static_cast<int>(std::ceil(start.y + em * box.top)); y < bottom; ++y) {
    for (int x = static_cast<int>(std::floor(start.x + em * box.left)); x < right; ++x) {
      const test::Rgb p = a.at(x, y);
      const test::Rgb q = b.at(x, y);
      sum += std::abs(p.r - q.r) + std::abs(p.g - q.g) + std::abs(p.b - q.b);
      count += 3;
    }
  }
  return sum / count;
}

std::string anyText(Random& rng) {
  std::string text(8, ' ');
  for (char& character : text) {
    character = static_cast<char>('a' + rng.below(26));
  }
  return text;
}

TEST_F(PixelTextPainterTest, LooksLikeTheOutlines) {
  constexpr double kMostDifference = 2;
  Random rng(7);
  for (const double opacity : {1.0, 0.5}) {
    glColor4d(1, 1, 1, opacity);
    for (double em = 7; em <= 32; em += rng.between(0.5, 2)) {
      double worst = 0;
      for (int i = 0; i < 8; ++i) {
        const std::string text = anyText(rng);
        const PlanePoint start = {rng.between(5, 40), rng.between(12, 25)};
        const TextBox box = measureText(fonts_.metrics(), text, fonts_.metrics().text);
        moveTo(start, em);
        worst = std::max(worst, meanOverBox(pixels(text), outlines(text), start, em, box));
      }
      EXPECT_LE(worst, kMostDifference) << "em of " << em << " at opacity " << opacity;
    }
  }
}

TEST_F(PixelTextPainterTest, HasTheCurrentColour) {
  glClearColor(0.1F, 0.2F, 0.9F, 1);
  glColor4d(1, 0.5, 0, 0.75);
  const PlanePoint start = {20, 20};
  moveTo(start, 24);
  const TextBox box = measureText(fonts_.metrics(), "Text", fonts_.metrics().text);
  EXPECT_LE(meanOverBox(pixels("Text"), outlines("Text"), start, 24, box), 1);
}

TEST_F(PixelTextPainterTest, PartsOutsideAreCutOff) {
  for (const PlanePoint start : {PlanePoint{-60, 20}, {kWidth - 40, 20}, {20, -9}, {20, 55}}) {
    moveTo(start, 24);
    const Image expected = outlines("Letters that are seen in part");
    EXPECT_GT(meanDifference(expected, picture([] {})), 1);
    EXPECT_LE(meanDifference(pixels("Letters that are seen in part"), expected), 0.5);
  }
  const Image nothing = picture([] {});
  for (const PlanePoint start : {PlanePoint{-1e5, 20}, {1e5, 20}, {20, 1e5}, {20, -1e5}}) {
    moveTo(start, 24);
    EXPECT_TRUE(pixels("Unseen") == nothing);
  }
  moveTo({-3000, 20}, 24);
  const std::string wide(400, 'a');
  EXPECT_GT(meanDifference(pixels(wide), nothing), 1);
  EXPECT_LE(meanDifference(pixels(wide), outlines(wide)), 0.5);
}

TEST_F(PixelTextPainterTest, AViewportThatDoesNotBeginAtTheCornerMovesThem) {
  moveTo({20, 20}, 24);
  const Image expected = pixels("Moved");
  glViewport(10, -7, kWidth, kHeight);
  glTranslated(-10 / 24.0, 7 / 24.0, 0);
  EXPECT_TRUE(pixels("Moved") == expected);
}

TEST_F(PixelTextPainterTest, LeavesTheStateAsItWas) {
  moveTo({20, 20}, 24);
  glRasterPos2d(1, 1);
  glPixelTransferf(GL_RED_BIAS, 0.5F);
  glPixelTransferi(GL_MAP_COLOR, GL_TRUE);
  glPixelZoom(2, -3);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
  const GlState before = readGlState();
  EXPECT_TRUE(drawAsPixels(fonts_, "Text", 0.1));
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

/// What pixels are transferred with is none of a text's business.
TEST_F(PixelTextPainterTest, ForeignTransfersDoNotMatter) {
  moveTo({20, 20}, 24);
  const Image expected = pixels("Text");
  glPushAttrib(GL_PIXEL_MODE_BIT);
  const std::array<GLfloat, 2> map = {0.75F, 0.25F};
  for (const GLenum name : GLNames{GL_PIXEL_MAP_R_TO_R, GL_PIXEL_MAP_G_TO_G, GL_PIXEL_MAP_B_TO_B,
                                   GL_PIXEL_MAP_A_TO_A}) {
    glPixelMapfv(name, 2, map.data());
  }
  glPixelTransferi(GL_MAP_COLOR, GL_TRUE);
  for (const GLenum name : GLNames{GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE,
                                   GL_RED_BIAS, GL_ALPHA_BIAS}) {
    glPixelTransferf(name, 0.3F);
  }
  glPixelZoom(2, -1);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 99);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 3);
  glClear(GL_COLOR_BUFFER_BIT);
  EXPECT_TRUE(drawAsPixels(fonts_, "Text", 0.1));
  glPopAttrib();  // which reading pixels back would obey too
  EXPECT_TRUE(wide_.read() == expected);
}

TEST_F(PixelTextPainterTest, OtherStateIsForOutlines) {
  moveTo({20, 20}, 24);
  for (const GLenum capability :
       GLNames{GL_DEPTH_TEST, GL_ALPHA_TEST, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_FOG,
               GL_LIGHTING, GL_TEXTURE_1D, GL_TEXTURE_2D, GL_LINE_STIPPLE, GL_POLYGON_STIPPLE,
               GL_POLYGON_SMOOTH, GL_CLIP_PLANE0, GL_CLIP_PLANE5}) {
    glEnable(capability);
    expectNone(std::to_string(capability).c_str());
    glDisable(capability);
  }
  glDisable(GL_BLEND);
  expectNone("not blended");
  glEnable(GL_BLEND);
  glBlendFunc(GL_ONE, GL_ONE);
  expectNone("added");
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  EXPECT_TRUE(drawAsPixels(fonts_, "abc", 0.1));
}

TEST_F(PixelTextPainterTest, OtherFacesAreForOutlines) {
  moveTo({20, 20}, 24);
  for (const GLenum face : GLNames{GL_FRONT, GL_BACK}) {
    glPolygonMode(face, GL_LINE);
    expectNone("polygons as lines");
    glPolygonMode(face, GL_FILL);
  }
  glEnable(GL_CULL_FACE);
  EXPECT_TRUE(drawAsPixels(fonts_, "abc", 0.1));
  glCullFace(GL_FRONT);
  expectNone("fronts culled");
  glCullFace(GL_BACK);
  glFrontFace(GL_CW);
  expectNone("a mirror");
}

TEST_F(PixelTextPainterTest, WhatDoesNotBecomePixelsIsForOutlines) {
  moveTo({20, 20}, 24);
  for (const GLenum mode : GLNames{GL_FEEDBACK, GL_SELECT}) {
    std::array<GLfloat, 64> feedback{};
    std::array<GLuint, 64> names{};
    glFeedbackBuffer(64, GL_2D, feedback.data());
    glSelectBuffer(64, names.data());
    glRenderMode(mode);
    EXPECT_FALSE(drawAsPixels(fonts_, "abc", 0.1));
    EXPECT_EQ(glRenderMode(GL_RENDER), 0);
  }
  const GLuint list = glGenLists(1);
  for (const GLenum mode : GLNames{GL_COMPILE, GL_COMPILE_AND_EXECUTE}) {
    glNewList(list, mode);
    EXPECT_FALSE(drawAsPixels(fonts_, "abc", 0.1));
    glEndList();
  }
  glDeleteLists(list, 1);
  EXPECT_TRUE(wide_.read() == picture([] {}));
}

TEST_F(PixelTextPainterTest, OtherPlacesAreForOutlines) {
  moveTo({100, 20}, 24);
  glRotated(1, 0, 0, 1);
  expectNone("turned");
  moveTo({100, 20}, 24);
  glRotated(20, 1, 0, 0);
  expectNone("inclined");
  moveTo({100, 20}, 24);
  glScaled(-1, 1, 1);
  expectNone("mirrored");
  moveTo({100, 20}, 24);
  glScaled(1.01, 1, 1);
  expectNone("stretched");
  moveTo({100, 20}, PixelText::kLargestEm + 1);
  expectNone("large");
  moveTo({100, 20}, 0.5);
  expectNone("tiny");
  moveTo({100, 20}, std::nan(""));
  expectNone("nowhere");
}

TEST_F(PixelTextPainterTest, SeveralSamplesAPixelAreForOutlines) {
  for (const int samples : {0, 4}) {
    const test::EglContext sampled(kWidth, kHeight, samples);
    CGLFontContext fonts;
    prepare(fonts);
    moveTo({20, 20}, 24);
    EXPECT_EQ(drawAsPixels(fonts, "abc", 0.1), samples == 0);
    fonts.release();
  }
  wide_.makeCurrent();
}

TEST_F(PixelTextPainterTest, WideLinesAreForOutlines) {
  moveTo({20, 20}, 24);
  EXPECT_TRUE(drawAsPixels(fonts_, "abc", 1));
  EXPECT_FALSE(drawAsPixels(fonts_, "abc", 1.5));
}

}  // namespace
}  // namespace zyn
