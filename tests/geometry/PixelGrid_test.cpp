#include "geometry/PixelGrid.h"

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
  EXPECT_EQ(grid().column(7.01), 7.5);
  EXPECT_EQ(grid().column(7.99), 7.5);
  EXPECT_EQ(grid().row(-0.5), -0.5);
  EXPECT_EQ(grid().middle(7.5), 7.5);
}

TEST(PixelGridTest, TheEdgeBetweenPixelsIsACellOfItsOwn) {
  EXPECT_EQ(grid().column(7), 7);
  EXPECT_EQ(grid().column(7 - 1.0 / 256), 7);
  EXPECT_EQ(grid().column(7 + 1.0 / 256), 7);
  EXPECT_EQ(grid().column(7 + 1.0 / 64), 7.5);
  EXPECT_EQ(grid().column(7 - 1.0 / 64), 6.5);
}

TEST(PixelGridTest, WhatCannotBeSeenLiesOnOneOfFourSides) {
  EXPECT_EQ(grid().column(-1.01), -kInfinity);
  EXPECT_EQ(grid().column(101.01), kInfinity);
  EXPECT_EQ(grid().column(1e300), kInfinity);
  EXPECT_EQ(grid().row(-2.01), -kInfinity);
  EXPECT_EQ(grid().row(52.01), kInfinity);
}

TEST(PixelGridTest, PixelsCanBeDividedAndCellsShifted) {
  PixelGrid fine = grid();
  fine.cellsPerPixel = 4;
  EXPECT_EQ(fine.column(7.1), 28.5);
  EXPECT_EQ(fine.column(7.25), 29);
  EXPECT_EQ(fine.middle(28.5), 7.125);

  PixelGrid moved = grid();
  moved.isShifted = true;
  EXPECT_EQ(moved.column(7.1), 7.5);
  EXPECT_EQ(moved.column(7.5), 8);
  EXPECT_EQ(moved.middle(7.5), 7);
}

}  // namespace
}  // namespace zyn
