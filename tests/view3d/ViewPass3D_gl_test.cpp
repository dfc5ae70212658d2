#include "view3d/ViewPass3D_gl.h"

#include <algorithm>
#include <stdexcept>

#include "glcontext/InitialState_gl.h"
#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kBlack{0, 0, 0};
constexpr int kWidth = 240;
constexpr int kHeight = 180;

/// A view of 240 by 180 pixels from +Z, a pixel being a scene unit.
class ViewPass3DTest : public testing::Test {
 protected:
  ViewPass3DTest() {
    camera.fitAxis(AxisView::kXYp, Box3{-120, 120, -90, 90, -10, 10}, {kWidth, kHeight}, 0, 0);
    setInitialState3D({1, 1, 1, 0}, antialiasing);
    pass.camera = &camera;
    pass.drawCoordSys = false;
  }

  /// What the window shows.
  Image show(const std::function<void()>& drawList = [] {}) const {
    Image shown;
    drawView3D(pass, drawList, [&] { shown = context.read(); });
    return shown;
  }

  /// An unlit square of 20 pixels about the view's centre.
  static void drawSquare() {
    glDisable(GL_LIGHTING);
    glColor3f(0, 1, 0);
    glRectd(-10, -10, 10, 10);
    glEnable(GL_LIGHTING);
  }

  EglContext context{kWidth, kHeight};
  Antialiasing antialiasing;
  CursorGlyph glyph;
  CParamsVue3D camera;
  ViewPass3D pass;
};

TEST_F(ViewPass3DTest, ShowsTheSceneThroughTheCamera) {
  const Image image = show(drawSquare);
  const PixelBox box = boxOf(image, {0, 255, 0});
  EXPECT_EQ(box.left, 110);
  EXPECT_EQ(box.right, 129);
  EXPECT_EQ(box.top, 80);
  EXPECT_EQ(box.bottom, 99);
  EXPECT_EQ(image.count({0, 255, 0}) + image.count(kWhite), kWidth * kHeight);
}

TEST_F(ViewPass3DTest, LightsTheScene) {
  pass.lights.put(LightBlock::Section::kAmbient, std::vector<double>{1, 1, 0, 0, 1});
  pass.lights.put(LightBlock::Section::kLight1, std::vector<double>{0, 1, 1, 1, 0, 0, 0, 0, 0});
  const GLfloat material[4] = {1, 1, 1, 1};
  glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, material);
  const Image image = show([] { glRectd(-10, -10, 10, 10); });
  EXPECT_EQ(image.at(120, 90), (Rgb{255, 0, 0}));
}

TEST_F(ViewPass3DTest, WithoutACameraOnlyTheBackgroundIsShown) {
  pass.camera = nullptr;
  pass.drawCoordSys = true;
  pass.drawLights = true;
  pass.lights.put(LightBlock::Section::kLight1, std::vector<double>{1, 1, 0, 0, 0, 0, 0, 1.5, 0});
  pass.rubberBand = RubberBand{{10, 10}, {50, 50}};
  pass.cursor.emplace(ViewPass3D::Cursor{glyph, {0, 0, 0}});
  bool drawn = false;
  const Image image = show([&] { drawn = true; });
  EXPECT_FALSE(drawn);
  EXPECT_EQ(image.count(kWhite), kWidth * kHeight);
}

TEST_F(ViewPass3DTest, TheGradientRunsFromTheBackgroundUpwards) {
  pass.gradient = {0, 0, 1};
  const CParamsVue3D* const none = nullptr;
  for (const CParamsVue3D* const shown : {none, pass.camera}) {
    pass.camera = shown;
    const Image image = show();
    EXPECT_LE(difference(image.at(5, 0), {0, 0, 255}), 3);
    EXPECT_LE(difference(image.at(5, kHeight - 1), kWhite), 3);
    EXPECT_EQ(image.at(5, 40), image.at(200, 40));
  }
}

