#include "objects/text/LabelPainter_gl.h"

#include <array>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include "objects/text/DigitFont.h"
#include "support/BlockFont_gl.h"
#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::boxOf;
using test::differences;
using test::GlState;
using test::Image;
using test::kBlockAdvance;
using test::kBlockLeft;
using test::kBlockRight;
using test::kNone;
using test::PixelBox;
using test::readGlState;
using test::Rgb;

using Limits = std::numeric_limits<double>;

constexpr Rgb kRed{255, 0, 0};

/// A picture of 160 x 128 pixels, the scene's origin in its centre, with labels of blocks as high
/// as the digits' line.
class LabelTest : public testing::Test {
 protected:
  static constexpr int kWidth = 160;
  static constexpr int kHeight = 128;

  void SetUp() override { makeReady(true); }

  void makeReady(bool outlines) {
    test::giveBlocks(fonts_, outlines);
    glViewport(0, 0, kWidth, kHeight);
    look(kHeight);
    label_.text = "M";
    label_.numericSize = true;
    label_.height = 20;
    label_.r = 1;
  }
  void TearDown() override { fonts_.release(); }

  /// Shows this height of the scene.
  void look(double height) {
    view_.height = height;
    const double width = height * kWidth / kHeight;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-width / 2, width / 2, -height / 2, height / 2, -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
  }

  void clear() const { glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); }

  Image draw3D(int mode = 0) {
    clear();
    drawLabel3D(label_, fonts_, view_, mode);
    return context_.read();
  }
  Image draw2D(int mode = 0) {
    clear();
    drawLabel2D(label_, fonts_, view_, mode);
    return context_.read();
  }

  /// Red from these pixels on, counted from the centre, y upwards.
  static void expectRed(const Image& picture, int left, int bottom, int width, int height) {
    const PixelBox box = boxOf(picture, kRed);
    EXPECT_EQ(box.left - kWidth / 2, left);
    EXPECT_EQ(kHeight / 2 - 1 - box.bottom, bottom);
    EXPECT_EQ(box.right - box.left + 1, width);
    EXPECT_EQ(box.bottom - box.top + 1, height);
  }

  /// Laid out beforehand: two glyphs half an em wide and high, upright triangles that fill half of
  /// that, an em apart.
  static std::shared_ptr<const ShapedText> twoTriangles() {
    const Contour corners = {{0, 0}, {0.5, 0}, {0.5, 0.5}};
    const auto shape = std::make_shared<const GlyphShape>(GlyphShape{{corners}, corners});
    return std::make_shared<const ShapedText>(ShapedText{.glyphs = {{shape, {}}, {shape, {1, 0}}},
                                                         .left = 0,
                                                         .right = 1.5,
                                                         .text = {-0.25, 1},
                                                         .digits = {0, 0.5}});
  }

  static bool isBlank(const Image& picture) { return picture.count({0, 0, 0}) == kWidth * kHeight; }

  test::EglContext context_{kWidth, kHeight};
  CGLFontContext fonts_;
  TextLabel label_;
  LabelView view_;
};

/// Without outlines, whose smooth edges reach half a pixel further.
class PlainLabelTest : public LabelTest {
 protected:
  void SetUp() override { makeReady(false); }
};

TEST_F(PlainLabelTest, IsAsHighAsItSaysAtEveryZoom) {
  label_.reference = 1;
  for (const double height : {0.5, 128.0, 7e6}) {
    look(height);
    expectRed(draw3D(), 0, 0, 15, 20);
    expectRed(draw2D(), 0, 0, 15, 20);
  }
  label_.height = 40;
  label_.text = "MM";
  expectRed(draw3D(), 0, 0, 70, 40);
}

TEST_F(PlainLabelTest, LinesOfText) {
  label_.reference = 1;
  label_.numericSize = false;
  label_.height = 61;  // the letters' height, a fifth and a fiftieth of it: 50 pixels + 10 + 1
  expectRed(draw3D(), 0, 1, 37, 50);
}

