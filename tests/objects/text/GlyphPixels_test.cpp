#include "objects/text/GlyphPixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "support/Random.h"

namespace zyn {
namespace {

using test::Random;

constexpr int kWidth = 200;
constexpr int kHeight = 100;

/// A font whose every character is a square of half an em, but for the space.
GlyphPixels squares() {
  auto shapes = std::make_shared<GlyphShapes>();
  for (GlyphShape& shape : *shapes) {
    shape.contours = {{{0, 0}, {0.5, 0}, {0.5, 0.5}, {0, 0.5}}};
  }
  (*shapes)[' '] = {};
  FontMetrics metrics;
  metrics.glyphs.fill({.cellIncX = 0.75F});
  return {std::move(shapes), metrics};
}

PixelCover coverOf(GlyphPixels& pixels, const PixelText& text, int width, int height) {
  pixels.forgetMany();
  std::vector<PixelGlyph> glyphs;
  const CoverBox box = pixels.place(text, width, height, glyphs);
  return zyn::coverOf(glyphs, box);
}

int coverAt(const PixelCover& cover, int x, int y) {
  const int column = x - cover.left;
  const int row = y - cover.bottom;
  const bool isInside = column >= 0 && column < cover.width && row >= 0 && row < cover.height;
  return isInside ? cover.bytes.at(static_cast<std::size_t>(row * cover.width + column)) : 0;
}

double inkOf(const PixelCover& cover) {
  double sum = 0;
  for (const std::uint8_t byte : cover.bytes) sum += byte;
  return sum;
}

TEST(GlyphPixels, GlyphsStandOneAfterTheOther) {
  GlyphPixels pixels = squares();
  const PixelCover cover = coverOf(pixels, {"a b", {10, 20}, 20, 1}, kWidth, kHeight);
  ASSERT_EQ(cover.bytes.size(), static_cast<std::size_t>(cover.width * cover.height));
  for (const int x : {10, 19, 40, 49}) {
    EXPECT_EQ(coverAt(cover, x, 20), 255) << x;
    EXPECT_EQ(coverAt(cover, x, 29), 255) << x;
  }
  for (const int x : {5, 22, 27, 37, 52}) {
    EXPECT_EQ(coverAt(cover, x, 25), 0) << x;
  }
  EXPECT_EQ(coverAt(cover, 15, 17), 0);
  EXPECT_EQ(coverAt(cover, 15, 32), 0);
}

TEST(GlyphPixels, OpacityIsThatOfTheText) {
  GlyphPixels pixels = squares();
  EXPECT_NEAR(coverAt(coverOf(pixels, {"a", {10, 20}, 20, 0.5}, kWidth, kHeight), 15, 25), 128, 1);
  EXPECT_EQ(coverAt(coverOf(pixels, {"a", {10, 20}, 20, 0}, kWidth, kHeight), 15, 25), 0);
}

/// The middle of the ink is where it has to be, but for a step between two pixels.
TEST(GlyphPixels, PlacesAreExact) {
  GlyphPixels pixels = squares();
  Random rng(3);
  for (int i = 0; i < 100; ++i) {
    const double em = rng.between(6, 40);
    const PlanePoint start = {rng.between(20, 100), rng.between(20, 50)};
    const PixelCover cover = coverOf(pixels, {"a", start, em, 1}, kWidth, kHeight);
    const double whole = inkOf(cover);
    PlanePoint middle;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const double ink = coverAt(cover, x, y) / whole;
        middle.x += ink * (x + 0.5);
        middle.y += ink * (y + 0.5);
      }
    }
    EXPECT_NEAR(middle.x, start.x + em / 4, 1.0 / 16) << em;
    EXPECT_NEAR(middle.y, start.y + em / 4, 1.0 / 16) << em;
  }
}

TEST(GlyphPixels, NoMoreThanWhatIsSeenIsMade) {
  GlyphPixels pixels = squares();
  const std::string text(100000, 'a');
  const PixelCover cover = coverOf(pixels, {text, {-5000, 95}, 20, 1}, kWidth, kHeight);
  EXPECT_EQ(cover.left, 0);
  EXPECT_EQ(cover.width, kWidth);
  EXPECT_EQ(cover.bottom + cover.height, kHeight);
  for (const PlanePoint start : {PlanePoint{-500, 20}, {500, 20}, {20, -500}, {20, 500}}) {
    EXPECT_TRUE(coverOf(pixels, {"abc", start, 20, 1}, kWidth, kHeight).bytes.empty());
  }
  EXPECT_TRUE(coverOf(pixels, {"abc", {20, 20}, 20, 1}, 0, 0).bytes.empty());
  EXPECT_TRUE(coverOf(pixels, {"  ", {20, 20}, 20, 1}, kWidth, kHeight).bytes.empty());
  EXPECT_TRUE(coverOf(pixels, {"", {20, 20}, 20, 1}, kWidth, kHeight).bytes.empty());
}

/// However many heights, opacities and places there have been, and the pictures stay the same.
TEST(GlyphPixels, WhatIsKeptIsBounded) {
  GlyphPixels pixels = squares();
  const PixelText text{"abc", {20.3, 20.7}, 20, 0.75};
  const PixelCover first = coverOf(pixels, text, kWidth, kHeight);
  Random rng(5);
  std::size_t most = 0;
  std::size_t before = 0;
  bool hasForgotten = false;
  for (int i = 0; i < 1500; ++i) {
    coverOf(pixels,
            {"abcdefgh",
             {rng.between(0, 100), rng.between(0, 60)},
             rng.between(60, 90),
             rng.between(0, 1)},
            kWidth, kHeight);
    most = std::max(most, pixels.keptBytes());
    hasForgotten = hasForgotten || pixels.keptBytes() < before;
    before = pixels.keptBytes();
  }
  EXPECT_TRUE(hasForgotten);
  EXPECT_LE(most, GlyphPixels::kMostBytes + 8 * 9000);
  EXPECT_EQ(coverOf(pixels, text, kWidth, kHeight).bytes, first.bytes);
}

}  // namespace
}  // namespace zyn
