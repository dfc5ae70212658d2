#include "plot/DrawingPainter_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "support/GlTest_gl.h"
#include "trace/PolylinePainter_gl.h"

namespace zyn {
namespace {

using test::difference;
using test::differences;
using test::GlState;
using test::GlTest;
using test::Image;
using test::kNone;
using test::meanDifference;
using test::readGlState;
using test::Rgb;

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kRed{255, 0, 0};
constexpr DrawColour kInk{1, 0, 0, 1};
constexpr PlanePoint kPicture{64, 64};

/// A character that is a black box, an em high and half as wide.
std::shared_ptr<const ShapedText> blockText() {
  auto shape = std::make_shared<GlyphShape>();
  shape->contours = {{{0, 0}, {0.5, 0}, {0.5, 1}, {0, 1}}};
  shape->filled = {{0, 0}, {0.5, 0}, {0.5, 1}, {0, 0}, {0.5, 1}, {0, 1}};
  auto text = std::make_shared<ShapedText>();
  text->glyphs = {{shape, {0, 0}}, {shape, {1, 0}}};
  text->width = 2;
  return text;
}

/// The curve of a sine through the whole picture, with noise.
struct Curve {
  explicit Curve(std::size_t count, double noise = 0) {
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    std::vector<double> x;
    std::vector<double> y;
    for (std::size_t i = 0; i < count; ++i) {
      x.push_back(64.0 * static_cast<double>(i) / static_cast<double>(count - 1));
      y.push_back(32 + 20 * std::sin(x.back() / 5) + noise * normal(random));
    }
    points = PointSequence(x, y);
    boxes = RunBoxes(points);
  }

  PointSequence points;
  RunBoxes boxes;
  PathCache cache;
};

class DrawingPainterTest : public GlTest {
 protected:
  DrawingPainterTest() { clear(); }

  static void clear() {
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }

  Image painted(const Drawing& drawing, const PicturePart& part = {}) {
    clear();
    paintDrawing(drawing, kPicture, part);
    return context.read();
  }
  Image painted(DrawnItem item, const std::optional<PixelBox>& clip = {}) {
    DrawnLayer layer{clip, {}};
    layer.items.push_back(std::move(item));
    return painted(Drawing{layer});
  }

  /// Rows from the bottom up.
  static Rgb at(const Image& image, int x, int y) { return image.at(x, kSide - 1 - y); }

