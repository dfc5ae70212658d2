#include "view2d/ViewPass2D_gl.h"

#include <stdexcept>

#include "glcontext/InitialState_gl.h"
#include "support/GlTest_gl.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {
namespace {

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kBlue{0, 0, 255};
constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kMagenta{255, 0, 255};
constexpr int kWidth = 280;
constexpr int kHeight = 210;

/// A graph of 200 by 150 pixels, 20 a unit, whose origin is in column 40 and on row 180.
class ViewPass2DTest : public testing::Test {
 protected:
  ViewPass2DTest() {
    setInitialState2D({1, 1, 1, 0}, antialiasing);
    state.resize({kWidth, kHeight});
    state.showGraph({0, 10, 0, 7.5}, 1, 1);
    pass.shown.view = state.current();
    graph.colour = {0, 0, 1};
    graph.x = {{}, 0, 10, 5, 1};
    graph.y = {{}, 0, 7.5, 2.5, 0.5};
  }

  std::shared_ptr<const GraphFrame> frame() const {
    return std::make_shared<GraphFrame>(graph, state.graphPlacement().value(), fonts);
  }

  /// What the window shows.
  Image show(const std::function<void()>& drawTraces = [] {}) const {
    Image shown;
    drawView2D(pass, drawTraces, [&] { shown = context.read(); });
    return shown;
  }

  /// Fills the graph's range.
  static void drawRed() {
    glColor3f(1, 0, 0);
    glRectd(0, 0, 10, 7.5);
  }