TEST_F(PlainLabelTest, EveryAnchor) {
  const struct {
    std::int32_t reference;
    int left;
    int bottom;
  } cases[] = {{1, 0, 0},     {2, -70, 0}, {3, -70, -40}, {4, 0, -40}, {5, -35, 0},  {6, -70, -20},
               {7, -35, -40}, {8, 0, -20}, {9, -35, -20}, {0, 5, -10}, {-3, 5, -10}, {10, 5, -10}};
  // 40 pixels an em: two blocks from 5 to 75, from -10 to 30.
  label_.text = "MM";
  label_.height = 40;
  for (const auto& [reference, left, bottom] : cases) {
    SCOPED_TRACE(reference);
    label_.reference = reference;
    expectRed(draw3D(), left, bottom, 70, 40);
    expectRed(draw2D(), left, bottom, 70, 40);
  }
}

TEST_F(PlainLabelTest, IsWhereItsPositionIs) {
  label_.reference = 1;
  label_.position = {10, -30, 5};
  expectRed(draw3D(), 10, -30, 15, 20);
  expectRed(draw2D(), 10, -30, 15, 20);
  label_.position.z = 1e6;
  EXPECT_TRUE(isBlank(draw3D())) << "behind the eye";
  expectRed(draw2D(), 10, -30, 15, 20);
}

TEST_F(PlainLabelTest, DrawsWhatIsLaidOutInPlaceOfItsText) {
  label_.shaped = twoTriangles();
  label_.reference = 1;
  for (const Image& picture : {draw3D(), draw2D()}) {
    expectRed(picture, 0, 0, 60, 20);  // 40 pixels an em
    EXPECT_NEAR(picture.count(kRed), 2 * 200, 20);
  }
  label_.numericSize = false;  // 16 pixels an em, of which a quarter is below
  expectRed(draw3D(), 0, 4, 24, 8);
  label_.isNumeric = true;
  label_.height = 10;
  label_.numericSize = true;
  expectRed(draw2D(), 0, 0, 30, 10);
}

TEST_F(PlainLabelTest, ItsBackgroundIsBehindItAndAFifthWider) {
  label_.text = "M";
  label_.background = {.isFilled = true, .r = 0, .g = 0, .b = 1};
  label_.reference = 9;
  const int left = kWidth / 2 - 8 - 4;
  const int top = kHeight / 2 - 10 - 2;
  for (const Image& picture : {draw3D(), draw2D()}) {
    const PixelBox box = boxOf(picture, {0, 0, 255});
    EXPECT_NEAR(box.left, left, 1);
    EXPECT_NEAR(box.right - box.left + 1, 15 + 8, 1);
    EXPECT_EQ(box.top, top);
    EXPECT_EQ(box.bottom - box.top + 1, 24);
    EXPECT_NEAR(picture.count(kRed), 15 * 20, 20);
  }
}

TEST_F(PlainLabelTest, ItsFrameIsAPixelWideInItsColour) {
  label_.background = {.isFramed = true};
  label_.reference = 9;
  for (const double scale : {1.0, 3.0}) {
    view_.pixelScale = scale;
    const double frame = 2 * scale * (23 * scale + 24 * scale);
    EXPECT_NEAR(draw3D().count(kRed), 15 * 20 * scale * scale + frame, 0.05 * frame + 20 * scale);
  }
}

TEST_F(PlainLabelTest, ShowsItsValue) {
  label_.reference = 1;
  label_.isNumeric = true;
  label_.value = -1.5;
  expectRed(draw3D(), 0, 0, 3 * 20 + 15, 20);
}

TEST_F(PlainLabelTest, GrowsInFinePictures) {
  label_.reference = 1;
  view_.pixelScale = 3;
  expectRed(draw3D(), 0, 0, 45, 60);
  expectRed(draw2D(), 0, 0, 45, 60);
}

