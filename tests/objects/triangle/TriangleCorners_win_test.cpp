#include "objects/triangle/TriangleCorners_win.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <deque>
#include <vector>

namespace zyn {
namespace {

using Triangles = std::deque<TriangleCorners>;

void place(TriangleCorners& triangle, std::size_t corner, double x, double y) {
  triangle.own(corner).point = {x, y, 1};
  triangle.own(corner).normal = {x, 0, 1};
}

/// A strip between two lines, of which neighbours have two corners in common.
void fillStrip(Triangles& triangles, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    TriangleCorners& triangle = triangles.emplace_back();
    for (std::size_t corner = 0; corner < 3; ++corner) {
      place(triangle, corner, static_cast<double>(i + corner),
            static_cast<double>((i + corner) % 2));
    }
  }
}

void share(Triangles& triangles) {
  std::vector<TriangleCorners*> all;
  for (TriangleCorners& triangle : triangles) all.push_back(&triangle);
  TriangleCorners::share(all);
}

/// Whether two corners are one in memory.
bool isOne(const TriangleCorner& a, const TriangleCorner& b) { return &a == &b; }

void expectStrip(const Triangles& triangles) {
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
      EXPECT_EQ(triangles[i][corner].point.x, static_cast<double>(i + corner));
      EXPECT_EQ(triangles[i][corner].point.y, static_cast<double>((i + corner) % 2));
      EXPECT_EQ(triangles[i][corner].point.z, 1);
      EXPECT_EQ(triangles[i][corner].normal.x, static_cast<double>(i + corner));
    }
  }
}

TEST(TriangleCorners, NewOnesLieAtTheOriginAndFaceUp) {
  const TriangleCorners triangle;
  const TriangleCorners other;
  for (std::size_t corner = 0; corner < 3; ++corner) {
    EXPECT_EQ(triangle[corner].point.x, 0);
    EXPECT_EQ(triangle[corner].normal.y, 0);
    EXPECT_EQ(triangle[corner].normal.z, 1);
    EXPECT_TRUE(isOne(triangle[corner], other[corner]));
  }
}

TEST(TriangleCorners, ShareEqualCornersAndKeepTheirNumbers) {
  Triangles triangles;
  fillStrip(triangles, TriangleCorners::kMostSharing);
  share(triangles);
  expectStrip(triangles);
  EXPECT_TRUE(isOne(triangles[0][1], triangles[1][0]));
  EXPECT_TRUE(isOne(triangles[0][2], triangles[2][0]));
}

TEST(TriangleCorners, AChangeIsNotSeenByTheOthers) {
  Triangles triangles;
  fillStrip(triangles, 20);
  share(triangles);
  place(triangles[5], 1, 100, 200);
  EXPECT_EQ(triangles[5][1].point.x, 100);
  EXPECT_EQ(triangles[5][0].point.x, 5);
  EXPECT_EQ(triangles[5][2].point.x, 7);
  place(triangles[5], 1, 6, 0);
  expectStrip(triangles);
}

TEST(TriangleCorners, TheLastUserKeepsItsCorners) {
  Triangles triangles;
  fillStrip(triangles, 30);
  share(triangles);
  while (triangles.size() > 1) triangles.pop_back();
  expectStrip(triangles);
  place(triangles[0], 2, 2, 0);
  expectStrip(triangles);
}

TEST(TriangleCorners, WithLittleInCommonEachKeepsItsOwn) {
  Triangles triangles;
  for (int i = 0; i < 10; ++i) {
    TriangleCorners& triangle = triangles.emplace_back();
    for (std::size_t corner = 0; corner < 3; ++corner) {
      place(triangle, corner, i + 10.0 * static_cast<double>(corner), i);
    }
  }
  std::vector<const TriangleCorner*> before;
  for (const TriangleCorners& triangle : triangles) before.push_back(&triangle[0]);
  share(triangles);
  for (std::size_t i = 0; i < triangles.size(); ++i) EXPECT_EQ(&triangles[i][0], before[i]);
}

/// Zeros of both signs and whatever is no number come back as they were given.
TEST(TriangleCorners, CornersAreOneOnlyWhereAllBitsAre) {
  Triangles triangles(16);
  const double nan = std::bit_cast<double>(0x7FF8000000001234);
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    triangles[i].own(0).point = {i % 2 == 0 ? 0.0 : -0.0, nan, 0};
  }
  share(triangles);
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    EXPECT_EQ(std::signbit(triangles[i][0].point.x), i % 2 == 1);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(triangles[i][0].point.y), 0x7FF8000000001234U);
  }
  EXPECT_TRUE(isOne(triangles[0][0], triangles[2][0]));
  EXPECT_FALSE(isOne(triangles[0][0], triangles[1][0]));
}

TEST(TriangleCorners, OneThatIsGivenTwiceSharesOnce) {
  Triangles triangles;
  fillStrip(triangles, 10);
  std::vector<TriangleCorners*> twice;
  for (TriangleCorners& triangle : triangles) twice.insert(twice.end(), {&triangle, &triangle});
  TriangleCorners::share(twice);
  share(triangles);
  expectStrip(triangles);
}

/// All corners alike: the shared table is no larger than that of one triangle.
TEST(TriangleCorners, EqualTrianglesShareThreeCorners) {
  Triangles triangles;
  for (int i = 0; i < 8; ++i) fillStrip(triangles, 1);
  share(triangles);
  place(triangles[3], 0, 9, 9);
  EXPECT_EQ(triangles[3][0].point.x, 9);
  EXPECT_EQ(triangles[3][1].point.x, 1);
  EXPECT_EQ(triangles[4][0].point.x, 0);
  EXPECT_TRUE(isOne(triangles[4][0], triangles[5][0]));
}

}  // namespace
}  // namespace zyn
