#include "trace/PolylinePainter_gl.h"

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <tuple>

#include "support/GlTest_gl.h"

namespace {

/// How many vertices have been drawn by the function that follows.
std::size_t drawnVertices = 0;

}  // namespace

/// Stands in front of OpenGL's own, which the traces of this file that are drawn point by point do
/// without.
extern "C" void glVertex4d(GLdouble x, GLdouble y, GLdouble z, GLdouble w) {
  ++drawnVertices;
  const GLdouble place[] = {x, y, z, w};
  glVertex4dv(std::data(place));
}

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;
using test::Rgb;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kYellow{255, 255, 0};
constexpr LineStyle kPlainYellow{1, 1, 0, 1, 1, 1};

using Values = std::vector<double>;

/// How a trace goes through the square from -1 to 1.
enum class Shape { Sine, FastSine, Noise, SmallNoise, Walk, Steps, Upright, Spiral, Zero, Gaps };

std::string nameOf(Shape shape) {
  constexpr const char* kNames[] = {"Sine",  "FastSine", "Noise",  "SmallNoise", "Walk",
                                    "Steps", "Upright",  "Spiral", "Zero",       "Gaps"};
  return kNames[static_cast<int>(shape)];
}

PointSequence trace(Shape shape, std::size_t count) {
  std::mt19937 random(1);
  std::normal_distribution<double> normal;
  Values x(count);
  Values y(count);
  double walk = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(count);
    x[i] = 2 * t - 1;
    walk = 0.999 * walk + 0.008 * normal(random);
    switch (shape) {
      case Shape::Sine:
        y[i] = 0.9 * std::sin(20 * x[i]);
        break;
      case Shape::FastSine:
        y[i] = 0.9 * std::sin(1000 * x[i]);
        break;
      case Shape::Noise:
        y[i] = 0.2 * normal(random);
        break;
      case Shape::SmallNoise:
        y[i] = 0.1 * x[i] + 0.003 * normal(random);
        break;
      case Shape::Walk:
        y[i] = walk;
        break;
      case Shape::Steps:
        y[i] = 0.1 * static_cast<double>((i / 777) % 5);
        break;
      case Shape::Upright:
        y[i] = x[i];
        x[i] = 0.2 * normal(random);
        break;
      case Shape::Spiral:
        x[i] = 0.9 * t * std::cos(190 * t);
        y[i] = 0.9 * t * std::sin(190 * t);
        break;
      case Shape::Zero:
        y[i] = 0;
        break;
      case Shape::Gaps:
        y[i] = i % 500 < 20 ? kNaN : 0.8 * std::sin(300 * x[i]) * std::sin(3 * x[i]);
        break;
    }
  }
  return {x, y};
}

/// What drawing every point of a trace shows.
void drawEveryPoint(const PointSequence& points, double width) {
  const ReducedPath path = wholePath(points);
  glLineWidth(static_cast<GLfloat>(width));
  glColor3d(1, 1, 0);
  for (std::size_t part = 0; part < path.starts.size(); ++part) {
    const std::size_t end =
        part + 1 < path.starts.size() ? path.starts[part + 1] : path.points.size();
    glBegin(GL_LINE_STRIP);
    for (std::size_t i = path.starts[part]; i < end; ++i) {
      glVertex2d(points.x(path.points[i]), points.y(path.points[i]));
    }
    glEnd();
  }
  glLineWidth(1);
}

int differentPixels(const Image& a, const Image& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      count += a.at(x, y) == b.at(x, y) ? 0 : 1;
    }
  }
  return count;
}

/// A window onto the plane in a picture of 400 x 300 pixels.
struct Window {
  double x;
  double y;
  double halfWidth;
  double halfHeight;
};

class PolylineTest : public testing::Test {
 protected:
  static constexpr int kWidth = 400;
  static constexpr int kHeight = 300;

  static void look(const Window& window) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-window.halfWidth, window.halfWidth, -window.halfHeight, window.halfHeight, 1, 3);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    gluLookAt(window.x, window.y, 2, window.x, window.y, 0, 0, 1, 0);
  }

  Image drawn(const PointSequence& points, const LineStyle& style) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    cache.clear();
    drawPolyline2D(points, RunBoxes(points), style, cache);
    return context.read();
  }

  test::EglContext context{kWidth, kHeight};
  PathCache cache;
};

