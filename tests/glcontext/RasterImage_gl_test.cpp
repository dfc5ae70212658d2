#include "glcontext/RasterImage_gl.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;
using test::Rgb;

constexpr Rgb kBackground{255, 255, 255};

/// No two pixels alike, so that a wrong place or order shows.
PixelImage makeImage(int width, int height) {
  PixelImage image{width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (const int component : {2 * x, 2 * y, 100 + x - y, 255}) {
        image.pixels.push_back(static_cast<std::uint8_t>(component));
      }
    }
  }
  return image;
}

Rgb pixelOf(const PixelImage& image, int x, int y) {
  const std::size_t at = static_cast<std::size_t>(y * image.width + x) * 4;
  return {image.pixels[at], image.pixels[at + 1], image.pixels[at + 2]};
}

class RasterImageTest : public test::GlTest {
 protected:
  void SetUp() override {
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    lookAt(0, 0, kSide, kSide);
  }

  /// One unit a pixel.
  static void lookAt(double left, double bottom, double width, double height) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(left, left + width, bottom, bottom + height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
  }

  /// What must be seen of a picture whose lower left pixel is (left, bottom) of the window.
  static Image expected(const PixelImage& image, int left, int bottom, int scale = 1) {
    Image seen(kSide, kSide);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const bool covered = x >= left && x < left + scale * image.width && y >= bottom &&
                             y < bottom + scale * image.height;
        seen.at(x, kSide - 1 - y) =
            covered ? pixelOf(image, (x - left) / scale, (y - bottom) / scale) : kBackground;
      }
    }
    return seen;
  }

  bool isUntouched() const { return context.read().count(kBackground) == kSide * kSide; }
};

/// Where the lower left pixel goes, and the size of the picture.
using Place = std::array<int, 4>;

class RasterPlaceTest : public RasterImageTest, public testing::WithParamInterface<Place> {};

INSTANTIATE_TEST_SUITE_P(
    Everywhere, RasterPlaceTest,
    testing::Values(Place{20, 30, 8, 5}, Place{0, 0, 8, 5}, Place{-3, 20, 8, 5},
                    Place{60, 20, 8, 5}, Place{20, -2, 8, 5}, Place{20, 61, 8, 5},
                    Place{-7, -4, 8, 5}, Place{63, -4, 8, 5}, Place{-7, 63, 8, 5},
                    Place{63, 63, 8, 5}, Place{-8, 20, 8, 5}, Place{64, 20, 8, 5},
                    Place{20, -5, 8, 5}, Place{20, 64, 8, 5}, Place{-20, -30, 100, 110},
                    Place{-40, 10, 120, 20}, Place{10, -40, 20, 120}, Place{-100, 3, 120, 9},
                    Place{-1000, -1000, 8, 5}, Place{60000, 0, 8, 5}, Place{0, -60000, 8, 5}));

TEST_P(RasterPlaceTest, WhatReachesIntoTheViewIsSeen) {
  const auto [left, bottom, width, height] = GetParam();
  const PixelImage image = makeImage(width, height);
  if (moveRasterTo(left + 0.25, bottom + 0.25, 0)) {
    drawImage(image);
  }
  EXPECT_EQ(context.read(), expected(image, left, bottom));
}

TEST_P(RasterPlaceTest, TheOffsetIsInPixelsWhateverTheZoom) {
  const auto [left, bottom, width, height] = GetParam();
  const PixelImage image = makeImage(width, height);
  for (const double zoom : {0.01, 1.0, 37.0}) {
    lookAt(0, 0, kSide * zoom, kSide * zoom);
    glClear(GL_COLOR_BUFFER_BIT);
    if (moveRasterTo(0.25 * zoom, 0.25 * zoom, 0, left, bottom)) {
      drawImage(image);
    }
    EXPECT_EQ(context.read(), expected(image, left, bottom)) << zoom;
  }
}