  static DrawnTrace traceOf(Curve& curve, const Stroke& stroke) {
    return {stroke,       nullptr,      &curve.points,
            &curve.boxes, &curve.cache, {{1, 0, 0, 0}, {0, 1, 0, 0}, {}}};
  }
};

TEST_F(DrawingPainterTest, BoxesAreExact) {
  const Image image = painted(DrawnBoxes{kInk, {{10, 20, 5, 8}}});
  EXPECT_EQ(image.count(kRed), 30);
  EXPECT_EQ(at(image, 10, 5), kRed);
  EXPECT_EQ(at(image, 19, 7), kRed);
  EXPECT_EQ(image.count(kWhite), kSide * kSide - 30);
}

TEST_F(DrawingPainterTest, LinesAreOnePixelWide) {
  const Image image =
      painted(DrawnLines{{kInk}, {{{10, 5.5}, {20, 5.5}, {30.5, 40}, {30.5, 50}}, {0, 2}}});
  for (int i = 10; i < 20; ++i) EXPECT_EQ(at(image, i, 5), kRed);
  for (int i = 40; i < 50; ++i) EXPECT_EQ(at(image, 30, i), kRed);
  EXPECT_EQ(image.count(kRed), 20);
}

TEST_F(DrawingPainterTest, DashesLeaveGaps) {
  Stroke stroke{kInk};
  stroke.dashes = {4, 2};
  const Image image = painted(DrawnLines{stroke, {{{0, 5.5}, {64, 5.5}}, {0}}});
  EXPECT_EQ(at(image, 3, 5), kRed);
  EXPECT_EQ(at(image, 4, 5), kWhite);
  EXPECT_EQ(at(image, 6, 5), kRed);
  EXPECT_NEAR(image.count(kRed), 64 * 4 / 6, 3);
}

TEST_F(DrawingPainterTest, APointOnItsOwnIsADot) {
  Stroke stroke{kInk};
  stroke.leastDot = 3;
  const DrawnLines lone{stroke, {{{20.5, 30.5}}, {0}}};
  EXPECT_EQ(painted(lone).count(kRed), 9);
  Curve curve(2);
  curve.points = PointSequence({20.5}, {30.5});
  curve.boxes = RunBoxes(curve.points);
  EXPECT_EQ(painted(traceOf(curve, stroke)).count(kRed), 9);
  stroke.dashes = {4, 2};
  EXPECT_EQ(painted(traceOf(curve, stroke)).count(kRed), 9);
  stroke = {kInk, 5};
  stroke.leastDot = 3;
  EXPECT_EQ(painted(DrawnLines{stroke, lone.lines}).count(kRed), 25) << "as wide as the line";
}

TEST_F(DrawingPainterTest, NothingIsDrawnOutsideOfTheClip) {
  const Image image = painted(DrawnBoxes{kInk, {{-10, 100, -10, 100}}}, PixelBox{8, 16, 4, 6});
  EXPECT_EQ(image.count(kRed), 16);
  EXPECT_EQ(at(image, 8, 4), kRed);
  EXPECT_EQ(painted(DrawnBoxes{kInk, {{0, 64, 0, 64}}}, PixelBox{9, 9, 4, 6}).count(kRed), 0);
}

/// Lines of a pixel's width are those of the published traces.
TEST_F(DrawingPainterTest, ASharpTraceIsThatOfTheTraces) {
  for (const std::size_t count : {20U, 500U, 100000U}) {
    Curve curve(count, 1.5);
    const Image ours = painted(traceOf(curve, {kInk}));
    clear();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kSide, 0, kSide, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    PathCache cache;
    drawPolyline2D(curve.points, curve.boxes, {1, 0, 0, 1, 1, 1, true}, cache);
    EXPECT_EQ(ours, context.read()) << count;
    EXPECT_GT(ours.count(kRed), 60);
  }
}

/// However many points there are, it is the line through some of them.
TEST_F(DrawingPainterTest, ASmoothTraceIsItsLine) {
  const Stroke stroke{kInk, 1.5, true, {}};
  const Curve some(200);
  DrawnLines line{stroke, {}};
  line.lines.starts = {0};
  for (std::size_t i = 0; i < some.points.size(); ++i) {
    line.lines.points.push_back({some.points.x(i), some.points.y(i)});
  }
  const Image expected = painted(line);
  for (const std::size_t count : {200U, 2000U, 100000U}) {
    Curve curve(count);
    EXPECT_LT(meanDifference(painted(traceOf(curve, stroke)), expected), 2) << count;
  }
  EXPECT_LT(expected.count(kWhite), kSide * kSide - 100);
}

/// Noise covers the pixels that lines through all points cover, or those beside them.
TEST_F(DrawingPainterTest, SmoothNoiseFillsWhatItsLinesFill) {
  const Stroke stroke{kInk, 1, true, {}};
  Curve curve(5000, 4);
  DrawnLines all{stroke, {}};
  all.lines.starts = {0};
  for (std::size_t i = 0; i < curve.points.size(); ++i) {
    all.lines.points.push_back({curve.points.x(i), curve.points.y(i)});
  }
  const Image ours = painted(traceOf(curve, stroke));
  const Image expected = painted(all);
  int lost = 0;
  int added = 0;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 1; x + 1 < kSide; ++x) {
      const int nearest = std::min({ours.at(x - 1, y).g, ours.at(x, y).g, ours.at(x + 1, y).g});
      lost += expected.at(x, y).g < 64 && nearest > 192 ? 1 : 0;
      added += expected.at(x, y) == kWhite && ours.at(x, y).g < 128 ? 1 : 0;
    }
  }
  EXPECT_LE(lost, 2);
  EXPECT_LE(added, 5);
  EXPECT_GT(ours.count(kRed), 1000);
}

TEST_F(DrawingPainterTest, ASmoothTraceMovedByWholePixelsIsTheSame) {
  Curve curve(100000, 4);
  const auto moved = [&](PathCache& cache, double by) {
    DrawnTrace trace = traceOf(curve, {kInk, 1, true, {}});
    trace.cache = &cache;
    trace.mapping.x.constant = by;
    return painted(trace);
  };
  PathCache used;
  for (const double by : {0.0, -3.0, 5.0}) {
    PathCache fresh;
    EXPECT_EQ(moved(used, by), moved(fresh, by)) << by;
  }
}

