#include "objects/text/TextCoverage.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zyn {
namespace {

Contour rectangle(double left, double bottom, double right, double top) {
  return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

Contour reversed(const Contour& contour) { return {contour.rbegin(), contour.rend()}; }

GlyphShape glyphOf(std::vector<Contour> contours) { return {std::move(contours), {}}; }

/// Ten by ten pixels.
class TextCoverageTest : public testing::Test {
 protected:
  static constexpr int kSide = 10;

  int at(int x, int y) const {
    return coverage_.background().at(static_cast<std::size_t>(y * kSide + x));
  }

  TextCoverage coverage_{0, 0, kSide, kSide};
};

TEST_F(TextCoverageTest, NothingCoversNothing) {
  coverage_.add(glyphOf({}), {2, 2}, 5, 1);
  for (const std::uint8_t seen : coverage_.background()) {
    EXPECT_EQ(seen, 255);
  }
}

TEST_F(TextCoverageTest, InsideIsCoveredAndFarAwayIsNot) {
  coverage_.add(glyphOf({rectangle(0, 0, 1, 1)}), {2, 3}, 5, 1);
  for (int x = 2; x < 7; ++x) {
    for (int y = 3; y < 8; ++y) {
      EXPECT_EQ(at(x, y), 0) << x << ", " << y;
    }
  }
  for (int i = 0; i < kSide; ++i) {
    EXPECT_EQ(at(i, 1), 255);
    EXPECT_EQ(at(i, 9), 255);
    EXPECT_EQ(at(0, i), 255);
    EXPECT_EQ(at(8, i), 255);
  }
}

/// A line covers half of a pixel whose middle is half a pixel away.
TEST_F(TextCoverageTest, EdgesAreSmooth) {
  coverage_.add(glyphOf({rectangle(0, 0, 1, 1)}), {2, 3}, 5, 1);
  EXPECT_EQ(at(1, 5), 128);
  EXPECT_EQ(at(7, 5), 128);
  EXPECT_EQ(at(4, 2), 128);
  EXPECT_EQ(at(4, 8), 128);
  EXPECT_GT(at(1, 2), 128);
}

TEST_F(TextCoverageTest, EdgesMoveByPartsOfAPixel) {
  coverage_.add(glyphOf({rectangle(0, 0, 1, 1)}), {2.25, 3}, 5, 1);
  EXPECT_EQ(at(1, 5), 191);
  EXPECT_EQ(at(7, 5), 64);
}

TEST_F(TextCoverageTest, WhatIsTranslucentIsSeenThrough) {
  coverage_.add(glyphOf({rectangle(-4, -4, 4, 4)}), {5, 5}, 5, 0.5);
  EXPECT_EQ(at(5, 5), 128);
  coverage_.add(glyphOf({rectangle(-4, -4, 4, 4)}), {5, 5}, 5, 0.5);
  EXPECT_EQ(at(5, 5), 64);
}

TEST_F(TextCoverageTest, HolesStayOpenAndOverlapsDoNot) {
  const Contour outer = rectangle(0, 0, 9, 9);
  const Contour inner = rectangle(3, 3, 6, 6);
  coverage_.add(glyphOf({outer, reversed(inner)}), {0.5, 0.5}, 1, 1);
  EXPECT_EQ(at(1, 1), 0);
  EXPECT_EQ(at(5, 5), 255);
  TextCoverage full(0, 0, kSide, kSide);
  full.add(glyphOf({outer, inner}), {0.5, 0.5}, 1, 1);
  EXPECT_EQ(full.background().at(5 * kSide + 5), 0);
}

/// Whatever the order and the place of the rectangle that is looked at.
TEST_F(TextCoverageTest, WhatLiesOutsideIsLeftOut) {
  const GlyphShape glyph = glyphOf({{{0, 0}, {3, -1}, {2, 2}}, {{1, 1}, {4, 3}, {0.5, 4}}});
  TextCoverage large(-20, -20, 60, 60);
  large.add(glyph, {-3.3, 2.7}, 6, 0.75);
  coverage_.add(glyph, {-3.3, 2.7}, 6, 0.75);
  const std::vector<std::uint8_t> expected = large.background();
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      EXPECT_NEAR(at(x, y), expected.at(static_cast<std::size_t>((y + 20) * 60 + x + 20)), 1);
    }
  }
}

TEST_F(TextCoverageTest, ShortLinesAreThin) {
  coverage_.add(glyphOf({{{0, 0}, {0.25, 0}}}), {5.375, 5.5}, 1, 1);
  const double once = 1 - 0.25;  // there and back again
  EXPECT_NEAR(at(5, 5), 255 * once * once, 1);
  EXPECT_EQ(at(5, 8), 255);
}

TEST_F(TextCoverageTest, PointsCoverNothing) {
  coverage_.add(glyphOf({{{1, 1}, {1, 1}}, {{2, 2}}, {}}), {3, 3}, 1, 1);
  for (const std::uint8_t seen : coverage_.background()) {
    EXPECT_EQ(seen, 255);
  }
}

}  // namespace
}  // namespace zyn
