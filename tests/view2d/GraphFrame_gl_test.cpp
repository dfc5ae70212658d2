#include "view2d/GraphFrame_gl.h"

#include <array>
#include <memory>

#include "support/BlockFont_gl.h"
#include "support/GlTest_gl.h"
#include "view2d/ViewMatrices_gl.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {
namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kBlue{0, 0, 255};
constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kGreen{0, 255, 0};
constexpr int kWidth = 280;
constexpr int kHeight = 210;

/// A graph of 200 by 150 pixels, 20 a unit, whose origin is in column 40 and on row 180.
class GraphFrameTest : public testing::Test {
 protected:
  static constexpr int kOriginX = 40;
  static constexpr int kOriginY = kHeight - 30;

  GraphFrameTest() {
    giveBlocks(fonts, false);
    fonts.buildDigits();
    state.resize({kWidth, kHeight});
    linear.colour = {0, 0, 1};
    linear.x = {{}, 0, 10, 5, 1};
    linear.y = {{}, 0, 7.5, 2, 0.5};
    logLog.colour = {0, 0, 1};
    logLog.x = {{}, -1, 9, {1, 0, 0}};
    logLog.y = {{}, 0, 7.5, {0, 1, 0}};
  }
  ~GraphFrameTest() override { fonts.release(); }

  template <class Graph>
  std::unique_ptr<GraphFrame> compile(const Graph& graph) {
    state.showGraph({graph.x.min, graph.x.max, graph.y.min, graph.y.max}, 1, 1);
    return std::make_unique<GraphFrame>(graph, state.graphPlacement().value(), fonts);
  }

  Image show(const GraphFrame& frame) const {
    glClear(GL_COLOR_BUFFER_BIT);
    loadViewAt(frame.origin(), {state.current(), state.xScale(), state.yScale()});
    frame.draw();
    return context.read();
  }

  template <class Graph>
  Image showNew(const Graph& graph) {
    return show(*compile(graph));
  }

  static int countWithin(const Image& image, const Rgb& colour, int left, int top, int right,
                         int bottom) {
    int count = 0;
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) {
        count += image.at(x, y) == colour ? 1 : 0;
      }
    }
    return count;
  }

  static PixelImage redPicture(int width, int height) {
    PixelImage picture{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
      picture.pixels.insert(picture.pixels.end(), {255, 0, 0, 255});
    }
    return picture;
  }

  EglContext context{kWidth, kHeight};
  CGLFontContext fonts;
  ViewState2D state;
  LinearGraph linear;
  LogLogGraph logLog;
};

