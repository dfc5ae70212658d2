#include "trace/PixelGrid.h"

#include <gtest/gtest.h>

#include <limits>

namespace zyn {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

PixelGrid grid() {
  PixelGrid pixels;
  pixels.left = -1;
  pixels.right = 101;
  pixels.bottom = -2;
  pixels.top = 52;
  return pixels;
}

TEST(PixelGridTest, APixelIsACell) {
  EXPECT_EQ(grid().column(7.01).middle, 7.5);
  EXPECT_EQ(grid().column(7.99).middle, 7.5);
  EXPECT_EQ(grid().row(-0.5).middle, -0.5);
  EXPECT_FALSE(grid().column(7.5).isEdge);
  EXPECT_TRUE(grid().column(7.5).pixels.holds({7.01, 7.99}));
}

TEST(PixelGridTest, TheEdgeBetweenPixelsIsACellOfItsOwn) {
  for (const double x : {7.0, 7 - 1.0 / 256, 7 + 1.0 / 256}) {
    const PixelCell edge = grid().column(x);
    EXPECT_EQ(edge.middle, 7);
    EXPECT_TRUE(edge.isEdge);
    EXPECT_TRUE(edge.pixels.holds({7 - 1.0 / 256, 7 + 1.0 / 256}));
    EXPECT_FALSE(edge.pixels.holds(7 + 1.0 / 64));
  }
  EXPECT_EQ(grid().column(7 + 1.0 / 64).middle, 7.5);
  EXPECT_EQ(grid().column(7 - 1.0 / 64).middle, 6.5);
  EXPECT_FALSE(grid().column(7.5).pixels.holds(7));
}

TEST(PixelGridTest, WhatCannotBeSeenLiesOnOneOfFourSides) {
  EXPECT_EQ(grid().column(-1.01).middle, -kInfinity);
  EXPECT_EQ(grid().column(101.01).middle, kInfinity);
  EXPECT_EQ(grid().column(1e300).middle, kInfinity);
  EXPECT_EQ(grid().row(-2.01).middle, -kInfinity);
  EXPECT_EQ(grid().row(52.01).middle, kInfinity);
  EXPECT_TRUE(grid().row(52.01).isOutside);
  EXPECT_TRUE(grid().row(52.01).pixels.holds({53, 1e300}));
  EXPECT_FALSE(grid().row(51).isOutside);
  EXPECT_TRUE(grid().isOutside({-9, -2}, {0, 100}));
  EXPECT_TRUE(grid().isOutside({0, 100}, {53, 99}));
  EXPECT_FALSE(grid().isOutside({-9, 200}, {-9, 200}));
}

TEST(PixelGridTest, PixelsCanBeDividedAndCellsShifted) {
  PixelGrid fine = grid();
  fine.cellsPerPixel = 4;
  EXPECT_EQ(fine.column(7.1).middle, 7.125);
  EXPECT_EQ(fine.column(7.25).middle, 7.25);
  EXPECT_TRUE(fine.column(7.25).isEdge);

  PixelGrid moved = grid();
  moved.isShifted = true;
  EXPECT_EQ(moved.column(7.1).middle, 7);
  EXPECT_EQ(moved.column(7.5).middle, 7.5);
  EXPECT_TRUE(moved.column(7.5).isEdge);
}

}  // namespace
}  // namespace zyn