TEST_F(PlainLabelTest, FacesTheViewer) {
  label_.position = {10, 0, 0};
  const Image upright = draw3D();
  for (const double angle : {30.0, 90.0, 180.0, 271.5}) {
    for (const auto& [x, y, z] : {std::array{0.0, 0.0, 1.0}, {0.0, 1.0, 0.0}, {1.0, 2.0, -0.5}}) {
      glLoadIdentity();
      glTranslated(10, 0, 0);
      glRotated(angle, x, y, z);
      glTranslated(-10, 0, 0);
      EXPECT_TRUE(draw3D() == upright) << angle << " about " << x << ", " << y << ", " << z;
    }
  }
}

TEST_F(PlainLabelTest, LiesInTheSceneOtherwise) {
  label_.alwaysReadable = false;
  label_.reference = 1;
  label_.height = 40;
  glRotated(60, 0, 1, 0);
  expectRed(draw3D(), 0, 0, 15, 40);
  glLoadIdentity();
  glRotated(90, 0, 0, 1);
  expectRed(draw3D(), -40, 0, 40, 30);
}

TEST_F(PlainLabelTest, IsHiddenByWhatIsInFrontUnlessItIsAlwaysReadable) {
  const auto drawBehind = [&] {
    clear();
    glEnable(GL_DEPTH_TEST);
    glColor3f(0, 0, 1);
    glBegin(GL_QUADS);
    for (const auto& [x, y] : {std::array{-80, -64}, {80, -64}, {80, 64}, {-80, 64}}) {
      glVertex3i(x, y, 10);
    }
    glEnd();
    drawLabel3D(label_, fonts_, view_, 0);
    return context_.read().count(kRed);
  };
  EXPECT_GT(drawBehind(), 0);
  label_.alwaysReadable = false;
  EXPECT_EQ(drawBehind(), 0);
}

TEST_F(LabelTest, OutlinesSmoothTheEdges) {
  label_.reference = 1;
  label_.position = {0.3, 0.4, 0};
  const Image smooth = draw3D();
  int blended = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const int red = smooth.at(x, y).r;
      blended += red > 0 && red < 255 ? 1 : 0;
    }
  }
  EXPECT_GT(blended, 20);
}

TEST_F(PlainLabelTest, HasItsColourAndOpacityWhateverTheLight) {
  label_.r = 0;
  label_.g = 1;
  label_.alpha = 0.5;
  glEnable(GL_LIGHTING);
  for (const Image& picture : {draw3D(), draw2D()}) {
    EXPECT_LE(test::difference(picture.at(kWidth / 2 + 8, kHeight / 2), {0, 128, 0}), 1);
  }
}