TEST_P(RasterPlaceTest, AnyRotationOfTheViewWillDo) {
  const auto [left, bottom, width, height] = GetParam();
  const PixelImage image = makeImage(width, height);
  for (const double degrees : {30.0, 117.0, 200.0, 301.0}) {
    const double angle = degrees * std::acos(-1.0) / 180;
    const double x = left + 0.375;
    const double y = bottom + 0.375;
    glLoadIdentity();
    glRotated(degrees, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    if (moveRasterTo(x * std::cos(angle) + y * std::sin(angle),
                     y * std::cos(angle) - x * std::sin(angle), 0)) {
      drawImage(image);
    }
    EXPECT_EQ(context.read(), expected(image, left, bottom)) << degrees;
  }
}

TEST_P(RasterPlaceTest, TilesShowTheirPartsOfOnePicture) {
  const auto [left, bottom, width, height] = GetParam();
  const PixelImage image = makeImage(width, height);
  constexpr int kTile = 16;
  for (int x = 0; x < kSide; x += kTile) {
    for (int y = 0; y < kSide; y += kTile) {
      glViewport(x, y, kTile, kTile);
      glEnable(GL_SCISSOR_TEST);
      glScissor(x, y, kTile, kTile);
      lookAt(x, y, kTile, kTile);
      if (moveRasterTo(left + 0.25, bottom + 0.25, 0)) {
        drawImage(image);
      }
    }
  }
  EXPECT_EQ(context.read(), expected(image, left, bottom));
}

TEST_P(RasterPlaceTest, OnlyTheRasterPositionChanges) {
  const auto [left, bottom, width, height] = GetParam();
  glMatrixMode(GL_TEXTURE);
  const GlState before = readGlState();
  glPushAttrib(GL_CURRENT_BIT);
  moveRasterTo(left, bottom, 0, 0.5, 0.5);
  glPopAttrib();
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(RasterImageTest, WorksWhereTheStacksAreFull) {
  glMatrixMode(GL_PROJECTION);
  const GLint most = integerState(GL_MAX_PROJECTION_STACK_DEPTH);
  while (integerState(GL_PROJECTION_STACK_DEPTH) < most) {
    glPushMatrix();
  }
  const PixelImage image = makeImage(8, 5);
  ASSERT_TRUE(moveRasterTo(-2.75, 20.25, 0));
  drawImage(image);
  EXPECT_EQ(context.read(), expected(image, -3, 20));
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(RasterImageTest, NothingIsDrawnOutsideTheVisibleDepth) {
  for (const double x : {-3.0, 20.0, 70.0}) {
    EXPECT_TRUE(moveRasterTo(x, 5, 0.99)) << x;
    EXPECT_TRUE(moveRasterTo(x, 5, -0.99)) << x;
    EXPECT_FALSE(moveRasterTo(x, 5, 1.01)) << x;
    EXPECT_FALSE(moveRasterTo(x, 5, -1.01)) << x;
  }
}

TEST_F(RasterImageTest, TheDepthIsThatOfThePoint) {
  for (const double x : {-3.0, 20.0, 70.0}) {
    ASSERT_TRUE(moveRasterTo(x, 5, 0.5));
    GLfloat raster[4] = {};
    glGetFloatv(GL_CURRENT_RASTER_POSITION, raster);
    EXPECT_FLOAT_EQ(raster[2], 0.25F) << x;
  }
}

TEST_F(RasterImageTest, ClipPlanesCutThePointWhereverItIs) {
  const GLdouble lowerHalf[4] = {0, -1, 0, 32};
  glClipPlane(GL_CLIP_PLANE0, lowerHalf);
  glEnable(GL_CLIP_PLANE0);
  for (const double x : {-3.0, 20.0, 70.0}) {
    EXPECT_TRUE(moveRasterTo(x, 31, 0)) << x;
    EXPECT_FALSE(moveRasterTo(x, 33, 0)) << x;
  }
}

TEST_F(RasterImageTest, InPerspectiveOnlyWhatIsAheadIsDrawn) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glFrustum(-1, 1, -1, 1, 1, 10);
  glMatrixMode(GL_MODELVIEW);
  const PixelImage image = makeImage(8, 5);
  EXPECT_FALSE(moveRasterTo(5, 1, 2));
  EXPECT_FALSE(moveRasterTo(5, 1, 0));
  // 4 ahead the view is 8 wide: 8 pixels a unit.
  ASSERT_TRUE(moveRasterTo(-4.0 - 2.75 / 8, 0.25 / 8, -4));
  drawImage(image);
  EXPECT_EQ(context.read(), expected(image, -3, 32));
}

TEST_F(RasterImageTest, PointsThatAreNoneAreNotDrawn) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double wrong : {std::nan(""), infinity, -infinity, 1e300, -1e300, 1e30}) {
    EXPECT_FALSE(moveRasterTo(wrong, 5, 0)) << wrong;
    EXPECT_FALSE(moveRasterTo(5, wrong, 0)) << wrong;
    EXPECT_FALSE(moveRasterTo(5, 5, wrong)) << wrong;
    EXPECT_FALSE(moveRasterTo(5, 5, 0, wrong, 0)) << wrong;
    EXPECT_FALSE(moveRasterTo(5, 5, 0, 0, wrong)) << wrong;
  }
}

