#include "offscreen/TracePicture_gl.h"

#include <limits>
#include <stdexcept>

#include "glcontext/InitialState_gl.h"
#include "glcontext/Tile.h"
#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

constexpr Rgb kBackground{0, 0, 255};
constexpr Rgb kRed{255, 0, 0};

/// A picture of the plane from (0, 0) to (8, 8), 8 pixels a unit.
class TracePictureTest : public GlTest {
 protected:
  TracePictureTest() {
    setInitialState2D({0, 0, 1, 0}, antialiasing);
    picture.shown.view.fit(Rect2{0, 8, 0, 8}, {kSide, kSide}, 0);
  }

  static void fill(double xMin, double yMin, double xMax, double yMax) {
    glColor3f(1, 0, 0);
    glRectd(xMin, yMin, xMax, yMax);
  }

  Antialiasing antialiasing;
  TracePicture picture;
};

TEST_F(TracePictureTest, ShowsTheView) {
  drawTraces(picture, [] { fill(1, 2, 3, 8); });
  const Image image = context.read();
  const PixelBox box = boxOf(image, kRed);
  EXPECT_EQ(box.left, 8);
  EXPECT_EQ(box.right, 23);
  EXPECT_EQ(box.top, 0);
  EXPECT_EQ(box.bottom, 47);
  EXPECT_EQ(image.count(kRed) + image.count(kBackground), kSide * kSide);
}

TEST_F(TracePictureTest, NothingOfAnEarlierPictureStays) {
  drawTraces(picture, [] { fill(0, 0, 8, 8); });
  drawTraces(picture, [] {});
  EXPECT_EQ(context.read().count(kBackground), kSide * kSide);
}

TEST_F(TracePictureTest, PartsMakeUpTheWhole) {
  const auto draw = [] {
    fill(1.3, 2.1, 3.2, 7.7);
    glBegin(GL_TRIANGLES);
    glVertex2d(4, 1);
    glVertex2d(7.5, 3);
    glVertex2d(5, 6.5);
    glEnd();
  };
  drawTraces(picture, draw);
  const Image whole = context.read();
  Image parts(kSide, kSide);
  for (const Tile& tile : tilesOf(kSide, kSide, 40, 8)) {
    glViewport(0, 0, tile.drawn.width, tile.drawn.height);
    picture.part = tile.part();
    drawTraces(picture, draw);
    const Image part = context.read(tile.drawn.width, tile.drawn.height);
    for (int y = 0; y < tile.kept.height; ++y) {
      for (int x = 0; x < tile.kept.width; ++x) {
        parts.at(tile.kept.x + x, kSide - 1 - (tile.kept.y + y)) =
            part.at(tile.kept.x - tile.drawn.x + x,
                    tile.drawn.height - 1 - (tile.kept.y - tile.drawn.y + y));
      }
    }
  }
  int different = 0;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) different += parts.at(x, y) == whole.at(x, y) ? 0 : 1;
  }
  EXPECT_LE(different, 3) << "pixels whose centre lies on an edge may go either way";
}

TEST_F(TracePictureTest, PlainLinesAndPointsHaveTheScaleMeanwhile) {
  picture.pixelScale = 3;
  float line = 0;
  float point = 0;
  drawTraces(picture, [&] {
    line = floatState(GL_LINE_WIDTH);
    point = floatState(GL_POINT_SIZE);
  });
  EXPECT_EQ(line, 3);
  EXPECT_EQ(point, 3);
  EXPECT_EQ(floatState(GL_LINE_WIDTH), 1);
  EXPECT_EQ(floatState(GL_POINT_SIZE), 1);
}

TEST_F(TracePictureTest, ViewsThatShowNothingAreBackground) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  for (const Rect2& range : {Rect2{kNaN, 1, 0, 1}, Rect2{0, 1e300, 0, 1}}) {
    picture.shown.view.fit(range, {kSide, kSide}, 0);
    drawTraces(picture, [] { fill(-9, -9, 9, 9); });
    EXPECT_EQ(context.read().count(kBackground), kSide * kSide);
  }
  picture.shown = {};
  drawTraces(picture, [] { fill(-9, -9, 9, 9); });
  EXPECT_EQ(context.read().count(kBackground), kSide * kSide);
}

TEST_F(TracePictureTest, WhatTracesLeaveBehindIsTidiedUp) {
  const auto untidy = [] {
    glPushMatrix();
    glPushAttrib(GL_CURRENT_BIT);
    throw std::runtime_error("halfway");
  };
  for (int i = 0; i < 40; ++i) {
    EXPECT_THROW(drawTraces(picture, untidy), std::runtime_error);
  }
  EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
  drawTraces(picture, [] { fill(0, 0, 8, 8); });
  EXPECT_EQ(context.read().count(kRed), kSide * kSide);
}

}  // namespace
}  // namespace zyn::test
