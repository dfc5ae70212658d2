#include "view2d/ViewMatrices_gl.h"

#include <cmath>
#include <limits>

#include "support/GlTest_gl.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr Rgb kRed{255, 0, 0};

struct Screen {
  double x = 0;
  double y = 0;
  double z = 0;
};

/// Where the matrices put a point, from -1 to 1.
Screen project(double x, double y) {
  GLdouble modelview[16];
  GLdouble projection[16];
  glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  const GLint viewport[4] = {-1, -1, 2, 2};
  Screen screen;
  gluProject(x, y, 0, modelview, projection, viewport, &screen.x, &screen.y, &screen.z);
  return screen;
}

ScaledView scaledView(const ViewState2D& state) {
  return {state.current(), state.xScale(), state.yScale()};
}

/// What the model-view matrix takes away, in model units.
Point translation() {
  GLdouble matrix[16];
  glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
  return {-matrix[12] / matrix[0], -matrix[13] / matrix[5], 0};
}

class ViewMatricesTest : public GlTest {
 protected:
  ViewMatricesTest() { state.resize({kSide, kSide}); }

  /// Draws a point there, with coordinates that leave the model-view matrix nothing to take away.
  void drawRedAt(const Point& point) const {
    glClear(GL_COLOR_BUFFER_BIT);
    const Point away = translation();
    glPushMatrix();
    glTranslated(away.x, away.y, 0);
    glColor3f(1, 0, 0);
    glBegin(GL_POINTS);
    glVertex2d(point.x - away.x, point.y - away.y);
    glEnd();
    glPopMatrix();
  }

  ViewState2D state;
};

TEST_F(ViewMatricesTest, ShowWhatTheViewShows) {
  state.view(Rect2{-3, 5, 10, 18}, 0);
  loadView(scaledView(state));
  EXPECT_NEAR(project(-3, 10).x, -1, 1e-6);
  EXPECT_NEAR(project(-3, 10).y, -1, 1e-6);
  EXPECT_NEAR(project(5, 18).x, 1, 1e-6);
  EXPECT_NEAR(project(5, 18).y, 1, 1e-6);
  EXPECT_NEAR(project(1, 14).z, 0.5, 1e-6);
}

TEST_F(ViewMatricesTest, AreTheProjectionAboutTheCentreAndTheTranslationToIt) {
  state.view(Rect2{-3, 5, 10, 18}, 0);
  loadView(scaledView(state));
  GLdouble projection[16];
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  EXPECT_EQ(projection[0], 2.0 / 8);
  EXPECT_EQ(projection[5], 2.0 / 8);
  EXPECT_EQ(projection[10], -1);
  EXPECT_EQ(projection[12], 0);
  EXPECT_EQ(projection[14], -2);
  GLdouble modelview[16];
  glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
  EXPECT_EQ(modelview[12], -1);
  EXPECT_EQ(modelview[13], -14);
  EXPECT_EQ(modelview[14], -2);
  EXPECT_EQ(modelview[0], 1);
  EXPECT_EQ(integerState(GL_MATRIX_MODE), GL_MODELVIEW);
}

TEST_F(ViewMatricesTest, PointsAreDrawnWhereTheViewMapsThem) {
  state.showGraph({0, 40, -1, 7}, 0.5, -3);
  for (int step = 0; step < 5; ++step) {
    loadView(scaledView(state));
    for (const int column : {0, 17, kSide - 1}) {
      for (const int row : {0, 40, kSide - 1}) {
        const Point corner = state.getPoint({column, row});
        const Point next = state.getPoint({column + 1, row + 1});
        drawRedAt({(corner.x + next.x) / 2, (corner.y + next.y) / 2, 0});
        EXPECT_EQ(context.read().at(column, row), kRed) << step << " " << column << " " << row;
      }
    }
    state.pan(5, -9);
    state.turnWheel({10, 50}, -120 * step, {});
  }
}

TEST_F(ViewMatricesTest, FarFromTheOriginNothingIsLost) {
  for (const double origin : {1e6, 1.7e9, -3e12}) {
    state.view(Rect2{origin, origin + 1, origin / 3, origin / 3 + 1}, 0);
    loadView(scaledView(state));
    for (const int pixel : {0, 20, kSide - 1}) {
      const Point corner = state.getPoint({pixel, pixel});
      const double half = state.pixelSize() / 2;
      drawRedAt({corner.x + half, corner.y - half, 0});
      EXPECT_EQ(context.read().at(pixel, pixel), kRed) << origin << " " << pixel;
    }
  }
}