TEST_F(ViewPass3DTest, TheTrihedronIsDrawnWhereAsked) {
  pass.drawCoordSys = true;
  const Image image = show();
  // 15 pixels from the corner, 15 pixels long.
  EXPECT_NE(image.at(15 + 7, kHeight - 15), kWhite);
  EXPECT_NE(image.at(15, kHeight - 15 - 7), kWhite);
  pass.drawCoordSys = false;
  EXPECT_EQ(show().count(kWhite), kWidth * kHeight);
}

TEST_F(ViewPass3DTest, TheCursorStandsAtItsPlaceInTheScene) {
  pass.cursor.emplace(ViewPass3D::Cursor{glyph, {40.5F, 20.5F, 3}});
  const Image alone = show();
  const PixelBox box = boxOf(alone, kBlack);
  EXPECT_EQ(box.left, 160 - 6);
  EXPECT_EQ(box.right, 160 + 6);
  EXPECT_EQ(box.top, kHeight - 1 - 110 - 6);
  // The rubber band changes nothing about it.
  pass.rubberBand = RubberBand{{10, 100}, {50, 150}};
  const Image both = show();
  for (int y = 50; y < 90; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      ASSERT_EQ(both.at(x, y), alone.at(x, y));
    }
  }
  EXPECT_EQ(boxOf(both, kBlack).left, 10);
}

TEST_F(ViewPass3DTest, TheRubberBandLiesOverTheScene) {
  pass.rubberBand = RubberBand{{115, 85}, {200, 150}};
  const Image image = show(drawSquare);
  for (int x = 115; x <= 129; ++x) {
    EXPECT_TRUE(image.at(x, 85) == kWhite || image.at(x, 85) == kBlack) << x;
  }
  EXPECT_EQ(image.at(120, 90), (Rgb{0, 255, 0}));
}

TEST_F(ViewPass3DTest, LightLinesEndInTheMiddleOfTheView) {
  pass.drawLights = true;
  pass.lights.put(LightBlock::Section::kLight1,
                  std::vector<double>{1, 1, 0, 0, 0, 0, 0, 1.5707963267948966, 0});
  const PixelBox box = boxOf(show(), {255, 0, 0});
  EXPECT_NEAR(box.left, 120, 1);
  EXPECT_EQ(box.right, kWidth - 1);
  EXPECT_NEAR(box.top, 90, 1);
  EXPECT_EQ(box.top, box.bottom);
  pass.drawLights = false;
  EXPECT_TRUE(boxOf(show(), {255, 0, 0}).empty());
}

TEST_F(ViewPass3DTest, IsPresentedOnceAfterEverything) {
  int drawn = 0;
  int presented = 0;
  drawView3D(
      pass, [&] { ++drawn; },
      [&] {
        EXPECT_EQ(drawn, 1);
        ++presented;
      });
  EXPECT_EQ(presented, 1);
}

TEST_F(ViewPass3DTest, AFailingObjectEndsThePass) {
  pass.drawCoordSys = true;
  const GlState before = readGlState();
  const auto fail = [] {
    glPushMatrix();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    throw std::runtime_error("an object failed");
  };
  bool presented = false;
  EXPECT_THROW(drawView3D(pass, fail, [&] { presented = true; }), std::runtime_error);
  EXPECT_FALSE(presented);
  GlState after = readGlState();
  for (const char* const stack :
       {"GL_MODELVIEW_STACK_DEPTH", "GL_PROJECTION_STACK_DEPTH", "GL_ATTRIB_STACK_DEPTH"}) {
    EXPECT_EQ(before.at(stack), after.at(stack)) << stack;
  }
}

TEST_F(ViewPass3DTest, OverlaysLeaveTheStateAsTheSceneDid) {
  show(drawSquare);
  const GlState before = readGlState();
  pass.drawCoordSys = true;
  pass.drawLights = true;
  pass.rubberBand = RubberBand{{10, 10}, {50, 50}};
  pass.cursor.emplace(ViewPass3D::Cursor{glyph, {0, 0, 0}});
  show(drawSquare);
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(ViewPass3DTest, ADrawnObjectMayMoveTheCamera) {
  pass.drawCoordSys = true;
  const Image still = show();
  const Image moved = show([&] { camera.zoom(0); });
  EXPECT_EQ(moved, still);
}

}  // namespace
}  // namespace zyn::test