class PolylinePictureTest : public PolylineTest,
                            public testing::WithParamInterface<std::tuple<Shape, int>> {};

TEST_P(PolylinePictureTest, ShowsWhatDrawingEveryPointShows) {
  const auto [shape, width] = GetParam();
  const PointSequence points = trace(shape, 100000);
  const RunBoxes boxes(points);
  LineStyle style = kPlainYellow;
  style.width = width;
  std::vector<Window> windows = {
      {0, 0, 1, 1}, {0.31, 0.05, 0.11, 0.2}, {0.0013, 0.0021, 0.97, 1.03}};
  if (width == 1) {  // from afar OpenGL widens a trace of tiny steps anyhow
    windows.push_back({1, 2, 40, 30});
  }
  for (const Window& window : windows) {
    look(window);
    glClear(GL_COLOR_BUFFER_BIT);
    drawEveryPoint(points, width);
    const Image every = context.read();
    const int lit = every.count(kYellow);
    ASSERT_GT(lit, 0);
    const int allowed = width == 1 ? 2 : lit / 200;  // roundings at the ends of lines
    for (const bool isStable : {false, true}) {
      style.isStable = isStable;
      glClear(GL_COLOR_BUFFER_BIT);
      cache.clear();
      drawnVertices = 0;
      drawPolyline2D(points, boxes, style, cache);
      EXPECT_LE(differentPixels(context.read(), every), allowed)
          << "of " << lit << " at " << window.x << ", " << window.halfWidth;
      EXPECT_GT(drawnVertices, 0U);
      EXPECT_LT(drawnVertices, shape == Shape::Spiral ? 80000U : 400U * 60);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Every, PolylinePictureTest,
                         testing::Combine(testing::Values(Shape::Sine, Shape::FastSine,
                                                          Shape::Noise, Shape::SmallNoise,
                                                          Shape::Walk, Shape::Steps, Shape::Upright,
                                                          Shape::Spiral, Shape::Zero, Shape::Gaps),
                                          testing::Values(1, 2, 3)),
                         [](const auto& tested) {
                           return nameOf(std::get<0>(tested.param)) +
                                  std::to_string(std::get<1>(tested.param));
                         });

TEST_F(PolylineTest, AFewPointsAreDrawnExactly) {
  look({0, 0, 1, 1});
  for (const Shape shape : {Shape::Noise, Shape::Spiral, Shape::Sine}) {
    const PointSequence points = trace(shape, 5000);
    glClear(GL_COLOR_BUFFER_BIT);
    drawEveryPoint(points, 1);
    const Image every = context.read();
    EXPECT_EQ(differentPixels(drawn(points, kPlainYellow), every), 0) << nameOf(shape);
  }
}

TEST_F(PolylineTest, WhateverTheViewShowsOfATraceIsWhatEveryPointShows) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> unit(-1, 1);
  LineStyle stable = kPlainYellow;
  stable.isStable = true;
  int lit = 0;
  int different = 0;
  int differentStable = 0;
  for (int i = 0; i < 30; ++i) {
    const auto shape = static_cast<Shape>(i % 10);
    const auto count = static_cast<std::size_t>(1000 * std::exp(3 * std::fabs(unit(random))));
    const PointSequence points = trace(shape, count);
    const double half = std::exp(unit(random));
    look({0.5 * unit(random), 0.3 * unit(random), half, half * std::exp(unit(random))});
    glClear(GL_COLOR_BUFFER_BIT);
    drawEveryPoint(points, 1);
    const Image every = context.read();
    lit += every.count(kYellow);
    different += differentPixels(drawn(points, kPlainYellow), every);
    differentStable += differentPixels(drawn(points, stable), every);
  }
  EXPECT_GT(lit, 100000);
  EXPECT_LE(different, lit / 20000);  // where points lie on what OpenGL rounds
  EXPECT_LE(differentStable, lit / 20000);
}

TEST_F(PolylineTest, ManyPointsOnTheEdgesOfColumnsAddNothingToAStableLine) {
  look({0, 0, 1, 1});
  const PointSequence points = trace(Shape::Noise, 3000000);
  glClear(GL_COLOR_BUFFER_BIT);
  drawEveryPoint(points, 1);
  const Image every = context.read();
  LineStyle stable = kPlainYellow;
  stable.isStable = true;
  drawnVertices = 0;
  EXPECT_LE(differentPixels(drawn(points, stable), every), 2);
  EXPECT_LT(drawnVertices, 400U * 20);
}

TEST_F(PolylineTest, AStableLineThatHasLostItsOldestPointsIsDrawnAsANewOne) {
  for (const Shape shape : {Shape::FastSine, Shape::Noise, Shape::Walk, Shape::Gaps}) {
    PointSequence points = trace(shape, 800000);
    points.dropBefore(123457);
    std::vector<double> x;
    std::vector<double> y;
    for (std::size_t k = points.first(); k < points.end(); ++k) {
      x.push_back(points.x(k));
      y.push_back(points.y(k));
    }
    const PointSequence left(x, y);
    for (const double alpha : {1.0, 0.4}) {
      for (const double width : {1.0, 1.5, 3.0}) {  // a fraction is smooth
        LineStyle style{1, 1, 0, alpha, width, 1, true};
        for (const Window& window : {Window{0.4, 0, 0.7, 1}, Window{0.31, 0.05, 0.11, 0.2}}) {
          look(window);
          EXPECT_EQ(differentPixels(drawn(points, style), drawn(left, style)), 0)
              << nameOf(shape) << ", " << alpha << ", " << width;
        }
      }
    }
  }
}

TEST_F(PolylineTest, AViewThatMovesShowsWhatAFreshOneShows) {
  std::mt19937 random(3);
  std::uniform_int_distribution<int> step(-60, 60);
  std::uniform_real_distribution<double> fraction(0, 1);
  constexpr double kHalfWidth = 0.5;
  constexpr double kPixel = 2 * kHalfWidth / kWidth;
  for (const Shape shape : {Shape::Sine, Shape::Noise, Shape::Walk, Shape::Upright, Shape::Gaps}) {
    const PointSequence points = trace(shape, 100000);
    const RunBoxes boxes(points);
    PathCache moving;
    double x = 0.1;
    double y = 0.05;
    for (int i = 0; i < 12; ++i) {
      const double part = i % 5 == 4 ? fraction(random) : 0;
      x += kPixel * (step(random) + part);
      y += kPixel * step(random);
      for (const double zoom : {1.0, 0.3}) {  // two views of one trace
        look({x, y, kHalfWidth * zoom, kHalfWidth * zoom * kHeight / kWidth});
        glClear(GL_COLOR_BUFFER_BIT);
        drawPolyline2D(points, boxes, kPlainYellow, moving);
        const Image picture = context.read();
        EXPECT_EQ(differentPixels(picture, drawn(points, kPlainYellow)), 0)
            << nameOf(shape) << " in frame " << i;
      }
    }
  }
}

TEST_F(PolylineTest, TranslucentLinesAddUpAsThoseThroughEveryPoint) {
  look({0, 0, 1, 1});
  const PointSequence points = trace(Shape::Noise, 150000);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glColor4d(1, 1, 0, 0.25);
  glBegin(GL_LINE_STRIP);
  for (std::size_t i = 0; i < points.size(); ++i) {
    glVertex2d(points.x(i), points.y(i));
  }
  glEnd();
  const Image every = context.read();
  glDisable(GL_BLEND);
  EXPECT_LT(meanDifference(drawn(points, {1, 1, 0, 0.25, 1, 1}), every), 2);
}

TEST_F(PolylineTest, TheLineHasItsColourAndItsWidth) {
  look({200, 150, 200, 150});
  const PointSequence points({100.0, 300.0}, {150.5, 150.5});
  for (const int width : {1, 2, 3, 5}) {
    const Image picture = drawn(points, {0, 1, 1, 1, static_cast<double>(width), 1});
    EXPECT_EQ(picture.count({0, 255, 255}), 200 * width) << width;
    EXPECT_EQ(picture.count(kBlack), kWidth * kHeight - 200 * width);
  }
}

TEST_F(PolylineTest, TheWidthIsThatOfPixelsWhateverOthersLeft) {
  look({200, 150, 200, 150});
  const PointSequence points({100.0, 300.0}, {150.5, 150.5});
  for (const GLfloat left : {1.0F, 5.0F}) {
    glLineWidth(left);
    EXPECT_EQ(drawn(points, kPlainYellow).count(kYellow), 200);
    EXPECT_EQ(drawn(points, {1, 1, 0, 1, 2, 1}).count(kYellow), 400);
    EXPECT_EQ(drawn(points, {1, 1, 0, 1, 1, 3}).count(kYellow), 600);
    EXPECT_EQ(floatState(GL_LINE_WIDTH), left);
  }
}

TEST_F(PolylineTest, AWidthThatNoLineHasIsThatOfOnePixel) {
  look({200, 150, 200, 150});
  const PointSequence points({100.0, 300.0}, {150.5, 150.5});
  glLineWidth(5);
  for (const double width : {0.0, -3.0, kNaN}) {
    EXPECT_EQ(drawn(points, {1, 1, 0, 1, width, 1}).count(kYellow), 200);
    EXPECT_EQ(drawn(points, {1, 1, 0, 1, width, 3}).count(kYellow), 600);
  }
}

TEST_F(PolylineTest, PointsWithoutNeighboursAreDots) {
  look({200, 150, 200, 150});
  const PointSequence points({100.5, kNaN, 200.5, kNaN, 300.5, 310.5},
                             {50.5, 0, 60.5, 0, 70.5, 70.5});
  const Image picture = drawn(points, {1, 1, 0, 1, 3, 1});
  EXPECT_EQ(picture.at(100, kHeight - 1 - 50), kYellow);
  EXPECT_EQ(picture.at(201, kHeight - 1 - 61), kYellow);
  EXPECT_EQ(picture.at(150, kHeight - 1 - 55), kBlack);
  EXPECT_EQ(picture.at(250, kHeight - 1 - 65), kBlack);
  EXPECT_EQ(picture.count(kYellow), 2 * 9 + 3 * 10);
}

TEST_F(PolylineTest, NothingIsDrawnAcrossAGap) {
  look({200, 150, 200, 150});
  const PointSequence points({50, 150, kNaN, 250, 350}, {100.5, 100.5, 100.5, 100.5, 100.5});
  const Image picture = drawn(points, kPlainYellow);
  EXPECT_EQ(picture.count(kYellow), 200);
  EXPECT_EQ(picture.at(200, kHeight - 1 - 100), kBlack);
}

/// A trace that stays for some points before it goes up or down, with a gap after every hundred.
PointSequence steps(std::size_t count, std::size_t stay, double height) {
  std::mt19937 random(4);
  std::normal_distribution<double> normal(0, height / 5);
  Values x(count);
  Values y(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t step = i / stay;
    x[i] = 2.0 * static_cast<double>(step * stay) / static_cast<double>(count) - 1;
    y[i] = i % 100 == 99 ? kNaN : stay > 1 ? (step % 2 == 0 ? height : -height) : normal(random);
  }
  return {x, y};
}

TEST_F(PolylineTest, WhereALineEndsWithinAPixelOthersMayLightIt) {
  for (const double height : {0.01, 0.05, 0.2}) {
    look({0, 0, 1, 1});
    const PointSequence points = steps(100000, 1, height);
    glClear(GL_COLOR_BUFFER_BIT);
    drawEveryPoint(points, 1);
    const Image every = context.read();
    EXPECT_GT(every.count(kYellow), 400);
    EXPECT_EQ(differentPixels(drawn(points, kPlainYellow), every), 0) << height;
  }
}

TEST_F(PolylineTest, WhatLiesOnTheEdgeOfAColumnIsDrawnOnItsSide) {
  std::mt19937 random(8);
  std::uniform_real_distribution<double> step(-1, 1);
  Values x(3000);
  Values y(3000);
  for (std::size_t i = 1; i < x.size(); ++i) {
    x[i] = 0.3 * static_cast<double>(i) / 3000;
    y[i] = y[i - 1] + step(random);
  }
  const PointSequence points(x, y);
  int lit = 0;
  for (int i = 0; i < 25; ++i) {
    look({0.3 * (1 + step(random)) / 2, 0, 200, 150});  // a pixel's edge is somewhere in the trace
    glClear(GL_COLOR_BUFFER_BIT);
    drawEveryPoint(points, 1);
    const Image every = context.read();
    lit += every.count(kYellow);
    EXPECT_EQ(differentPixels(drawn(points, kPlainYellow), every), 0) << i;
  }
  EXPECT_GT(lit, 25 * 20);
}

TEST_F(PolylineTest, WidePointsThatRepeatEachOtherAddNothing) {
  look({0, 0, 1, 1});
  LineStyle style = kPlainYellow;
  style.width = 3;
  const PointSequence points = steps(100000, 25, 0.601);
  glClear(GL_COLOR_BUFFER_BIT);
  drawEveryPoint(points, style.width);
  const Image every = context.read();
  EXPECT_GT(every.count(kYellow), 10000);
  EXPECT_EQ(differentPixels(drawn(points, style), every), 0);
}

TEST_F(PolylineTest, SmoothLinesAreAsDarkInEveryDirection) {
  constexpr std::size_t kCount = 200000;
  Values x(kCount);
  Values y(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    const double t = static_cast<double>(i) / kCount;
    x[i] = 0.9 * t * std::cos(400 * t);
    y[i] = 0.9 * t * std::sin(400 * t);
  }
  const PointSequence points(std::move(x), std::move(y));
  look({0, 0, 1, 0.75});
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glClear(GL_COLOR_BUFFER_BIT);
  drawEveryPoint(points, 0.5);
  const Image every = context.read();
  glDisable(GL_BLEND);
  LineStyle style = kPlainYellow;
  style.width = 0.5;
  EXPECT_LT(meanDifference(drawn(points, style), every), 0.05);
  glDisable(GL_LINE_SMOOTH);
}

TEST_F(PolylineTest, OnlyLinesOfAWholeWidthInThePlaneStaySharp) {
  const PointSequence points({-0.9, 0.9}, {-0.5, 0.6});
  look({0, 0, 1, 0.75});
  const auto isSmooth = [&](auto draw, double width) {
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
    LineStyle style = kPlainYellow;
    style.width = width;
    RunBoxes boxes(points);
    PathCache fresh;
    draw(points, boxes, style, fresh);
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
    const Image image = context.read();
    return image.count(kBlack) + image.count(kYellow) < image.width() * image.height();
  };
  EXPECT_FALSE(isSmooth(drawPolyline2D, 1));
  EXPECT_TRUE(isSmooth(drawPolyline2D, 1.5));
  EXPECT_FALSE(isSmooth(drawPolyline2D, 2));
  EXPECT_TRUE(isSmooth(drawPolyline3D, 1));
  EXPECT_TRUE(isSmooth(drawPolyline3D, 2));
}

TEST_F(PolylineTest, The2DLineLiesInThePlane) {
  look({200, 150, 200, 150});
  const PointSequence points({100.0, 300.0}, {150.5, 150.5}, {500, -700});
  EXPECT_EQ(drawn(points, kPlainYellow).count(kYellow), 200);
  glClear(GL_COLOR_BUFFER_BIT);
  drawPolyline3D(points, RunBoxes(points), kPlainYellow, cache);
  EXPECT_LT(context.read().count(kYellow), 200);
}

TEST_F(PolylineTest, TheColourIsNotLit) {
  look({200, 150, 200, 150});
  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
  const PointSequence points({100.0, 300.0}, {150.5, 150.5});
  EXPECT_EQ(drawn(points, kPlainYellow).count(kYellow), 200);
}

TEST_F(PolylineTest, FarFromTheOriginATraceKeepsItsShape) {
  // As a view looks that puts what single precision cannot hold of its centre into the projection.
  constexpr double kFar = 1.7e9;
  const double rounded = static_cast<float>(kFar + 50);
  const auto lookAt = [](double x, double remainder) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(remainder - 50, remainder + 50, -1, 1, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(-x, 0, 0);
  };
  Values x;
  Values far;
  Values y;
  for (int i = 0; i <= 4000; ++i) {
    x.push_back(i * 0.025);
    far.push_back(kFar + i * 0.025);
    y.push_back(0.8 * std::sin(i * 0.01));
  }
  lookAt(50, 0);
  const Image near = drawn(PointSequence(x, y), kPlainYellow);
  lookAt(rounded, kFar + 50 - rounded);
  EXPECT_LE(differentPixels(drawn(PointSequence(far, y), kPlainYellow), near), 4);
  EXPECT_GT(near.count(kYellow), 400);
}

TEST_F(PolylineTest, LinesThatLeadVeryFarAwayAreDrawn) {
  look({5, 3.75, 5, 3.75});
  for (const double far : {1e3, 1e6, 1e8, 1e9, 1e16, 1e40, 1e300}) {
    EXPECT_EQ(drawn(PointSequence({-far, far}, {2.51, 2.51}), kPlainYellow).count(kYellow), kWidth)
        << far;
    EXPECT_EQ(drawn(PointSequence({4.99, 5.01}, {-1, far}), kPlainYellow).count(kYellow), kHeight)
        << far;
    const Image diagonal = drawn(PointSequence({-far, far}, {-far, far}), kPlainYellow);
    EXPECT_NEAR(diagonal.count(kYellow), kHeight, 1) << far;
    EXPECT_EQ(diagonal.at(150, kHeight - 1 - 150), kYellow) << far;
  }
}

TEST_F(PolylineTest, ALineThatComesBackElsewhereIsNotConnectedAcrossTheView) {
  look({5, 3.75, 5, 3.75});
  // Out at the top, around the corner far away, and in from the right.
  const PointSequence points({2.01, 2.01, 1e12, 1e12, 7.99}, {1, 1e16, 1e16, 5.01, 5.01});
  const Image picture = drawn(points, kPlainYellow);
  EXPECT_EQ(picture.count(kYellow), kHeight - 40 + 80);
  EXPECT_EQ(picture.at(80, 0), kYellow);
  EXPECT_EQ(picture.at(kWidth - 1, kHeight - 1 - 200), kYellow);
}

TEST_F(PolylineTest, WithoutAViewportNothingIsDrawn) {
  glViewport(0, 0, 0, 0);
  const PointSequence points({-1, 1}, {0, 0});
  EXPECT_EQ(drawn(points, kPlainYellow).count(kYellow), 0);
}

/// A helix of many turns around the z axis, seen from its side: lines of different depths cross.
PointSequence helix(std::size_t count) {
  Values x(count);
  Values y(count);
  Values z(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(count);
    x[i] = 0.8 * std::cos(30 * t);
    y[i] = 0.8 * std::sin(30 * t);
    z[i] = 2 * t - 1;
  }
  return {x, y, z};
}

/// Looks at the origin from the side, a plate in the middle hiding what is behind it.
void lookFromTheSide() {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(-1, 1, -1, 1, 1, 9);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  gluLookAt(3, 2, 1, 0, 0, 0, 0, 0, 1);
  glEnable(GL_DEPTH_TEST);
}

void drawPlate() {
  glColor3d(0, 0, 1);
  glBegin(GL_QUADS);
  glVertex3d(0.3, -0.7, -0.7);
  glVertex3d(0.3, 0.7, -0.7);
  glVertex3d(0.3, 0.7, 0.7);
  glVertex3d(0.3, -0.7, 0.7);
  glEnd();
}

TEST_F(PolylineTest, InSpaceThePictureIsThatOfEveryPointToo) {
  lookFromTheSide();
  const PointSequence points = helix(400000);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  drawPlate();
  glColor3d(1, 1, 0);
  glBegin(GL_LINE_STRIP);
  for (std::size_t i = 0; i < points.size(); ++i) {
    glVertex3d(points.x(i), points.y(i), points.z(i));
  }
  glEnd();
  const Image every = context.read();
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  drawPlate();
  drawnVertices = 0;
  drawPolyline3D(points, RunBoxes(points), kPlainYellow, cache);
  const Image picture = context.read();
  EXPECT_GT(every.count({0, 0, 255}), 1000);
  EXPECT_GT(every.count(kYellow), 1000);
  EXPECT_LE(differentPixels(picture, every), 4);
  EXPECT_GT(drawnVertices, 0U);
  EXPECT_LT(drawnVertices, points.size() / 2);
}

TEST_F(PolylineTest, UnderPerspectiveEveryPointIsDrawn) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluPerspective(40, 4.0 / 3, 1, 10);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  gluLookAt(3, 2, 1, 0, 0, 0, 0, 0, 1);
  const PointSequence points = helix(10000);
  glColor3d(1, 1, 0);
  glBegin(GL_LINE_STRIP);
  for (std::size_t i = 0; i < points.size(); ++i) {
    glVertex3d(points.x(i), points.y(i), points.z(i));
  }
  glEnd();
  const Image every = context.read();
  EXPECT_GT(every.count(kYellow), 1000);
  glClear(GL_COLOR_BUFFER_BIT);
  drawPolyline3D(points, RunBoxes(points), kPlainYellow, cache);
  EXPECT_EQ(differentPixels(context.read(), every), 0);
}

