#include "plot/Dashes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zyn {
namespace {

constexpr PixelBox kAll{-1e6, 1e6, -1e6, 1e6};

void expectPoints(const PixelLines& lines, const std::vector<PlanePoint>& expected) {
  ASSERT_EQ(lines.points.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(lines.points[i].x, expected[i].x, 1e-6) << i;
    EXPECT_NEAR(lines.points[i].y, expected[i].y, 1e-6) << i;
  }
}

TEST(DashesTest, TurnWithTheLine) {
  const PixelLines drawn = dashed({{{0, 0}, {7, 0}, {7, 10}}, {0}}, {4, 2}, kAll);
  expectPoints(drawn, {{0, 0}, {4, 0}, {6, 0}, {7, 0}, {7, 3}, {7, 5}, {7, 9}});
  EXPECT_EQ(drawn.starts, (std::vector<std::size_t>{0, 2, 5}));
}

TEST(DashesTest, EachLineBeginsWithOne) {
  const PixelLines drawn = dashed({{{0, 0}, {5, 0}, {0, 9}, {3, 9}}, {0, 2}}, {4, 2}, kAll);
  expectPoints(drawn, {{0, 0}, {4, 0}, {0, 9}, {3, 9}});
  EXPECT_EQ(drawn.starts, (std::vector<std::size_t>{0, 2}));
}

/// Where a line comes from very far away, only what is seen takes time, and lies where it would.
TEST(DashesTest, FarAwayOnlyWhatIsSeenIsCut) {
  const PixelLines drawn = dashed({{{-6e9, 5}, {6e9, 5}}, {0}}, {4, 2}, {0, 12, 0, 10});
  expectPoints(drawn, {{0, 5}, {4, 5}, {6, 5}, {10, 5}});
}

/// Farther than lengths of dashes can be added to.
TEST(DashesTest, LinesOfAnyLengthEnd) {
  for (const double far : {1e14, 1e17, 1e30, 1e150, 1e300}) {
    const PixelLines drawn =
        dashed({{{-far, -far}, {far, 1.001 * far}, {0, 5}, {far, 5}}, {0}}, {4, 2}, {0, 12, 0, 10});
    EXPECT_LE(drawn.points.size(), 30U) << far;
  }
}

TEST(DashesTest, WhatIsNotSeenCountsForThePlace) {
  const PixelLines line{{{0, 0}, {9, 0}, {9, 100}, {18, 100}, {18, 0}, {30, 0}}, {0}};
  const PixelLines all = dashed(line, {4, 3}, kAll);
  const PixelLines part = dashed(line, {4, 3}, {17, 40, -1, 1});
  ASSERT_FALSE(part.points.empty());
  EXPECT_NEAR(part.points.back().x, all.points.back().x, 1e-6);
  EXPECT_NEAR(part.points[part.points.size() - 2].x, all.points[all.points.size() - 2].x, 1e-6);
}

TEST(DashesTest, PointsAloneAreDotsNotLines) {
  const PixelLines lone = dashed({{{1, 1}}, {0}}, {4, 2}, kAll);
  ASSERT_EQ(lone.points.size(), 1U);
  EXPECT_EQ(lone.points[0].x, 1);
  EXPECT_EQ(lone.starts, std::vector<std::size_t>{0});
  EXPECT_TRUE(dashed({{{1, 1}, {1, 1}}, {0}}, {4, 2}, kAll).points.empty());
}

}  // namespace
}  // namespace zyn