  EglContext context{kWidth, kHeight};
  Antialiasing antialiasing;
  CGLFontContext fonts;
  CursorGlyph glyph;
  ViewState2D state;
  LinearGraph graph;
  ViewPass2D pass;
};

TEST_F(ViewPass2DTest, ShowsTheTracesThroughTheView) {
  const Image image = show(drawRed);
  const PixelBox box = boxOf(image, kRed);
  EXPECT_EQ(box.left, 40);
  EXPECT_EQ(box.right, 239);
  EXPECT_EQ(box.top, 30);
  EXPECT_EQ(box.bottom, 179);
  EXPECT_EQ(image.count(kRed) + image.count(kWhite), kWidth * kHeight);
}

TEST_F(ViewPass2DTest, ScalesTheTraces) {
  state.showGraph({0, 100, 0, 0.75}, 0.1, 10);
  pass.shown = {state.current(), 0.1, 10};
  const PixelBox box = boxOf(show([] {
                               glColor3f(1, 0, 0);
                               glRectd(0, 0, 100, 0.75);
                             }),
                             kRed);
  EXPECT_EQ(box.left, 40);
  EXPECT_EQ(box.right, 239);
  EXPECT_EQ(box.bottom, 179);
}

TEST_F(ViewPass2DTest, AgreesWithTheMappingAtTheCorners) {
  for (int step = 0; step < 4; ++step) {
    pass.shown = {state.current(), state.xScale(), state.yScale()};
    for (const PixelPoint corner :
         {PixelPoint{0, 0}, {kWidth - 1, 0}, {0, kHeight - 1}, {kWidth - 1, kHeight - 1}}) {
      const Point from = state.getPoint(corner);
      const Point to = state.getPoint({corner.x + 1, corner.y + 1});
      const Image image = show([&] {
        glColor3f(1, 0, 0);
        glBegin(GL_POINTS);
        glVertex2d((from.x + to.x) / 2, (from.y + to.y) / 2);
        glEnd();
      });
      EXPECT_EQ(image.at(corner.x, corner.y), kRed) << step << " " << corner.x << " " << corner.y;
    }
    state.pan(37, -11);
    state.turnWheel({100, 20}, -240, {});
    state.zoomTo({{10, 10}, {200, 170}});
  }
}

TEST_F(ViewPass2DTest, TheGridLiesBelowTheTraces) {
  pass.grid = Grid{{1, 0, 1}, 2.5, 2.5};
  EXPECT_GT(show().count(kMagenta), kWidth * 4);
  const Image image = show(drawRed);
  for (int x = 41; x < 239; ++x) {
    ASSERT_EQ(image.at(x, 130), kRed);
  }
  EXPECT_EQ(image.at(20, 80) == kMagenta || image.at(20, 79) == kMagenta, true);
}

TEST_F(ViewPass2DTest, TheFrameLiesOverTraces) {
  pass.frame = frame();
  const Image image = show(drawRed);
  EXPECT_EQ(image.at(140, 179), kBlue);
  EXPECT_EQ(image.at(40, 100), kBlue);
  EXPECT_EQ(image.at(140, 150), kRed);
}

TEST_F(ViewPass2DTest, TheFrameLiesOverTheRubberBand) {
  pass.frame = frame();
  pass.rubberBand = RubberBand{{100, 100}, {150, 179}};
  const Image image = show(drawRed);
  EXPECT_TRUE(image.at(100, 140) == kWhite || image.at(100, 140) == kBlack);
  EXPECT_EQ(image.at(120, 179), kBlue);
}

TEST_F(ViewPass2DTest, TheRubberBandShowsOnAnyBackground) {
  pass.rubberBand = RubberBand{{100, 100}, {150, 150}};
  for (const auto& traces : {std::function<void()>([] {}), std::function<void()>(drawRed)}) {
    const Image image = show(traces);
    int black = 0;
    int white = 0;
    for (int x = 100; x <= 150; ++x) {
      black += image.at(x, 100) == kBlack ? 1 : 0;
      white += image.at(x, 100) == kWhite ? 1 : 0;
    }
    EXPECT_EQ(black + white, 51);
    EXPECT_GT(black, 20);
    EXPECT_GT(white, 20);
  }
}

TEST_F(ViewPass2DTest, TheCursorStandsOnTop) {
  pass.cursor.emplace(ViewPass2D::Cursor{glyph, {5.025F, 0.025F}});  // in column 140, on row 179
  pass.frame = frame();
  const Image image = show(drawRed);
  EXPECT_EQ(image.at(140, 179 - 6), kBlack);
  EXPECT_EQ(image.at(140, 179 + 6), kBlack);
  EXPECT_EQ(image.at(140 - 6, 179), kBlack);
  EXPECT_EQ(image.at(140, 179), kBlue);  // it has a hole in the middle
}

TEST_F(ViewPass2DTest, TheCursorIsScaledToo) {
  state.showGraph({0, 100, 0, 0.75}, 0.1, 10);
  pass.shown = {state.current(), 0.1, 10};
  pass.cursor.emplace(ViewPass2D::Cursor{glyph, {50.25F, 0.40025F}});
  const PixelBox box = boxOf(show(), kBlack);
  EXPECT_EQ(box.left, 140 - 6);
  EXPECT_EQ(box.right, 140 + 6);
  EXPECT_EQ((box.top + box.bottom) / 2, 180 - 81);
}

TEST_F(ViewPass2DTest, IsPresentedOnceAfterEverything) {
  int drawn = 0;
  int presented = 0;
  drawView2D(
      pass, [&] { ++drawn; },
      [&] {
        EXPECT_EQ(drawn, 1);
        ++presented;
      });
  EXPECT_EQ(presented, 1);
}

TEST_F(ViewPass2DTest, AFailingTraceEndsThePass) {
  const GlState before = readGlState();
  bool presented = false;
  EXPECT_THROW(drawView2D(
                   pass,
                   [] {
                     glPushMatrix();
                     glPushAttrib(GL_ALL_ATTRIB_BITS);
                     throw std::runtime_error("a trace failed");
                   },
                   [&] { presented = true; }),
               std::runtime_error);
  EXPECT_FALSE(presented);
  GlState after = readGlState();
  for (const char* const name : {"GL_MODELVIEW_STACK_DEPTH", "GL_PROJECTION_STACK_DEPTH",
                                 "GL_ATTRIB_STACK_DEPTH", "GL_MODELVIEW_MATRIX"}) {
    EXPECT_EQ(before.at(name), after.at(name)) << name;
  }
}

TEST_F(ViewPass2DTest, LeavesTheStateAsItWas) {
  pass.grid = Grid{{1, 0, 1}, 2.5, 2.5};
  pass.frame = frame();
  pass.rubberBand = RubberBand{{100, 100}, {150, 150}};
  pass.cursor.emplace(ViewPass2D::Cursor{glyph, {5, 5}});
  show();  // the projection stays the view's
  const GlState before = readGlState();
  show();
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(ViewPass2DTest, ATraceMayReplaceTheFrame) {
  pass.frame = frame();
  std::shared_ptr<const GraphFrame> views = pass.frame;
  const Image image = show([&] { views = frame(); });
  EXPECT_EQ(image.at(140, 179), kBlue);
}

TEST_F(ViewPass2DTest, AViewThatShowsNothingIsEmpty) {
  pass.shown = {};
  pass.grid = Grid{{1, 0, 1}, 2.5, 2.5};
  pass.frame = frame();
  bool drawn = false;
  const Image image = show([&] {
    drawn = true;
    drawRed();
  });
  EXPECT_TRUE(drawn);
  EXPECT_EQ(image.count(kWhite), kWidth * kHeight);
}

}  // namespace
}  // namespace zyn::test