TEST_F(PolylineTest, ASelectionFindsTheLineWhereItIs) {
  const PointSequence points = trace(Shape::Noise, 100000);
  const RunBoxes boxes(points);
  const auto hits = [&](double x, double y) {
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    look({x, y, 0.005, 0.005});
    drawPolyline2D(points, boxes, kPlainYellow, cache);
    return glRenderMode(GL_RENDER);
  };
  EXPECT_EQ(hits(0, 0), 1);
  EXPECT_EQ(hits(-0.5, 0.2), 1);
  EXPECT_EQ(hits(0, 0.99), 0);
  EXPECT_EQ(hits(1.2, 0), 0);
}

TEST_F(PolylineTest, ASelectionTellsTheDepthsOfTheLine) {
  PointSequence points = helix(100000);
  const RunBoxes boxes(points);
  const auto depths = [&](const auto& draw) {
    lookFromTheSide();
    glDisable(GL_DEPTH_TEST);
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(7);
    draw();
    EXPECT_EQ(glRenderMode(GL_RENDER), 1);
    EXPECT_EQ(buffer[3], 7U);
    return std::pair(buffer[1], buffer[2]);
  };
  const auto every = depths([&] {
    glBegin(GL_LINE_STRIP);
    for (std::size_t i = 0; i < points.size(); ++i) {
      glVertex3d(points.x(i), points.y(i), points.z(i));
    }
    glEnd();
  });
  const auto ours = depths([&] { drawPolyline3D(points, boxes, kPlainYellow, cache); });
  EXPECT_NEAR(ours.first, every.first, 1e4);
  EXPECT_NEAR(ours.second, every.second, 1e4);
}