TEST_F(ViewMatricesTest, FarFromTheOriginAScaleLosesNothingEither) {
  for (const double scale : {1.0 / 3000, 0.7, -1e-3}) {
    state.showGraph({1.7e9, 1.7e9 + 1000, 3e5, 3e5 + 7}, scale, 0.1);
    loadView(scaledView(state));
    const Point corner = state.getPoint({0, kSide});
    EXPECT_NEAR(project(corner.x, corner.y).x, -1, 1e-3) << scale;
    EXPECT_NEAR(project(corner.x, corner.y).y, -1, 1e-3) << scale;
  }
}

TEST_F(ViewMatricesTest, RelativeToAPointNothingIsLostEither) {
  state.view(Rect2{1.7e9, 1.7e9 + 1e-3, 0, 1e-3}, 0);
  loadViewAt({1.7e9, 0, 0}, scaledView(state));
  const double width = state.current().width();
  EXPECT_NEAR(project(0, 0).x, (1.7e9 - state.current().centreX()) / width * 2, 1e-6);
  EXPECT_NEAR(project(width / 4, 0).x - project(0, 0).x, 0.5, 1e-6);
  EXPECT_NEAR(project(0, 5e-4).y, 0, 1e-6);
}

TEST_F(ViewMatricesTest, TheOriginIsInModelUnits) {
  state.showGraph({0, 40, 0, 10}, 0.5, 2);
  loadViewAt({40, 10, 0}, scaledView(state));
  const Screen relative = project(-8, 3);
  loadView(scaledView(state));
  EXPECT_NEAR(relative.x, project(32, 13).x, 1e-6);
  EXPECT_NEAR(relative.y, project(32, 13).y, 1e-6);
}

TEST_F(ViewMatricesTest, ShowAPartOfTheView) {
  state.view(Rect2{0, 8, 0, 8}, 0);
  const PicturePart part{0.25, 0.5, 0.5, 1.0};
  loadView(scaledView(state), part);
  EXPECT_NEAR(project(2, 4).x, -1, 1e-6);
  EXPECT_NEAR(project(4, 8).x, 1, 1e-6);
  EXPECT_NEAR(project(2, 4).y, -1, 1e-6);
  EXPECT_NEAR(project(4, 8).y, 1, 1e-6);
  loadViewAt({2, 4, 0}, scaledView(state), part);
  EXPECT_NEAR(project(0, 0).x, -1, 1e-6);
  EXPECT_NEAR(project(2, 4).y, 1, 1e-6);
}

TEST_F(ViewMatricesTest, TinyAndHugeViews) {
  for (const double size : {1e-25, 1e-9, 1e12, 1e25}) {
    state.view(Rect2{0, size, 0, size}, 0);
    loadView(scaledView(state));
    EXPECT_NEAR(project(size, 0).x, 1, 1e-5) << size;
    EXPECT_NEAR(project(size, 0).y, -1, 1e-5) << size;
  }
}

TEST_F(ViewMatricesTest, ViewsThatShowNothingHideEverything) {
  state.view(Rect2{0, 8, 0, 8}, 0);
  const CParamsVue2D good(state.current());
  std::vector<ScaledView> useless{{CParamsVue2D()}, {good, kNaN, 1}, {good, 1, kInfinity}};
  for (const Rect2& rectangle : {Rect2{kNaN, 1, 0, 1},
                                 {0, kInfinity, 0, 1},
                                 {0, 1e35, 0, 1e35},
                                 {0, 1e-35, 0, 1e-35},
                                 {1e33, 1e33 + 1e20, 0, 1}}) {
    state.view(rectangle, 0);
    useless.push_back(scaledView(state));
  }
  for (const ScaledView& scaled : useless) {
    glClear(GL_COLOR_BUFFER_BIT);
    loadView(scaled);
    glColor3f(1, 0, 0);
    glRectd(-100, -100, 100, 100);
    loadViewAt({0, 0, 0}, scaled);
    glRectd(-100, -100, 100, 100);
    EXPECT_EQ(context.read().count(kRed), 0);
  }
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace zyn::test
