#include "view/RubberBand_gl.h"

#include <algorithm>

#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};

class RubberBandTest : public GlTest {
 protected:
  Image draw(const RubberBand& band, GLfloat red, GLfloat green, GLfloat blue) const {
    glClearColor(red, green, blue, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    drawRubberBand(band);
    return context.read();
  }

  /// Exactly the outline is black or white, all else is the background.
  void expectOutline(const Image& image, const RubberBand& band, const Rgb& background) const {
    const auto [left, right] = std::minmax(band.press.x, band.current.x);
    const auto [top, bottom] = std::minmax(band.press.y, band.current.y);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const bool onSides = (x == left || x == right) && y >= top && y <= bottom;
        const bool onEnds = (y == top || y == bottom) && x >= left && x <= right;
        const Rgb& pixel = image.at(x, y);
        if (onSides || onEnds) {
          ASSERT_TRUE(pixel == kBlack || pixel == kWhite) << x << ',' << y << pixel;
        } else {
          ASSERT_EQ(pixel, background) << x << ',' << y;
        }
      }
    }
  }
};

TEST_F(RubberBandTest, IsExactlyTheOutline) {
  const RubberBand bands[] = {
      {{10, 12}, {40, 50}}, {{40, 50}, {10, 12}}, {{10, 50}, {40, 12}}, {{40, 12}, {10, 50}},
      {{0, 0}, {63, 63}},   {{20, 20}, {21, 21}}, {{20, 5}, {22, 60}},
  };
  for (const RubberBand& band : bands) {
    expectOutline(draw(band, 0, 1, 0), band, {0, 255, 0});
  }
}

TEST_F(RubberBandTest, ReachesBeyondTheView) {
  for (const RubberBand& band :
       {RubberBand{{10, 12}, {200, 50}}, {{10, 12}, {-30, 500}}, {{-5, -5}, {30, 30}}}) {
    expectOutline(draw(band, 0, 1, 0), band, {0, 255, 0});
  }
}

TEST_F(RubberBandTest, ShowsOnAnyBackground) {
  for (const GLfloat grey : {0.0F, 0.5F, 1.0F}) {
    const RubberBand band{{5, 5}, {60, 55}};
    const Image image = draw(band, grey, grey, grey);
    const Image blank = draw({{-9, -9}, {-5, -5}}, grey, grey, grey);
    int outline = 0;
    int different = 0;
    for (int x = 5; x <= 60; ++x) {
      ++outline;
      different += image.at(x, 5) == blank.at(x, 5) ? 0 : 1;
    }
    EXPECT_GE(3 * different, outline) << grey;
    EXPECT_GT(image.count(kBlack), 50) << grey;
    EXPECT_GT(image.count(kWhite), 50) << grey;
  }
}

TEST_F(RubberBandTest, IgnoresDepthLightsAndLineSettings) {
  const RubberBand band{{10, 12}, {40, 50}};
  const Image plain = draw(band, 0, 1, 0);
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_NEVER);
  glEnable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(3, 0x1111);
  glLineWidth(5);
  glMatrixMode(GL_PROJECTION);
  glScalef(3, 2, 1);
  EXPECT_EQ(draw(band, 0, 1, 0), plain);
}

TEST_F(RubberBandTest, LeavesTheStateAsItWas) {
  glEnable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glLineStipple(3, 0x1111);
  glLineWidth(5);
  glMatrixMode(GL_TEXTURE);
  const GlState before = readGlState();
  drawRubberBand({{10, 12}, {40, 50}});
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

}  // namespace
}  // namespace zyn::test