TEST_F(DrawingPainterTest, AreasReachToTheirBase) {
  const Image image = painted(DrawnArea{kInk, {{{10, 30}, {20, 30}, {30, 20}, {40, 10}}, {0}}, 20});
  EXPECT_EQ(at(image, 15, 29), kRed);
  EXPECT_EQ(at(image, 15, 20), kRed);
  EXPECT_EQ(at(image, 15, 19), kWhite);
  EXPECT_EQ(at(image, 38, 15), kRed);
  EXPECT_EQ(at(image, 38, 20), kWhite);
  EXPECT_EQ(at(image, 28, 25), kWhite);
}

/// How far a place lies within a convex outline, whose corners run counterclockwise; below 0
/// outside.
double depthWithin(const std::vector<PlanePoint>& outline, const PlanePoint& at) {
  double depth = 1e9;
  for (std::size_t i = 0; i < outline.size(); ++i) {
    const PlanePoint& from = outline[i];
    const PlanePoint& to = outline[(i + 1) % outline.size()];
    const double x = to.x - from.x;
    const double y = to.y - from.y;
    depth = std::min(depth, (x * (at.y - from.y) - y * (at.x - from.x)) / std::hypot(x, y));
  }
  return depth;
}

TEST_F(DrawingPainterTest, PolygonsCoverThePixelsWhoseMiddlesTheyHold) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> within(-10, kSide + 10);
  std::uniform_real_distribution<double> radius(2, 30);
  std::uniform_int_distribution<int> corners(3, 9);
  const PixelBox clip{4, 60, 6, 58};
  for (int round = 0; round < 50; ++round) {
    DrawnPolygons polygons{{1, 0, 0, 0.5}, {}};
    std::vector<std::vector<PlanePoint>> outlines;
    for (int i = 0; i < 3; ++i) {
      const PlanePoint middle{within(random), within(random)};
      const PlanePoint radii{radius(random), radius(random)};
      const int count = corners(random);
      auto& outline = outlines.emplace_back();
      for (int corner = 0; corner < count; ++corner) {
        const double angle = 2 * 3.14159265358979 * corner / count + round;
        outline.push_back(
            {middle.x + radii.x * std::cos(angle), middle.y + radii.y * std::sin(angle)});
      }
      polygons.outlines.starts.push_back(polygons.outlines.points.size());
      polygons.outlines.points.insert(polygons.outlines.points.end(), outline.begin(),
                                      outline.end());
    }
    const Image image = painted(polygons, clip);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        double white = 1;
        bool isOnEdge = false;
        for (const auto& outline : outlines) {
          const double depth = depthWithin(outline, {x + 0.5, y + 0.5});
          isOnEdge = isOnEdge || std::abs(depth) < 0.01;
          if (depth > 0 && clip.holds(x + 0.5, y + 0.5)) white /= 2;
        }
        if (!isOnEdge) {
          ASSERT_NEAR(at(image, x, y).g, 255 * white, 3) << x << ", " << y;
          ASSERT_EQ(at(image, x, y).r, 255);
        }
      }
    }
  }
}

TEST_F(DrawingPainterTest, MarkersCoverPartsOfPixels) {
  DrawnMarkers markers{.shape = MarkerShape::kCircle,
                       .size = 10,
                       .colour = kInk,
                       .middles = {{20, 20}, {40.5, 20.25}}};
  const Image smooth = painted(markers);
  EXPECT_EQ(at(smooth, 20, 20), kRed);
  EXPECT_EQ(at(smooth, 15, 24), kWhite);
  EXPECT_LT(at(smooth, 15, 21).g, 255);
  EXPECT_GT(at(smooth, 15, 21).g, 0);
  double covered = 0;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) covered += 1 - at(smooth, x, y).g / 255.0;
  }
  EXPECT_NEAR(covered, 2 * 78.5, 1.5);
  markers.isSmooth = false;
  const Image sharp = painted(markers);
  EXPECT_EQ(sharp.count(kRed) + sharp.count(kWhite), kSide * kSide);
}

TEST_F(DrawingPainterTest, MarkersLargerThanAnyTextureAreDrawn) {
  const Image image = painted(DrawnMarkers{
      .shape = MarkerShape::kSquare, .size = 3000, .colour = kInk, .middles = {{1000, 32}}});
  EXPECT_EQ(image.count(kRed), kSide * kSide);
}