TEST_F(PlainLabelTest, ALongText) {
  label_.text.assign(1'000, 'M');
  label_.reference = 2;
  const PixelBox box = boxOf(draw3D(), kRed);
  EXPECT_EQ(box.left, 5);
  EXPECT_EQ(box.right, kWidth / 2 - 1);
  label_.text.assign(100'000, 'M');
  EXPECT_FALSE(isBlank(draw3D()));
}

TEST_F(LabelTest, OddValuesDrawNothingAndDoNoHarm) {
  for (const double odd :
       {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 1e300, 1e30}) {
    for (double Point::*axis : {&Point::x, &Point::y}) {
      label_.position = {};
      label_.position.*axis = odd;
      EXPECT_TRUE(isBlank(draw3D())) << odd;
      EXPECT_TRUE(isBlank(draw2D())) << odd;
    }
  }
  label_.position = {};
  for (const double odd : {Limits::quiet_NaN(), Limits::infinity(), 1e300, 0.0}) {
    LabelView view = view_;
    view.height = odd;
    clear();
    drawLabel3D(label_, fonts_, view, -1);
    drawLabel2D(label_, fonts_, view, -1);
    drawLabel3D(label_, fonts_, view, 0);
    EXPECT_TRUE(isBlank(context_.read())) << odd;
  }
  for (const std::int32_t height : {0, -20, std::numeric_limits<std::int32_t>::min()}) {
    label_.height = height;
    EXPECT_TRUE(isBlank(draw3D()));
    EXPECT_TRUE(isBlank(draw2D()));
  }
  label_.height = std::numeric_limits<std::int32_t>::max();
  draw3D();
  label_.height = 20;
  label_.text.clear();
  EXPECT_TRUE(isBlank(draw3D()));
  fonts_.release();
  label_.text = "M";
  EXPECT_TRUE(isBlank(draw3D())) << "without lists";
}

// --- the scales of a 2D view --------------------------------------------------------------------

TEST_F(PlainLabelTest, ScalesOf2DViewsMoveItButDoNotStretchIt) {
  label_.reference = 1;
  label_.position = {2, 60, 0};
  for (const bool readable : {true, false}) {
    label_.alwaysReadable = readable;
    glLoadIdentity();
    glTranslated(-4, 1, 0);
    glScaled(8, 0.25, 1);
    expectRed(draw2D(), 16 - 4, 15 + 1, 15, 20);
    EXPECT_EQ(label_.position.x, 2);
    EXPECT_EQ(label_.position.y, 60);
  }
}

TEST_F(PlainLabelTest, IsExactlyInItsPlaceFarFromTheOrigin) {
  label_.reference = 1;
  for (const bool readable : {true, false}) {
    label_.alwaysReadable = readable;
    label_.position = {1e9 + 7, -5e8 - 4, 0};
    glLoadIdentity();
    glTranslated(-1e9, 5e8, 0);
    expectRed(draw3D(), 7, -4, 15, 20);
    expectRed(draw2D(), 7, -4, 15, 20);
    glLoadIdentity();
    glTranslated(-4e9, 2.5e8, 0);
    glScaled(4, 0.5, 1);
    expectRed(draw2D(), 4 * 7, -2, 15, 20);
  }
}

TEST_F(PlainLabelTest, TurnsWithA2DViewUnlessItIsAlwaysReadable) {
  label_.reference = 1;
  glRotated(90, 0, 0, 1);
  glScaled(3, 5, 1);
  expectRed(draw2D(), 0, 0, 15, 20);
  label_.alwaysReadable = false;
  expectRed(draw2D(), -20, 0, 20, 15);
}

TEST_F(PlainLabelTest, ScalesWithoutSense) {
  for (const double odd : {0.0, Limits::quiet_NaN(), Limits::infinity(), 1e300, -1.0}) {
    glLoadIdentity();
    glScaled(odd, 1, 1);
    label_.dimension = {.type = 3, .first = {0, 0}, .second = {10, 10}, .offset = 5};
    draw2D();
    EXPECT_TRUE(std::isfinite(label_.position.x) && std::isfinite(label_.position.y)) << odd;
  }
}

// --- numbers in digit fonts ---------------------------------------------------------------------

class DigitLabelTest : public PlainLabelTest {
 protected:
  void SetUp() override {
    PlainLabelTest::SetUp();
    label_.isNumeric = true;
    label_.value = 80;  // touches all sides of its box
    // Inside of a pixel, so that rounding does not move it.
    label_.position = {0.25, 0.25, 0};
  }
};

TEST_F(DigitLabelTest, SmallNumbersAreBitmaps) {
  for (int size = 1; size <= kDigitSizes; ++size) {
    label_.height = digitHeight(size);
    expectRed(draw2D(), 0, 0, digitTextWidth("80", size), digitHeight(size));
  }
  label_.height = 3;
  EXPECT_LE(boxOf(draw2D(), kRed).right - kWidth / 2, 6) << "blocks";
  label_.height = 12;
  expectRed(draw2D(), 2, -3, 9 + 12, 12);  // blocks
}

TEST_F(DigitLabelTest, EveryAnchor) {
  const int width = digitTextWidth("80", 5);
  const int height = digitHeight(5);
  ASSERT_EQ(width, 11);
  ASSERT_EQ(height, 8);
  // The line above the digits belongs to the box.
  const struct {
    std::int32_t reference;
    int left;
    int bottom;
  } cases[] = {{0, 0, 0},  {1, 0, 0},    {2, -11, 0}, {3, -11, -9}, {4, 0, -9},
               {5, -6, 0}, {6, -11, -5}, {7, -6, -9}, {8, 0, -5},   {9, -6, -5}};
  label_.height = height;
  for (const auto& [reference, left, bottom] : cases) {
    SCOPED_TRACE(reference);
    label_.reference = reference;
    expectRed(draw2D(), left, bottom, width, height);
  }
}

TEST_F(DigitLabelTest, AreDrawnWhereTheyReachIntoTheView) {
  label_.height = 11;
  label_.reference = 2;
  label_.position = {-80 + 5.25, -64 + 0.25, 0};
  expectRed(draw2D(), -80, -64, 5, 11);
  label_.reference = 1;
  label_.position = {80 - 5.75, 64 - 3.75, 0};
  expectRed(draw2D(), 74, 60, 6, 4);
  label_.position.x = 500;
  EXPECT_TRUE(isBlank(draw2D()));
}

TEST_F(DigitLabelTest, ScalesMoveThem) {
  label_.height = 8;
  label_.position = {10, 20, 0};
  glTranslated(0.25, 0.25, 0);
  glScaled(3, -0.5, 1);
  expectRed(draw2D(), 30, -10, 11, 8);
}

TEST_F(DigitLabelTest, InFinePicturesTheirSizeGrows) {
  label_.height = 5;
  view_.pixelScale = 2;
  expectRed(draw2D(), 0, 0, digitTextWidth("80", 7), 10);
  view_.pixelScale = 4;
  expectRed(draw2D(), 3, -5, 15 + 20, 20);  // blocks
}

TEST_F(DigitLabelTest, FarFromTheOrigin) {
  label_.height = 8;
  label_.position = {1e9 + 7.25, 0.25, 0};
  glTranslated(-1e9, 0, 0);
  expectRed(draw2D(), 7, 0, 11, 8);
}

TEST_F(DigitLabelTest, OnlyIn2DAndOnlyNumbers) {
  label_.height = 8;
  const Image blocks = draw3D();
  EXPECT_NE(draw2D(), blocks);
  label_.isNumeric = false;
  label_.text = "80";
  EXPECT_EQ(draw2D(), blocks);
  label_.isNumeric = true;
  label_.value = Limits::infinity();
  const Image infinite = draw2D();
  label_.isNumeric = false;
  label_.text = "inf";
  EXPECT_EQ(draw2D(), infinite);
}

TEST_F(DigitLabelTest, SignsAndExponents) {
  label_.height = 6;
  label_.value = -1.5e-20;
  const PixelBox box = boxOf(draw2D(), kRed);
  EXPECT_EQ(box.left, kWidth / 2);
  EXPECT_EQ(box.right, kWidth / 2 + digitTextWidth("-1.5e-20", 3) - 1);
}

// --- dimensions ---------------------------------------------------------------------------------

class DimensionLabelTest : public PlainLabelTest {
 protected:
  void SetUp() override {
    PlainLabelTest::SetUp();
    label_.dimension = {.type = 2,
                        .first = {-40.5, -30.5},
                        .second = {39.5, -10.5},
                        .offset = 20,
                        .textDistance = 12,
                        .overshoot = 6,
                        .arrowLength = 10};
  }

  /// Counted from the centre, y upwards.
  static bool isRed(const Image& picture, int x, int y) {
    return picture.at(kWidth / 2 + x, kHeight / 2 - 1 - y) == kRed;
  }
};

TEST_F(DimensionLabelTest, LinesArrowsAndText) {
  const Image picture = draw2D();
  // The dimension line at y = 9.5, in its own row of pixels, as wide as one pixel.
  for (int x = -40; x < 39; ++x) {
    EXPECT_TRUE(isRed(picture, x, 9)) << x;
  }
  EXPECT_FALSE(isRed(picture, 0, 10));
  EXPECT_FALSE(isRed(picture, 0, 8));
  // Extension lines past it.
  EXPECT_TRUE(isRed(picture, -41, -29));
  EXPECT_TRUE(isRed(picture, -41, 14));
  EXPECT_FALSE(isRed(picture, -41, 17));
  EXPECT_TRUE(isRed(picture, 39, -9));
  EXPECT_FALSE(isRed(picture, 39, -13));
  // Arrows inside.
  EXPECT_TRUE(isRed(picture, -33, 10));
  EXPECT_TRUE(isRed(picture, -33, 8));
  EXPECT_FALSE(isRed(picture, -28, 10));
  EXPECT_TRUE(isRed(picture, 31, 10));
  // The text stands on a point 12 pixels above the line.
  EXPECT_DOUBLE_EQ(label_.position.x, -0.5);
  EXPECT_DOUBLE_EQ(label_.position.y, 21.5);
  EXPECT_EQ(label_.reference, 5);
  EXPECT_TRUE(isRed(picture, 0, 30));
}

TEST_F(DimensionLabelTest, TellsWhetherItMovedTheLabel) {
  EXPECT_TRUE(drawLabel2D(label_, fonts_, view_, 0));
  EXPECT_FALSE(drawLabel2D(label_, fonts_, view_, 0));
  label_.dimension.offset = -3;
  EXPECT_TRUE(drawLabel2D(label_, fonts_, view_, -1));
  EXPECT_EQ(label_.reference, 7);
  label_.dimension.type = 0;
  EXPECT_FALSE(drawLabel2D(label_, fonts_, view_, 0));
}

TEST_F(DimensionLabelTest, WhatCannotBeLaidOutIsAPlainLabel) {
  label_.dimension.type = 3;
  label_.dimension.second = label_.dimension.first;
  label_.reference = 1;
  label_.position = {3, 4, 0};
  expectRed(draw2D(), 3, 4, 15, 20);
  EXPECT_EQ(label_.position.x, 3);
  EXPECT_EQ(label_.reference, 1);
  label_.dimension.type = 1;
  label_.dimension.first.x = Limits::quiet_NaN();
  expectRed(draw2D(), 3, 4, 15, 20);
  EXPECT_EQ(label_.position.y, 4);
}

TEST_F(DimensionLabelTest, IsAPlainLabelIn3D) {
  label_.reference = 1;
  expectRed(draw3D(), 0, 0, 15, 20);
  EXPECT_EQ(label_.reference, 1);
}

TEST_F(DimensionLabelTest, HugeValuesDoNoHarm) {
  for (const std::int32_t type : {1, 2, 3}) {
    for (const double size : {1e20, 1e38, 1e300}) {
      label_.dimension.type = type;
      label_.dimension.first = {-size, 0};
      label_.dimension.second = {size, size};
      label_.dimension.offset = size;
      draw2D();
      draw2D(-1);
    }
  }
}

TEST_F(DimensionLabelTest, InAStretchedView) {
  const Image plain = draw2D();
  const Point position = label_.position;
  glScaled(4, 0.5, 1);
  label_.dimension.first = {-40.5 / 4, -30.5 / 0.5};
  label_.dimension.second = {39.5 / 4, -10.5 / 0.5};
  label_.dimension.offset = 20 / 0.5;
  EXPECT_EQ(draw2D(), plain);
  EXPECT_DOUBLE_EQ(label_.position.x, position.x / 4);
  EXPECT_DOUBLE_EQ(label_.position.y, position.y / 0.5);
}

TEST_F(DimensionLabelTest, FarFromTheOrigin) {
  const Image plain = draw2D();
  glTranslated(-1e9, 0, 0);
  label_.dimension.first.x += 1e9;
  label_.dimension.second.x += 1e9;
  EXPECT_EQ(draw2D(), plain);
}

TEST_F(DimensionLabelTest, InFinePicturesItsPixelsGrow) {
  label_.height = 5;
  view_.pixelScale = 2;
  draw2D();
  EXPECT_DOUBLE_EQ(label_.position.y, 9.5 + 2 * 12);
}

// --- picking ------------------------------------------------------------------------------------

class LabelPickTest : public LabelTest {
 protected:
  using Names = std::vector<GLuint>;
  enum class Space { k2D, k3D };

  /// Names of the hit at a pixel, counted from the centre.
  Names pick(Space space, double x, double y) {
    std::array<GLuint, 64> buffer{};
    glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
    glRenderMode(GL_SELECT);
    glInitNames();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    std::array<GLdouble, 16> projection{};
    glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
    glLoadIdentity();
    std::array<GLint, 4> viewport{0, 0, kWidth, kHeight};
    gluPickMatrix(kWidth / 2 + x, kHeight / 2 + y, 1, 1, viewport.data());
    glMultMatrixd(projection.data());
    glMatrixMode(GL_MODELVIEW);
    if (space == Space::k3D) {
      drawLabel3D(label_, fonts_, view_, -1);
    } else {
      drawLabel2D(label_, fonts_, view_, -1);
    }
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    const GLint hits = glRenderMode(GL_RENDER);
    EXPECT_LE(hits, 1);
    return hits == 1 ? Names(buffer.begin() + 3, buffer.begin() + 3 + buffer[0]) : Names();
  }

  bool isHit(Space space, double x, double y) { return !pick(space, x, y).empty(); }

  /// Hits are exactly within these pixels, counted from the centre.
  void expectHits(double left, double bottom, double right, double top) {
    for (const Space space : {Space::k2D, Space::k3D}) {
      expectHits(space, left, bottom, right, top);
    }
  }
  void expectHits(Space space, double left, double bottom, double right, double top) {
    const double x = (left + right) / 2;
    const double y = (bottom + top) / 2;
    // The picked square reaches half a pixel around.
    constexpr double kIn = 0.45;
    constexpr double kOut = 0.55;
    for (const auto& [inX, inY, outX, outY] : {std::array{left - kIn, y, left - kOut, y},
                                               {right + kIn, y, right + kOut, y},
                                               {x, bottom - kIn, x, bottom - kOut},
                                               {x, top + kIn, x, top + kOut}}) {
      EXPECT_TRUE(isHit(space, inX, inY)) << inX << ", " << inY;
      EXPECT_FALSE(isHit(space, outX, outY)) << outX << ", " << outY;
    }
  }

  void SetUp() override {
    makeReady(true);
    label_.nomSelection = 7;
    label_.text = "MM";
  }
};

TEST_F(LabelPickTest, HitsAreExactlyWithinTheBox) {
  label_.reference = 1;
  for (const double height : {0.5, 128.0, 5e6}) {
    look(height);
    expectHits(0, 0, 35, 20);
  }
  look(128);
  label_.reference = 0;
  label_.numericSize = false;
  label_.height = 61;
  // An em of 50 pixels, one of them below the letters and ten above.
  expectHits(50 * kBlockLeft, -12.5 - 1, 50 * (kBlockAdvance + kBlockRight), 37.5 + 10);
}

TEST_F(LabelPickTest, HitsFollowTheViewersSide) {
  label_.reference = 1;
  glRotated(120, 1, 1, 0);
  expectHits(Space::k3D, 0, 0, 35, 20);
}

TEST_F(LabelPickTest, TheNames) {
  label_.nomSelection = 5;
  label_.typeSelection = 9;
  EXPECT_EQ(pick(Space::k3D, 8, 0), (Names{5}));
  label_.pushTypeSelection = true;
  EXPECT_EQ(pick(Space::k3D, 8, 0), (Names{9, 5}));
  EXPECT_EQ(pick(Space::k2D, 8, 0), (Names{9, 5}));
  label_.nomSelection = -1;
  EXPECT_EQ(pick(Space::k3D, 8, 0), (Names{}));
}

TEST_F(LabelPickTest, ADigitNumberIsHitWithinItsBox) {
  label_.isNumeric = true;
  label_.value = 80;
  label_.height = 8;
  label_.reference = 5;
  expectHits(Space::k2D, -5.5, 0, 5.5, 9);
  view_.pixelScale = 1.25;  // the font of 10 pixels
  expectHits(Space::k2D, -6.5, 0, 6.5, 11);
}

TEST_F(LabelPickTest, ABackgroundIsHitToo) {
  label_.background.isFramed = true;
  label_.reference = 1;
  expectHits(-4, -2, 35 + 4, 22);
  label_.background = {.isFilled = true};
  expectHits(-4, -2, 35 + 4, 22);
}

TEST_F(LabelPickTest, ADimensionIsHitAtItsText) {
  label_.dimension = {.type = 2, .first = {-40, -30}, .second = {40, -30}, .offset = 20};
  // The dimension line at -10, the text 15 above it.
  expectHits(Space::k2D, -17.5, 5, 17.5, 25);
  EXPECT_FALSE(isHit(Space::k2D, -30, -10));
  EXPECT_FALSE(isHit(Space::k2D, -40, -20));
}

TEST_F(LabelPickTest, InAStretchedView) {
  label_.reference = 1;
  label_.position = {2, 3, 0};
  glScaled(4, 0.5, 1);
  expectHits(Space::k2D, 8, 1.5, 8 + 35, 1.5 + 20);
}

// --- state --------------------------------------------------------------------------------------

/// lighting, depth test, other state, always readable
using Surroundings = std::tuple<bool, bool, bool, bool>;

class LabelStateTest : public LabelTest, public testing::WithParamInterface<Surroundings> {
 protected:
  void SetUp() override {
    const auto [lighting, depthTest, other, readable] = GetParam();
    makeReady(true);
    label_.alwaysReadable = readable;
    setEnabled(GL_LIGHTING, lighting);
    setEnabled(GL_DEPTH_TEST, depthTest);
    setEnabled(GL_BLEND, other);
    setEnabled(GL_CULL_FACE, other);
    setEnabled(GL_LINE_SMOOTH, other);
    setEnabled(GL_COLOR_MATERIAL, other);
    glHint(GL_LINE_SMOOTH_HINT, other ? GL_NICEST : GL_FASTEST);
    glFrontFace(other ? GL_CW : GL_CCW);
    glLineWidth(3);
    glListBase(17);
    glBlendFunc(GL_DST_COLOR, GL_ONE);
    glNormal3f(0.25F, 0.5F, 0.75F);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 20);
    readGlState();  // Mesa applies materials set so far only now
    glColor4f(0.125F, 0.25F, 0.375F, 0.5F);
    glRasterPos2i(3, 3);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
    glRotated(20, 1, 0, 0);
    glScaled(2, 3, 1);
    glMatrixMode(other ? GL_PROJECTION : GL_MODELVIEW);
  }

  /// Every way to draw a label.
  std::vector<TextLabel> labels() const {
    std::vector<TextLabel> all(10, label_);  // the first is a plain one
    all[1].position.x = Limits::quiet_NaN();
    all[2].height = 0;
    all[3].alpha = 0.5;
    all[4].isNumeric = true;
    all[4].height = 7;
    all[5].dimension = {.type = 1, .first = {-10, 0}, .second = {10, 3}, .offset = 5};
    all[6].dimension = {.type = 3, .first = {-10, 0}, .second = {10, 3}, .offset = 5};
    all[7].background = {.isFilled = true, .isFramed = true};
    all[8].shaped = twoTriangles();
    all[8].background = {.isFilled = true};
    all[9] = all[4];
    all[9].background = {.isFilled = true, .isFramed = true};
    return all;
  }
};

TEST_P(LabelStateTest, In3DTheDepthTestIsOnAfterwardsAndAllElseAsBefore) {
  for (const TextLabel& label : labels()) {
    for (const int mode : {0, 1, -1}) {
      setEnabled(GL_DEPTH_TEST, std::get<1>(GetParam()));
      GlState before = readGlState();
      drawLabel3D(label, fonts_, view_, mode);
      before.at("GL_DEPTH_TEST") = {1};
      EXPECT_EQ(differences(before, readGlState()), kNone) << "mode " << mode;
    }
  }
}

TEST_P(LabelStateTest, In2DTheDepthTestIsOnAfterwardsAndAllElseAsBefore) {
  for (TextLabel& label : labels()) {
    for (const int mode : {0, 1, -1}) {
      setEnabled(GL_DEPTH_TEST, std::get<1>(GetParam()));
      GlState before = readGlState();
      drawLabel2D(label, fonts_, view_, mode);
      before.at("GL_DEPTH_TEST") = {1};
      EXPECT_EQ(differences(before, readGlState()), kNone) << "mode " << mode;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, LabelStateTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Bool()));

}  // namespace
}  // namespace zyn
