#include "objects/text/Tessellation_gl.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace zyn