TEST_F(DrawingPainterTest, MoreFiguresThanTheTextureHoldsAreDrawn) {
  DrawnLayer layer;
  for (int i = 0; i < 64; ++i) {
    layer.items.emplace_back(DrawnMarkers{.shape = MarkerShape::kSquare,
                                          .size = 100.0 + i,
                                          .colour = {0, 0, 1, 0.01},
                                          .middles = {{32, 32}}});
  }
  layer.items.emplace_back(DrawnMarkers{
      .shape = MarkerShape::kSquare, .size = 20, .colour = kInk, .middles = {{32, 32}}});
  const Image image = painted(Drawing{layer});
  EXPECT_EQ(image.count(kRed), 18 * 18);
  EXPECT_NEAR(at(image, 2, 2).r, 255 * std::pow(0.99, 64), 20);
}

TEST_F(DrawingPainterTest, TextStandsOnItsBaseline) {
  DrawnText text{"ab", {}, blockText(), 10, {20, 10}, false, kInk};
  const Image level = painted(text);
  EXPECT_EQ(level.count(kRed), 2 * 5 * 10);
  EXPECT_EQ(at(level, 20, 10), kRed);
  EXPECT_EQ(at(level, 34, 19), kRed);
  EXPECT_EQ(at(level, 26, 15), kWhite);
  text.isUpright = true;
  const Image upright = painted(text);
  EXPECT_EQ(upright.count(kRed), 100);
  EXPECT_EQ(at(upright, 19, 10), kRed);
  EXPECT_EQ(at(upright, 10, 24), kRed);
  EXPECT_EQ(at(upright, 21, 10), kWhite);
}

TEST_F(DrawingPainterTest, WhatComesLaterLiesAbove) {
  DrawnLayer layer;
  layer.items.emplace_back(DrawnText{"ab", {}, blockText(), 10, {20, 10}, false, kInk});
  layer.items.emplace_back(DrawnBoxes{{0, 0, 1, 1}, {{20, 25, 10, 20}}});
  layer.items.emplace_back(DrawnText{"ab", {}, blockText(), 4, {20, 10}, false, kInk});
  const Image image = painted(Drawing{layer});
  EXPECT_EQ(at(image, 20, 10), kRed);
  EXPECT_EQ(at(image, 22, 18), (Rgb{0, 0, 255}));
  EXPECT_EQ(at(image, 31, 12), kRed);
}

TEST_F(DrawingPainterTest, ImagesLieInTheirBoxes) {
  auto pixels = std::make_shared<PixelImage>(PixelImage{2, 1, {255, 0, 0, 255, 0, 0, 255, 255}});
  const Image same = painted(DrawnImage{pixels, {10, 12, 5, 6}, false});
  EXPECT_EQ(at(same, 10, 5), kRed);
  EXPECT_EQ(at(same, 11, 5), (Rgb{0, 0, 255}));
  EXPECT_EQ(same.count(kWhite), kSide * kSide - 2);
  const Image large = painted(DrawnImage{pixels, {-10, 30, 10, 20}, false});
  EXPECT_EQ(at(large, 9, 19), kRed);
  EXPECT_EQ(at(large, 10, 10), (Rgb{0, 0, 255}));
  EXPECT_EQ(large.count(kRed), 100);
  EXPECT_EQ(large.count(Rgb{0, 0, 255}), 200);
  const Image smooth = painted(DrawnImage{pixels, {0, 64, 0, 64}, true});
  EXPECT_NEAR(at(smooth, 32, 30).r, 127, 4);
  EXPECT_EQ(at(smooth, 10, 30), kRed);
}

