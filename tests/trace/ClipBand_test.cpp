#include "trace/WindowMapping.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <optional>
#include <random>

namespace zyn {
namespace {

/// One unit is one pixel; the band reaches from -4096 to 4296 and from -4096 to 4196.
constexpr WindowMapping kPixels = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};
constexpr std::array<int, 4> kViewport = {0, 0, 200, 100};

std::optional<ClipBand::Segment> clipped(const PlanePoint& from, const PlanePoint& to,
                                         const WindowMapping& mapping = kPixels) {
  return ClipBand(mapping, kViewport).clip(from, to);
}

void expectSegment(const std::optional<ClipBand::Segment>& segment, const PlanePoint& from,
                   const PlanePoint& to, bool isFromCut) {
  ASSERT_TRUE(segment);
  EXPECT_EQ(segment->from.x, from.x);
  EXPECT_EQ(segment->from.y, from.y);
  EXPECT_EQ(segment->to.x, to.x);
  EXPECT_EQ(segment->to.y, to.y);
  EXPECT_EQ(segment->isFromCut, isFromCut);
}

TEST(ClipBandTest, SegmentsWithinStayExactlyAsTheyAre) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> place(-4096, 4196);
  for (int i = 0; i < 1000; ++i) {
    const PlanePoint from{place(random), place(random)};
    const PlanePoint to{place(random), place(random)};
    expectSegment(clipped(from, to), from, to, false);
  }
  expectSegment(clipped({-4096, -4096}, {4296, 4196}), {-4096, -4096}, {4296, 4196}, false);
  expectSegment(clipped({7, 7}, {7, 7}), {7, 7}, {7, 7}, false);
}

TEST(ClipBandTest, EndsOutsideAreCutOffAtTheEdge) {
  for (const double far : {8192.0, 0x1p40, 0x1p60, 0x1p900, 0x1p1022}) {
    expectSegment(clipped({-far, 64}, {far, 64}), {-4096, 64}, {4296, 64}, true);
    expectSegment(clipped({64, far}, {64, -far}), {64, 4196}, {64, -4096}, true);
    expectSegment(clipped({-far, -far}, {far, far}), {-4096, -4096}, {4196, 4196}, true);
    expectSegment(clipped({-far, far}, {far, -far}), {-4096, 4096}, {4096, -4096}, true);
    expectSegment(clipped({-far, -far / 2}, {far, far / 2}), {-4096, -2048}, {4296, 2148}, true);
    expectSegment(clipped({64, 32}, {64, far}), {64, 32}, {64, 4196}, false);
    expectSegment(clipped({64, far}, {64, 32}), {64, 4196}, {64, 32}, true);
  }
}

TEST(ClipBandTest, EndsThatAreFarAwayUnequallyKeepTheLineInItsPlace) {
  const PlanePoint from{-0x1p60 + 0x1p10, -0x1p59};  // y = x / 2 - 512
  expectSegment(clipped(from, {3 * 0x1p60 + 0x1p10, 3 * 0x1p59}), {-4096, -2560}, {4296, 1636},
                true);
}

TEST(ClipBandTest, APoleIsCutOffBeforeItLeavesItsColumn) {
  const auto segment = clipped({1.5, 20}, {2.5, 1.6e16});
  ASSERT_TRUE(segment);
  EXPECT_EQ(segment->from.x, 1.5);
  EXPECT_NEAR(segment->to.x, 1.5, 1e-12);
  EXPECT_DOUBLE_EQ(segment->to.y, 4196);
}

TEST(ClipBandTest, NothingIsLeftOfWhatPassesByTheBand) {
  EXPECT_FALSE(clipped({-5000, 0}, {-5000, 50}));
  EXPECT_FALSE(clipped({1e9, 0}, {1e300, 50}));
  EXPECT_FALSE(clipped({0, -1e9}, {50, -1e9}));
  EXPECT_FALSE(clipped({0, 5000}, {50, 1e300}));
  EXPECT_FALSE(clipped({-9000, 0}, {0, 9000}));  // around a corner
  EXPECT_FALSE(clipped({-1e300, 0}, {0, 1e300}));
}

TEST(ClipBandTest, TheBandFollowsTheMapping) {
  // 40 pixels a unit, mirrored along x; y to the left.
  const WindowMapping turned = {{0, -40, 0, 200}, {-40, 0, 0, 100}, {0, 0, 1, 0}};
  expectSegment(clipped({2.5, -1e9}, {2.5, 1e9}, turned), {2.5, -102.4}, {2.5, 107.4}, true);
  expectSegment(clipped({-1e9, 2.5}, {1e9, 2.5}, turned), {-102.4, 2.5}, {104.9, 2.5}, true);
}

TEST(ClipBandTest, TheLargestNumbersLeaveNothingInfinite) {
  constexpr double kMost = std::numeric_limits<double>::max();
  WindowMapping large = kPixels;
  large.x.x = 1e10;
  for (const WindowMapping& mapping : {kPixels, large}) {
    const auto segment = clipped({-kMost, 64}, {kMost, 64}, mapping);
    ASSERT_TRUE(segment);
    EXPECT_DOUBLE_EQ(segment->from.x, -4096 / mapping.x.x);
    EXPECT_DOUBLE_EQ(segment->to.x, 4296 / mapping.x.x);
    EXPECT_DOUBLE_EQ(segment->to.y, 64);
  }
}

TEST(ClipBandTest, WhatCannotBeSeenIsLeftOut) {
  const ClipBand band(kPixels, kViewport, 3);
  EXPECT_FALSE(band.clip({-50, -4}, {250, -4}));
  EXPECT_FALSE(band.clip({204, 50}, {300, 60}));
  for (const double y : {-2.0, 50.0, 102.0}) {
    expectSegment(band.clip({-50, y}, {250, y}), {-50, y}, {250, y}, false);
  }
  expectSegment(band.clip({-20, 50}, {20, -300}), {-20, 50}, {20, -300}, false);
}

}  // namespace
}  // namespace zyn