TEST_F(PolylineTest, AFeedbackBufferGetsEveryPoint) {
  look({0, 0, 1, 1});
  const PointSequence points = trace(Shape::Noise, 5000);
  const RunBoxes boxes(points);
  std::vector<GLfloat> buffer(100000);
  const auto feedback = [&](const auto& draw) {
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_2D, buffer.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const GLint count = glRenderMode(GL_RENDER);
    return std::vector<GLfloat>(buffer.begin(), buffer.begin() + std::max(count, 0));
  };
  const std::vector<GLfloat> every = feedback([&] { drawEveryPoint(points, 1); });
  ASSERT_EQ(every.size(), 4999U * 5);
  for (const auto draw : {drawPolyline2D, drawPolyline3D}) {
    const std::vector<GLfloat> ours = feedback([&] { draw(points, boxes, kPlainYellow, cache); });
    ASSERT_EQ(ours.size(), every.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
      ASSERT_NEAR(ours[i], every[i], 0.01) << i;
    }
  }
}

class RecordedPolylineTest : public PolylineTest {
 protected:
  /// What a display list shows under the current matrices.
  Image called(GLuint list) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glCallList(list);
    return context.read();
  }

  static GLuint recorded(const std::function<void()>& draw, GLenum mode = GL_COMPILE) {
    const GLuint list = glGenLists(1);
    glNewList(list, mode);
    draw();
    glEndList();
    return list;
  }

  PointSequence points = trace(Shape::Noise, 20000);
  RunBoxes boxes{points};
};