TEST_F(RasterImageTest, APointOutsideThePickRegionIsNoHit) {
  const auto isHit = [](double x, double y) {
    GLuint buffer[16] = {};
    glSelectBuffer(16, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    if (moveRasterTo(x, y, 0)) {
      drawImage(makeImage(8, 5));
    }
    return glRenderMode(GL_RENDER) > 0;
  };
  EXPECT_TRUE(isHit(20, 20));
  EXPECT_FALSE(isHit(-1, 20));
  EXPECT_FALSE(isHit(20, 65));
}

TEST_F(RasterImageTest, EachPixelIsDrawnAsManyTimesAsTheScaleSays) {
  const PixelImage image = makeImage(8, 5);
  ASSERT_TRUE(moveRasterTo(-4.75, 20.25, 0));
  drawImage(image, 3);
  EXPECT_EQ(context.read(), expected(image, -5, 20, 3));
}

TEST_F(RasterImageTest, NoPictureIsNothing) {
  const GlState before = readGlState();
  drawImage(PixelImage());
  EXPECT_EQ(differences(before, readGlState()), kNone);
  EXPECT_TRUE(isUntouched());
}

TEST_F(RasterImageTest, AlphaCountsWhereTheContextBlends) {
  PixelImage image = makeImage(2, 1);
  image.pixels[3] = 0;
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  ASSERT_TRUE(moveRasterTo(20.25, 20.25, 0));
  drawImage(image);
  EXPECT_EQ(context.read().at(20, kSide - 21), kBackground);
  EXPECT_EQ(context.read().at(21, kSide - 21), pixelOf(image, 1, 0));
  glDisable(GL_BLEND);
  drawImage(image);
  EXPECT_EQ(context.read().at(20, kSide - 21), pixelOf(image, 0, 0));
}

/// Something that a host may have done to its context before.
struct Habit {
  const char* name;
  void (*take)();
};

void bindTexture() {
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  const GLubyte red[4] = {255, 0, 0, 255};
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, red);
  glEnable(GL_TEXTURE_2D);
}

void setFog() {
  const GLfloat grey[4] = {0.5F, 0.5F, 0.5F, 1};
  glFogfv(GL_FOG_COLOR, grey);
  glFogf(GL_FOG_DENSITY, 5);
  glEnable(GL_FOG);
}

void mapColours() {
  const GLfloat inverted[2] = {1, 0};
  for (const GLenum map : {GL_PIXEL_MAP_R_TO_R, GL_PIXEL_MAP_G_TO_G, GL_PIXEL_MAP_B_TO_B}) {
    glPixelMapfv(map, 2, inverted);
  }
  glPixelTransferi(GL_MAP_COLOR, GL_TRUE);
}

constexpr Habit kHabits[] = {
    {"alignment 8", [] { glPixelStorei(GL_UNPACK_ALIGNMENT, 8); }},
    {"alignment 1", [] { glPixelStorei(GL_UNPACK_ALIGNMENT, 1); }},
    {"row length", [] { glPixelStorei(GL_UNPACK_ROW_LENGTH, 1000); }},
    {"skipped rows", [] { glPixelStorei(GL_UNPACK_SKIP_ROWS, 1000); }},
    {"skipped pixels", [] { glPixelStorei(GL_UNPACK_SKIP_PIXELS, 1000); }},
    {"swapped bytes", [] { glPixelStorei(GL_UNPACK_SWAP_BYTES, GL_TRUE); }},
    {"scale", [] { glPixelTransferf(GL_RED_SCALE, 0.5F); }},
    {"bias", [] { glPixelTransferf(GL_ALPHA_BIAS, -1); }},
    {"colour map", mapColours},
    {"zoom", [] { glPixelZoom(-2, 3); }},
    {"texture", bindTexture},
    {"fog", setFog},
    {"lighting", [] { glEnable(GL_LIGHTING); }},
    {"colour material",
     [] {
       glEnable(GL_LIGHTING);
       glEnable(GL_COLOR_MATERIAL);
     }},
    {"outlines", [] { glPolygonMode(GL_FRONT_AND_BACK, GL_LINE); }},
    {"current colour", [] { glColor4f(0, 0, 0, 0); }},
};

class RasterHabitTest : public RasterImageTest, public testing::WithParamInterface<Habit> {};

TEST_P(RasterHabitTest, IsDrawnAllTheSameAndLeftAsItWas) {
  const PixelImage image = makeImage(9, 7);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  GetParam().take();
  ASSERT_TRUE(moveRasterTo(-2.75, 58.25, 0));
  const GlState before = readGlState();
  drawImage(image);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  glPixelTransferi(GL_MAP_COLOR, GL_FALSE);  // holds for reading pixels as well
  glPixelTransferf(GL_RED_SCALE, 1);
  glPixelTransferf(GL_ALPHA_BIAS, 0);
  EXPECT_EQ(context.read(), expected(image, -3, 58));
}

INSTANTIATE_TEST_SUITE_P(Each, RasterHabitTest, testing::ValuesIn(kHabits), [](const auto& test) {
  std::string name;
  for (const char* letter = test.param.name; *letter; ++letter) {
    if (*letter != ' ') {
      name += *letter;
    }
  }
  return name;
});

}  // namespace
}  // namespace zyn
