#include "plot/Coverage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>

namespace zyn {
namespace {

Contour box(double left, double right, double bottom, double top) {
  return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

int at(const Coverage& coverage, int x, int y) {
  const int column = x - coverage.left;
  const int row = y - coverage.bottom;
  const bool isInside = column >= 0 && column < coverage.width && row >= 0 && row < coverage.height;
  return isInside ? coverage.pixels[static_cast<std::size_t>(row * coverage.width + column)] : 0;
}

double areaOf(const Coverage& coverage) {
  return std::accumulate(coverage.pixels.begin(), coverage.pixels.end(), 0.0) / 255;
}

TEST(CoverageTest, IsThePartOfEachPixel) {
  const Coverage coverage = coverageOf({box(-1.5, 2.25, 3, 4.5)});
  EXPECT_EQ(at(coverage, -2, 3), 128);
  EXPECT_EQ(at(coverage, -1, 3), 255);
  EXPECT_EQ(at(coverage, 2, 3), 64);
  EXPECT_EQ(at(coverage, 0, 4), 128);
  EXPECT_EQ(at(coverage, 2, 4), 32);
  EXPECT_EQ(at(coverage, 3, 3), 0);
  EXPECT_EQ(at(coverage, 0, 2), 0);
}

TEST(CoverageTest, OfASlopingEdgeIsExact) {
  const Coverage coverage = coverageOf({{{0, 0}, {4, 0}, {0, 2}}});
  EXPECT_EQ(at(coverage, 0, 0), 255);
  EXPECT_EQ(at(coverage, 1, 0), 255);
  EXPECT_EQ(at(coverage, 2, 0), 191);
  EXPECT_EQ(at(coverage, 3, 0), 64);
  EXPECT_EQ(at(coverage, 0, 1), 191);
  EXPECT_EQ(at(coverage, 1, 1), 64);
}

TEST(CoverageTest, ContoursThatTurnTheOtherWayAreHoles) {
  Contour hole = box(1, 3, 1, 3);
  std::swap(hole[1], hole[3]);
  const Coverage coverage = coverageOf({box(0, 4, 0, 4), hole});
  EXPECT_EQ(at(coverage, 0, 0), 255);
  EXPECT_EQ(at(coverage, 1, 1), 0);
  EXPECT_EQ(at(coverage, 2, 2), 0);
  EXPECT_EQ(at(coverage, 3, 2), 255);
  EXPECT_EQ(areaOf(coverage), 12);
}

TEST(CoverageTest, NothingCoversNothing) {
  EXPECT_TRUE(coverageOf({}).isEmpty());
  EXPECT_TRUE(coverageOf({{}}).isEmpty());
}

TEST(CoverageTest, MarkersHaveTheirSizes) {
  const auto sized = [](MarkerShape shape) {
    return areaOf(coverageOf(outlineOf({.shape = shape, .size = 20, .lineWidth = 2})));
  };
  EXPECT_NEAR(sized(MarkerShape::kCircle), std::numbers::pi * 100, 2);
  EXPECT_NEAR(sized(MarkerShape::kSquare), 18 * 18, 1);
  EXPECT_NEAR(sized(MarkerShape::kPlus), 2 * 20 * 2 - 4, 1);
  EXPECT_GT(sized(MarkerShape::kTriangle), 150);
  EXPECT_GT(sized(MarkerShape::kDiamond), 200);
  EXPECT_GT(sized(MarkerShape::kCross), 80);
  EXPECT_EQ(sized(MarkerShape::kNone), 0);
}

}  // namespace
}  // namespace zyn