TEST_F(DrawingPainterTest, APartIsThatOfTheWhole) {
  Curve sharp(50000, 2);
  Curve smooth(300);
  DrawnLayer layer{PixelBox{3, 61, 5, 60}, {}};
  layer.items.emplace_back(traceOf(sharp, {{0, 0, 1, 1}}));
  layer.items.emplace_back(traceOf(smooth, {kInk, 2, true, {}}));
  layer.items.emplace_back(DrawnBoxes{{0, 1, 0, 0.5}, {{20, 50, 10, 20}}});
  layer.items.emplace_back(
      DrawnMarkers{.size = 9, .colour = kInk, .middles = {{32.3, 20.7}, {40, 50}}});
  layer.items.emplace_back(DrawnText{"ab", {}, blockText(), 9, {24.3, 30}, false, kInk});
  layer.items.emplace_back(DrawnImage{
      std::make_shared<PixelImage>(PixelImage{1, 1, {0, 255, 255, 255}}), {30, 36, 40, 44}, false});
  const Image whole = painted(Drawing{layer});
  glViewport(0, 0, kSide / 2, kSide / 2);
  const Image part = painted(Drawing{layer}, {0.25, 0.75, 0.5, 1});
  constexpr int kMargin = 2;  // lines that leave the part are cut there
  for (int y = kMargin; y < kSide / 2 - kMargin; ++y) {
    for (int x = kMargin; x < kSide / 2 - kMargin; ++x) {
      ASSERT_LE(difference(at(part, x, y), at(whole, 16 + x, 32 + y)), 8) << x << ", " << y;
    }
  }
}

/// The part around a place where something is picked, in which the viewport is as large as ever.
TEST_F(DrawingPainterTest, HitsAreWhatThePartHolds) {
  Curve curve(100000, 4);
  const auto hits = [&](const DrawnItem& item, double x, double y) {
    std::array<GLuint, 16> buffer{};
    glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(7);
    DrawnLayer layer{PixelBox{2, 62, 2, 62}, {}};
    layer.items.push_back(item);
    paintDrawing(Drawing{layer}, kPicture,
                 {(x - 2) / kSide, (x + 2) / kSide, (y - 2) / kSide, (y + 2) / kSide});
    return glRenderMode(GL_RENDER);
  };
  const DrawnItem trace = traceOf(curve, {kInk, 1, true, {}});
  EXPECT_EQ(hits(trace, 32, 34), 1);
  EXPECT_EQ(hits(trace, 8, 10), 0);
  EXPECT_EQ(hits(trace, 0, 32), 0) << "outside of the clip";
  const DrawnItem markers = DrawnMarkers{.colour = kInk, .middles = {{40, 40}}};
  EXPECT_EQ(hits(markers, 42, 41), 1);
  EXPECT_EQ(hits(markers, 48, 41), 0);
  const auto image = std::make_shared<PixelImage>(PixelImage{1, 1, {255, 0, 0, 255}});
  EXPECT_EQ(hits(DrawnImage{image, {10, 20, 10, 20}, false}, 15, 12), 1);
  EXPECT_EQ(hits(DrawnImage{image, {10, 20, 10, 20}, false}, 30, 12), 0);
}

TEST_F(DrawingPainterTest, NumbersBeyondMeasureAreNoHarm) {
  DrawnLayer layer;
  layer.items.emplace_back(
      DrawnMarkers{.colour = kInk, .middles = {{1e300, 1}, {-1e18, 5}, {5, -1e12}}});
  layer.items.emplace_back(DrawnText{"ab", {}, blockText(), 10, {1e200, 10}, false, kInk});
  layer.items.emplace_back(DrawnImage{std::make_shared<PixelImage>(), {0, 1e300, 0, 10}, false});
  EXPECT_EQ(painted(Drawing{layer}).count(kWhite), kSide * kSide);
}

TEST_F(DrawingPainterTest, GivesTheStateBack) {
  Curve curve(1000, 2);
  DrawnLayer layer{PixelBox{3, 61, 5, 60}, {}};
  layer.items.emplace_back(traceOf(curve, {kInk, 2, true, {}}));
  layer.items.emplace_back(DrawnBoxes{{0, 1, 0, 0.5}, {{20, 50, 10, 20}}});
  layer.items.emplace_back(DrawnMarkers{.size = 9, .colour = kInk, .middles = {{32.3, 20.7}}});
  layer.items.emplace_back(DrawnImage{
      std::make_shared<PixelImage>(PixelImage{1, 1, {0, 255, 255, 255}}), {30, 31, 40, 41}, false});
  glMatrixMode(GL_TEXTURE);
  glEnable(GL_LIGHTING);
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_SCISSOR_TEST);
  glScissor(1, 2, 3, 4);
  glLineWidth(3);
  glEnable(GL_LINE_STIPPLE);
  const GlState before = readGlState();
  paintDrawing(Drawing{layer}, kPicture, {});
  EXPECT_EQ(differences(before, readGlState()), kNone);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace zyn