TEST_F(RecordedPolylineTest, ItTurnsAndMovesWithTheCamera) {
  for (const auto draw : {drawPolyline2D, drawPolyline3D}) {
    look({0.3, 0.2, 0.01, 0.02});
    const GLuint list = recorded([&] { draw(points, boxes, kPlainYellow, cache); });
    for (const double angle : {0.0, 30.0, 145.0}) {
      look({0.1, 0, 1, 1});
      glRotated(angle, 0, 0, 1);
      glScaled(0.5, 0.7, 1);
      glClear(GL_COLOR_BUFFER_BIT);
      drawEveryPoint(points, 1);
      const Image every = context.read();
      EXPECT_GT(every.count(kYellow), 1000);
      EXPECT_EQ(differentPixels(called(list), every), 0) << angle;
    }
  }
}

TEST_F(RecordedPolylineTest, TheListLeavesMatrixAndStateAsItFindsThem) {
  for (const GLenum mode : {GL_COMPILE, GL_COMPILE_AND_EXECUTE}) {
    look({0, 0, 1, 1});
    const GLuint list = recorded(
        [&] {
          drawPolyline2D(points, boxes, {1, 1, 0, 0.5, 3, 2}, cache);
        },
        mode);
    glTranslated(0.5, 0.25, 0);
    glRotated(40, 1, 2, 3);
    glEnable(GL_LIGHTING);
    glEnable(GL_LINE_SMOOTH);
    glLineWidth(4);
    glPointSize(5);
    readGlState();
    glColor4f(0.125F, 0.25F, 0.375F, 0.5F);
    const GlState before = readGlState();
    glCallList(list);
    EXPECT_EQ(differences(before, readGlState()), kNone);
    glDisable(GL_LIGHTING);
    glDisable(GL_LINE_SMOOTH);
  }
}

