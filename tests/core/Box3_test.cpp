#include "core/Box3.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zyn {
namespace {

TEST(Box3Test, CentreExtentsAndHalfDiagonal) {
  const Box3 box{-1, 3, 2, 8, 10, 13};
  EXPECT_EQ(box.centre(), Point(1, 5, 11.5));
  EXPECT_EQ(box.extents(), Vecteur(4, 6, 3));
  EXPECT_DOUBLE_EQ(box.halfDiagonal(), std::sqrt(4.0 + 9.0 + 2.25));
}

TEST(Box3Test, HalfDiagonalOfTheUnitCube) {
  EXPECT_DOUBLE_EQ((Box3{-.5, .5, -.5, .5, -.5, .5}).halfDiagonal(), std::sqrt(0.75));
}

TEST(Box3Test, UniteGrowsOnEverySide) {
  Box3 box{0, 1, 0, 1, 0, 1};
  box.unite({-1, 0.5, 0.5, 2, 0.25, 0.75});
  EXPECT_EQ(box, (Box3{-1, 1, 0, 2, 0, 1}));
  box.unite({0, 0, 0, 0, -3, 4});
  EXPECT_EQ(box, (Box3{-1, 1, 0, 2, -3, 4}));
}

TEST(Box3Test, APointIsABoxWithoutExtent) {
  const Box3 box{7, 7, 8, 8, 9, 9};
  EXPECT_EQ(box.centre(), Point(7, 8, 9));
  EXPECT_EQ(box.halfDiagonal(), 0.0);
}

}  // namespace
}  // namespace zyn
