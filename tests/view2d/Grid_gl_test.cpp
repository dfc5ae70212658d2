#include "view2d/Grid_gl.h"

#include <limits>

#include "support/GlTest_gl.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Rgb kBlack{0, 0, 0};

class GridTest : public GlTest {
 protected:
  GridTest() {
    state.resize({kSide, kSide});
    state.view(Rect2{0, 64, 0, 64}, 0);
    grid.colour = {1, 0, 1};
  }

  Image show() const {
    glClear(GL_COLOR_BUFFER_BIT);
    drawGrid(grid, {state.current(), state.xScale(), state.yScale()});
    return context.read();
  }

  /// Columns in a row of pixels, or rows in a column, that have the grid's colour.
  static std::vector<int> columns(const Image& image, int row) {
    std::vector<int> found;
    for (int x = 0; x < kSide; ++x) {
      if (image.at(x, row) == kMagenta) {
        found.push_back(x);
      }
    }
    return found;
  }
  static std::vector<int> rows(const Image& image, int column) {
    std::vector<int> found;
    for (int y = 0; y < kSide; ++y) {
      if (image.at(column, y) == kMagenta) {
        found.push_back(y);
      }
    }
    return found;
  }

  static constexpr Rgb kMagenta{255, 0, 255};
  ViewState2D state;
  Grid grid;
};

TEST_F(GridTest, HasLinesAtTheMultiplesOfItsSteps) {
  state.view(Rect2{-3.5, 60.5, -2.5, 61.5}, 0);
  grid.stepX = 20;
  grid.stepY = 30;
  const Image image = show();
  EXPECT_EQ(columns(image, 5), (std::vector<int>{3, 23, 43, 63}));
  EXPECT_EQ(rows(image, 5), (std::vector<int>{1, 31, 61}));
  for (int i = 0; i < kSide; ++i) {
    EXPECT_EQ(image.at(i, 31), kMagenta);  // from edge to edge
    EXPECT_EQ(image.at(23, i), kMagenta);
  }
}

TEST_F(GridTest, IsGreyByDefault) {
  const Grid standard;
  EXPECT_EQ(standard.colour, (std::array<float, 3>{0.7F, 0.7F, 0.7F}));
  EXPECT_EQ(standard.stepX, 0);
  EXPECT_EQ(standard.stepY, 0);
}

TEST_F(GridTest, EachDirectionHasItsStep) {
  for (const double none : {0.0, -1.0, kNaN, 1e-300, std::numeric_limits<double>::infinity()}) {
    grid.stepX = 16;
    grid.stepY = none;
    EXPECT_EQ(rows(show(), 5).size(), 0U) << none;
    EXPECT_GE(columns(show(), 5).size(), 4U) << none;
    grid.stepX = none;
    grid.stepY = 16;
    EXPECT_EQ(columns(show(), 5).size(), 0U) << none;
    EXPECT_GE(rows(show(), 5).size(), 4U) << none;
  }
}

TEST_F(GridTest, HasNoMoreLinesThanPixels) {
  grid.stepX = 1.01;
  EXPECT_GE(show().count(kMagenta), kSide * (kSide - 2));
  grid.stepX = 0.9;
  EXPECT_EQ(show().count(kBlack), kSide * kSide);
}

TEST_F(GridTest, CoversTheViewAtEveryScale) {
  for (const double scale : {0.01, 1.0, 3.0, 1000.0, -2.0}) {
    state.showGraph({0, 1, 0, 1}, scale, 1 / scale);
    state.view(Rect2{-10.5, 53.5, -10.5, 53.5}, 0);
    grid.stepX = 10 / std::abs(scale);
    grid.stepY = 10 * std::abs(scale);
    EXPECT_EQ(columns(show(), 5), (std::vector<int>{0, 10, 20, 30, 40, 50, 60})) << scale;
    EXPECT_EQ(rows(show(), 5), (std::vector<int>{3, 13, 23, 33, 43, 53, 63})) << scale;
  }
}

TEST_F(GridTest, IsExactFarFromTheOrigin) {
  const double origin = 1.7e9 + 0.5;
  state.view(Rect2{origin, origin + 64, 0, 64}, 0);
  grid.stepX = 10;
  EXPECT_EQ(columns(show(), 5), (std::vector<int>{9, 19, 29, 39, 49, 59}));
}

TEST_F(GridTest, IsUnlitAndSharp) {
  glEnable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glLineWidth(5);
  state.view(Rect2{-0.5, 63.5, 0, 64}, 0);
  grid.stepX = 32;
  const Image image = show();
  EXPECT_EQ(image.count(kMagenta), 2 * kSide);
  EXPECT_EQ(image.count(kBlack), (kSide - 2) * kSide);
}

TEST_F(GridTest, LeavesTheStateAsItWas) {
  glEnable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  glLineWidth(3);
  glColor3f(0.2F, 0.3F, 0.4F);
  grid.stepX = grid.stepY = 8;
  show();  // its matrices stay
  const GlState before = readGlState();
  show();
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(GridTest, ViewsThatShowNothingHaveNone) {
  ViewState2D empty;
  grid.stepX = grid.stepY = 8;
  glClear(GL_COLOR_BUFFER_BIT);
  drawGrid(grid, {empty.current()});
  drawGrid(grid, {state.current(), 0, 0});
  drawGrid(grid, {state.current(), kNaN, kNaN});
  EXPECT_EQ(context.read().count(kBlack), kSide * kSide);
}

}  // namespace
}  // namespace zyn::test