TEST_F(RecordedPolylineTest, ItIsShownWhileItIsRecordedIfAskedFor) {
  look({0, 0, 1, 1});
  const Image image = drawn(points, kPlainYellow);
  glClear(GL_COLOR_BUFFER_BIT);
  recorded([&] { drawPolyline2D(points, boxes, kPlainYellow, cache); }, GL_COMPILE_AND_EXECUTE);
  EXPECT_EQ(differentPixels(context.read(), image), 0);
}

TEST_F(RecordedPolylineTest, ItsColourAndWidthAreItsOwnWhateverTheStateAtTheCall) {
  look({200, 150, 200, 150});
  const PointSequence line({100.0, 300.0}, {150.5, 150.5});
  const RunBoxes box(line);
  const auto draw = [&] { drawPolyline2D(line, box, {1, 1, 0, 1, 2, 1}, cache); };
  for (const bool litThen : {false, true}) {
    setEnabled(GL_LIGHTING, litThen);
    const GLuint list = recorded(draw);
    for (const bool litNow : {false, true}) {
      setEnabled(GL_LIGHTING, litNow);
      glLineWidth(litNow ? 5 : 1);
      EXPECT_EQ(called(list).count(kYellow), 400) << litThen << litNow;
      EXPECT_EQ(isEnabled(GL_LIGHTING), litNow);
    }
  }
}

