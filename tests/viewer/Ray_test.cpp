#include "viewer/Ray.h"

#include <gtest/gtest.h>

#include <vector>

namespace zyn::viewer {
namespace {

using mesh::Vector;

const std::vector<mesh::Triangle> kFloorAndCeiling = {
    {{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}, {}},
    {{{0, 0, 5}, {4, 0, 5}, {0, 4, 5}}, {}},
};

TEST(RayTest, NearestAlongTheDirectionIsHit) {
  EXPECT_EQ(firstHit({{1, 1, 9}, {0, 0, -1}}, kFloorAndCeiling), (Vector{1, 1, 5}));
  EXPECT_EQ(firstHit({{1, 1, 9}, {0, 0, 1}}, kFloorAndCeiling), (Vector{1, 1, 0}));
}

TEST(RayTest, OriginMayLieAnywhereOnTheLine) {
  EXPECT_EQ(firstHit({{1, 1, 2}, {0, 0, -1}}, kFloorAndCeiling), (Vector{1, 1, 5}));
  EXPECT_EQ(firstHit({{1, 1, -7}, {0, 0, -1}}, kFloorAndCeiling), (Vector{1, 1, 5}));
}

TEST(RayTest, MissGivesNothing) {
  EXPECT_FALSE(firstHit({{3, 3, 9}, {0, 0, -1}}, kFloorAndCeiling));
  EXPECT_FALSE(firstHit({{-0.1, 1, 9}, {0, 0, -1}}, kFloorAndCeiling));
  EXPECT_FALSE(firstHit({{1, 1, 9}, {0, 0, -1}}, {}));
}

TEST(RayTest, LineInThePlaneOfATriangleGivesNothing) {
  EXPECT_FALSE(firstHit({{-1, 1, 0}, {1, 0, 0}}, kFloorAndCeiling));
}

TEST(RayTest, DegenerateTriangleIsNeverHit) {
  const std::vector<mesh::Triangle> line = {{{{0, 0, 0}, {1, 1, 0}, {2, 2, 0}}, {}}};
  EXPECT_FALSE(firstHit({{1, 1, 9}, {0, 0, -1}}, line));
}

}  // namespace
}  // namespace zyn::viewer