TEST_F(GraphFrameTest, CompilingDrawsNothing) {
  const std::unique_ptr<GraphFrame> frame = compile(linear);
  EXPECT_FALSE(frame->isEmpty());
  EXPECT_EQ(context.read().count(kBlack), kWidth * kHeight);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(GraphFrameTest, AxesAreTwoPixelsWide) {
  const Image image = showNew(linear);
  EXPECT_EQ(countWithin(image, kBlue, 130, kOriginY - 5, 131, kOriginY + 3), 2);
  EXPECT_EQ(countWithin(image, kBlue, kOriginX - 3, 105, kOriginX + 3, 106), 2);
  // The arrow ends a fortieth beyond the range.
  EXPECT_EQ(image.at(kOriginX + 203, kOriginY - 1), kBlue);
  EXPECT_EQ(image.at(kOriginX + 206, kOriginY - 1), kBlack);
  EXPECT_EQ(image.at(kOriginX + 199, kOriginY - 5), kBlue);
}

TEST_F(GraphFrameTest, TicksAreFourAndEightPixelsLong) {
  linear.y.bigStep = linear.y.smallStep = 0;
  linear.x.bigStep = 2.5;
  const Image image = showNew(linear);
  // A tick lies between two columns.
  const auto below = [&](int column) {
    return countWithin(image, kBlue, column - 1, kOriginY + 1, column + 1, kOriginY + 9);
  };
  EXPECT_NEAR(below(kOriginX + 20), 3, 1);
  EXPECT_NEAR(below(kOriginX + 100), 7, 1);
  EXPECT_EQ(below(kOriginX + 110), 0);
  EXPECT_NEAR(below(kOriginX + 150), 7, 1);
  for (const int column : {199, 200}) {  // the end has no tick, only the arrow
    EXPECT_EQ(image.at(kOriginX + column, kOriginY + 7), kBlack);
  }
}

TEST_F(GraphFrameTest, LabelsStandUnderTheirTicks) {
  linear.y.bigStep = linear.y.smallStep = 0;
  linear.x.smallStep = 0;
  linear.x.bigStep = 4;
  const Image image = showNew(linear);
  const int top = kOriginY + 10;
  EXPECT_GT(countWithin(image, kBlue, kOriginX + 78, top, kOriginX + 82, top + 6), 8);  // "4"
  EXPECT_EQ(countWithin(image, kBlue, kOriginX + 84, top, kOriginX + 156, top + 6), 0);
  EXPECT_EQ(countWithin(image, kBlue, kOriginX, top + 6, kOriginX + 200, kHeight), 0);
}

TEST_F(GraphFrameTest, TitlesAreDrawnInTheirPlaces) {
  linear.x.title = {"Nom", "", {}};
  const Image titled = showNew(linear);
  linear.x.title = {};
  const Image plain = showNew(linear);
  int more = 0;
  for (int y = kOriginY + 19; y < kHeight; ++y) {
    for (int x = 150; x < kOriginX + 206; ++x) {
      more += titled.at(x, y) != plain.at(x, y) ? 1 : 0;
    }
  }
  // Three blocks of 8 pixels' height and 6 pixels' width.
  EXPECT_NEAR(more, 3 * 48, 20);
  EXPECT_EQ(titled.count(kBlue) - plain.count(kBlue), more);
}

TEST_F(GraphFrameTest, PicturesAreDrawnInTheirPlaces) {
  linear.x.title = {"Nom", "mm", redPicture(30, 8)};
  linear.y.title = {"Nom", "mm", redPicture(20, 6)};
  const Image image = showNew(linear);
  EXPECT_EQ(image.count(kRed), 30 * 8 + 20 * 6);
  EXPECT_EQ(countWithin(image, kRed, 0, kOriginY + 20, kWidth, kHeight), 30 * 8);
  EXPECT_EQ(countWithin(image, kRed, kOriginX - 11, 0, kOriginX + 11, 30), 20 * 6);
}

TEST_F(GraphFrameTest, PicturesNeverVanishWhenTheyAreTooLarge) {
  linear.x.title.picture = redPicture(400, 300);
  EXPECT_GE(showNew(linear).count(kRed), (kWidth - 3) * (kHeight - 3));
}

TEST_F(GraphFrameTest, FollowsTheViewAndTheScales) {
  const std::unique_ptr<GraphFrame> frame = compile(linear);
  const Image home = show(*frame);
  state.pan(20, -10);
  const Image panned = show(*frame);
  EXPECT_EQ(panned.count(kBlue), home.count(kBlue));
  EXPECT_EQ(panned.at(150, kOriginY - 10), kBlue);
  state.initView();
  EXPECT_EQ(show(*frame), home);
}

TEST_F(GraphFrameTest, LooksTheSameAnywhereInThePlane) {
  const Image expected = showNew(linear);
  for (const double offset : {1048576.0, -1073741824.0}) {
    LinearGraph far = linear;
    far.x.min += offset;
    far.x.max += offset;
    far.x.bigStep = far.y.bigStep = 0;  // the labels differ
    LinearGraph near = linear;
    near.x.bigStep = near.y.bigStep = 0;
    EXPECT_EQ(showNew(far), showNew(near)) << offset;
  }
  EXPECT_GT(expected.count(kBlue), 500);
}

TEST_F(GraphFrameTest, LooksTheSameAtAnyScale) {
  const Image expected = showNew(linear);
  linear.x = {{}, 0, 10e8, 5e8, 1e8};
  linear.y = {{}, 0, 7.5e-8, 2e-8, 0.5e-8};
  state.showGraph({0, linear.x.max, 0, linear.y.max}, 1e-8, 1e8);
  const GraphFrame frame(linear, state.graphPlacement().value(), fonts);
  // All but the labels.
  const Image scaled = show(frame);
  for (int y = 0; y < kOriginY + 9; ++y) {
    for (int x = kOriginX - 8; x < kWidth; ++x) {
      ASSERT_EQ(scaled.at(x, y), expected.at(x, y)) << x << " " << y;
    }
  }
}

TEST_F(GraphFrameTest, DecadeLinesHaveTheirColours) {
  const Image image = showNew(logLog);
  for (const int decade : {1, 4, 9}) {
    const int column = kOriginX + 20 * decade;
    EXPECT_GE(countWithin(image, kRed, column - 1, 60, column + 1, kOriginY - 2), 80) << decade;
  }
  EXPECT_GE(countWithin(image, kGreen, kOriginX, kOriginY - 41, kOriginX + 200, kOriginY - 38),
            180);
  EXPECT_GT(countWithin(image, kBlue, kOriginX - 10, kOriginY + 8, kOriginX + 200, kOriginY + 17),
            60);  // labels
}

TEST_F(GraphFrameTest, MultiplesOfPowersAreFaint) {
  logLog.x.max = 0.25;
  logLog.x.min = -2.25;
  logLog.y.min = 0;
  logLog.y.max = 1.875;  // 80 pixels a decade
  const Image image = showNew(logLog);
  const int column = kOriginX + static_cast<int>(80 * (0.25 + 0.30103));
  Rgb faint = image.at(column, kOriginY - 11);
  if (faint == kBlack) {
    faint = image.at(column - 1, kOriginY - 11);
  }
  EXPECT_NEAR(faint.r, 102, 3);
}

TEST_F(GraphFrameTest, LeavesTheStateAsItWas) {
  linear.x.title = {"Nom", "mm", {}};
  linear.y.title.picture = redPicture(20, 6);
  for (const bool odd : {false, true}) {
    if (odd) {
      for (const GLenum capability : {GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_LINE_SMOOTH,
                                      GL_LINE_STIPPLE, GL_TEXTURE_2D, GL_BLEND}) {
        glEnable(capability);
      }
      glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
      glBlendFunc(GL_ONE, GL_ONE);
      glLineWidth(3);
      glListBase(77);
      glFrontFace(GL_CW);
      glPixelZoom(2, 2);
      glColor4f(0.1F, 0.2F, 0.3F, 0.4F);
    }
    const GlState before = readGlState();
    const std::unique_ptr<GraphFrame> frame = compile(linear);
    EXPECT_EQ(differences(before, readGlState()), kNone) << odd;
    loadViewAt(frame->origin(), {state.current()});
    const GlState loaded = readGlState();
    frame->draw();
    EXPECT_EQ(differences(loaded, readGlState()), kNone) << odd;
  }
}

TEST_F(GraphFrameTest, LooksTheSameInAnyState) {
  linear.x.title = {"Nom", "mm", {}};
  linear.y.title.picture = redPicture(20, 6);
  const Image expected = showNew(linear);
  for (const GLenum capability : {GL_LIGHTING, GL_CULL_FACE, GL_LINE_SMOOTH, GL_LINE_STIPPLE}) {
    glEnable(capability);
  }
  glLineStipple(1, 0x1111);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glBlendFunc(GL_ZERO, GL_ONE);
  glLineWidth(4);
  EXPECT_EQ(showNew(linear), expected);
}

TEST_F(GraphFrameTest, WithoutFontsTheLinesRemain) {
  fonts.release();
  linear.x.title = {"Nom", "mm", {}};
  EXPECT_GT(showNew(linear).count(kBlue), 500);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(GraphFrameTest, OwnsItsList) {
  const auto lists = [] {
    int count = 0;
    for (GLuint list = 1; list < 5000; ++list) {
      count += glIsList(list) == GL_TRUE ? 1 : 0;
    }
    return count;
  };
  const int before = lists();
  std::unique_ptr<GraphFrame> frame = compile(linear);
  EXPECT_EQ(lists(), before + 1);
  frame.reset();
  EXPECT_EQ(lists(), before);
}

}  // namespace
}  // namespace zyn::test