/// lighting, colour material, other state, alpha
using Surroundings = std::tuple<bool, bool, bool, double>;

class PolylineStateTest : public test::GlTest, public testing::WithParamInterface<Surroundings> {};

TEST_P(PolylineStateTest, DrawingLeavesTheStateAsItWas) {
  const auto [lighting, colourMaterial, other, alpha] = GetParam();
  setEnabled(GL_LIGHTING, lighting);
  setEnabled(GL_BLEND, other);
  setEnabled(GL_DEPTH_TEST, other);
  setEnabled(GL_CULL_FACE, other);
  setEnabled(GL_LINE_SMOOTH, other);
  setEnabled(GL_POINT_SMOOTH, other);
  glHint(GL_LINE_SMOOTH_HINT, GL_DONT_CARE);
  glLineWidth(other ? 2.0F : 1.0F);
  glPointSize(other ? 4.0F : 1.0F);
  setEnabled(GL_COLOR_MATERIAL, colourMaterial);
  readGlState();  // Mesa applies materials set so far only now, over those from the colour
  glColor4f(0.125F, 0.25F, 0.375F, 0.5F);

  const PointSequence points({-0.5, 0.5, kNaN, 0}, {0, 0.5, 0, 0.25}, {0, 0.1, 0, 0.2});
  const RunBoxes boxes(points);
  PathCache cache;
  glMatrixMode(GL_MODELVIEW);
  glTranslated(0.1, 0.2, 0.3);
  glRotated(12, 1, 2, 3);
  glMatrixMode(other ? GL_PROJECTION : GL_TEXTURE);
  const GlState before = readGlState();
  for (const double width : {1.0, 1.5, 4.0}) {
    drawPolyline2D(points, boxes, {1, 0, 0, alpha, width, 1}, cache);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "2D, " << width;
    drawPolyline3D(points, boxes, {1, 0, 0, alpha, width, 1}, cache);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "3D, " << width;
  }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, PolylineStateTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Values(1.0, 0.5)));

}  // namespace
}  // namespace zyn
