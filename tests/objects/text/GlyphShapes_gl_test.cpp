#include "objects/text/GlyphShapes_gl.h"

#include <gtest/gtest.h>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

double areaOf(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
  return ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
}

/// The sum of the triangles' areas; they are all counterclockwise.
double areaOf(const Triangles& figure) {
  EXPECT_EQ(figure.size() % 3, 0U);
  double sum = 0;
  for (std::size_t i = 0; i + 2 < figure.size(); i += 3) {
    const double area = areaOf(figure[i], figure[i + 1], figure[i + 2]);
    EXPECT_GT(area, 0);
    sum += area;
  }
  return sum;
}

bool covers(const Triangles& figure, const PlanePoint& at) {
  for (std::size_t i = 0; i + 2 < figure.size(); i += 3) {
    const PlanePoint a = figure[i];
    const PlanePoint b = figure[i + 1];
    const PlanePoint c = figure[i + 2];
    if (areaOf(a, b, at) > 0 && areaOf(b, c, at) > 0 && areaOf(c, a, at) > 0) return true;
  }
  return false;
}

Contour square(double left, double bottom, double side) {
  return {
      {left, bottom}, {left + side, bottom}, {left + side, bottom + side}, {left, bottom + side}};
}

Contour reversed(const Contour& contour) { return {contour.rbegin(), contour.rend()}; }

TEST(Tessellation, ASimpleFigureIsFilled) {
  const Triangles figure = tessellate({square(1, 2, 4)});
  EXPECT_DOUBLE_EQ(areaOf(figure), 16);
  EXPECT_TRUE(covers(figure, {1.1, 2.2}));
  EXPECT_FALSE(covers(figure, {0.9, 2.2}));
}

TEST(Tessellation, TrianglesAreCounterclockwiseWhicheverWayTheFigureTurns) {
  EXPECT_DOUBLE_EQ(areaOf(tessellate({reversed(square(1, 2, 4))})), 16);
}

TEST(Tessellation, AContourThatTurnsTheOtherWayIsAHole) {
  const Triangles figure = tessellate({square(0, 0, 4), reversed(square(1, 1, 2))});
  EXPECT_DOUBLE_EQ(areaOf(figure), 12);
  EXPECT_FALSE(covers(figure, {2.1, 2.2}));
  EXPECT_TRUE(covers(figure, {0.5, 2.2}));
}

TEST(Tessellation, OverlappingFiguresAreFilledWhereTheyOverlapToo) {
  const Triangles figure = tessellate({square(0, 0, 4), square(3, 3, 4)});
  EXPECT_DOUBLE_EQ(areaOf(figure), 31);
  EXPECT_TRUE(covers(figure, {3.3, 3.6}));
}

TEST(Tessellation, CornersMayLieAtOnePlace) {
  Contour twice = square(0, 0, 4);
  twice.push_back(twice.front());
  const Triangles figure = tessellate({twice, square(4, 4, 2)});
  EXPECT_DOUBLE_EQ(areaOf(figure), 20);
}

TEST(Tessellation, NothingIsLeftOfNothing) {
  EXPECT_TRUE(tessellate({}).empty());
  EXPECT_TRUE(tessellate({{}}).empty());
  EXPECT_TRUE(tessellate({{{1, 1}, {2, 2}}}).empty());
}

using test::Image;
using test::Rgb;

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kRed{255, 0, 0};

Contour square(double left, double bottom, double right, double top) {
  return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

/// A picture 8 ems wide, the baseline's start in the middle of its left side. "o" is a square with
/// a hole, "-" a bar; both are 2 ems wide.
class GlyphShapesTest : public test::GlTest {
 protected:
  GlyphShapesTest() {
    addGlyph('o',
             {square(0.25, -1, 1.75, 1), {{0.75, 0.5}, {1.25, 0.5}, {1.25, -0.5}, {0.75, -0.5}}});
    addGlyph('-', {square(0.25, -0.25, 1.75, 0.25)});
    metrics_.glyphs[' '].cellIncX = 2;
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, 8, -4, 4, -1, 1);
    glColor3f(1, 0, 0);
  }

  void addGlyph(char character, const std::vector<Contour>& contours) {
    const auto code = static_cast<unsigned char>(character);
    shapes_[code] = {contours, tessellate(contours)};
    metrics_.glyphs[code].cellIncX = 2;
  }

  /// The pixel of a point in ems.
  Rgb at(double x, double y) const {
    return context.read().at(static_cast<int>(x * 8), static_cast<int>((4 - y) * 8));
  }

  GlyphShapes shapes_;
  FontMetrics metrics_;
};

TEST_F(GlyphShapesTest, FillsEachGlyphInItsPlace) {
  drawFilledGlyphs(shapes_, metrics_, "o -");
  EXPECT_EQ(at(0.5, 0), kRed);
  EXPECT_EQ(at(1, 0), kBlack);
  EXPECT_EQ(at(1, 0.8), kRed);
  EXPECT_EQ(at(3, 0), kBlack);
  EXPECT_EQ(at(5, 0), kRed);
  EXPECT_EQ(at(5, 0.8), kBlack);
  EXPECT_EQ(at(7, 0), kBlack);
}

TEST_F(GlyphShapesTest, ListsDrawOneGlyphEachAndMoveOn) {
  const GLuint filled = compileFilledGlyphs(shapes_, metrics_);
  const GLuint outlines = compileGlyphOutlines(shapes_, metrics_);
  glListBase(filled);
  glCallLists(3, GL_UNSIGNED_BYTE, "o -");
  EXPECT_EQ(at(0.5, 0), kRed);
  EXPECT_EQ(at(1, 0), kBlack);
  EXPECT_EQ(at(5, 0), kRed);
  EXPECT_EQ(at(5, 0.8), kBlack);
  glClear(GL_COLOR_BUFFER_BIT);
  glLoadIdentity();
  glListBase(outlines);
  glCallLists(1, GL_UNSIGNED_BYTE, "-");
  EXPECT_EQ(at(1, 0), kBlack);
  EXPECT_GT(context.read().count(kRed), 10);
  EXPECT_TRUE(glIsList(filled + 255));
  glDeleteLists(filled, 256);
  glDeleteLists(outlines, 256);
}

TEST_F(GlyphShapesTest, DrawsOutlinesAlone) {
  drawGlyphOutlines(shapes_, metrics_, "-");
  EXPECT_EQ(at(1, 0), kBlack);
  EXPECT_GT(context.read().count(kRed), 10);
}

TEST_F(GlyphShapesTest, DrawsNothingOfNothing) {
  drawFilledGlyphs(shapes_, metrics_, "");
  drawFilledGlyphs(shapes_, metrics_, "\xff\x01");
  EXPECT_EQ(context.read().count(kBlack), kSide * kSide);
}

}  // namespace
}  // namespace zyn
