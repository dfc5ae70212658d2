#include "glcontext/Tile.h"

#include <gtest/gtest.h>

#include <vector>

namespace zyn {
namespace {

TEST(TileTest, SizesOfZeroOrLessHaveNoTile) {
  EXPECT_TRUE(tilesOf(0, 10, 8, 1).empty());
  EXPECT_TRUE(tilesOf(10, 0, 8, 1).empty());
  EXPECT_TRUE(tilesOf(-1, -1, 8, 1).empty());
}

TEST(TileTest, AnImageThatFitsIsOneTileWithoutOverlap) {
  const std::vector<Tile> tiles = tilesOf(8, 5, 8, 3);
  ASSERT_EQ(tiles.size(), 1U);
  EXPECT_EQ(tiles[0].part().left, 0.0);
  EXPECT_EQ(tiles[0].part().right, 1.0);
  EXPECT_EQ(tiles[0].part().bottom, 0.0);
  EXPECT_EQ(tiles[0].part().top, 1.0);
  EXPECT_EQ(tiles[0].kept.width, 8);
  EXPECT_EQ(tiles[0].kept.height, 5);
}

TEST(TileTest, FractionsFollowTheDrawnRectangle) {
  const Tile tile{200, 100, {50, 20, 100, 40}, {60, 30, 80, 20}};
  EXPECT_DOUBLE_EQ(tile.part().left, 0.25);
  EXPECT_DOUBLE_EQ(tile.part().right, 0.75);
  EXPECT_DOUBLE_EQ(tile.part().bottom, 0.2);
  EXPECT_DOUBLE_EQ(tile.part().top, 0.6);
}

/// Sizes around the limit and around multiples of the step.
class TileSizeTest : public testing::TestWithParam<int> {};

TEST_P(TileSizeTest, EveryPixelIsKeptOnceAndDrawnWithItsSurroundings) {
  constexpr int kLargest = 16;
  constexpr int kOverlap = 3;
  const int width = GetParam();
  const int height = 23;
  std::vector<int> kept(static_cast<std::size_t>(width * height));
  for (const Tile& tile : tilesOf(width, height, kLargest, kOverlap)) {
    EXPECT_LE(tile.drawn.width, kLargest);
    EXPECT_LE(tile.drawn.height, kLargest);
    EXPECT_EQ(tile.drawn.x, std::max(0, tile.kept.x - (width > kLargest ? kOverlap : 0)));
    const int right = tile.kept.x + tile.kept.width;
    EXPECT_EQ(tile.drawn.x + tile.drawn.width, std::min(width, right + kOverlap));
    const int top = tile.kept.y + tile.kept.height;
    EXPECT_EQ(tile.drawn.y + tile.drawn.height, std::min(height, top + kOverlap));
    for (int y = tile.kept.y; y < top; ++y) {
      for (int x = tile.kept.x; x < right; ++x) ++kept.at(static_cast<std::size_t>(y * width + x));
    }
  }
  EXPECT_EQ(kept, std::vector<int>(kept.size(), 1));
}

INSTANTIATE_TEST_SUITE_P(Widths, TileSizeTest,
                         testing::Values(1, 15, 16, 17, 19, 20, 21, 22, 23, 26, 30, 31, 32, 100));

}  // namespace
}  // namespace zyn
