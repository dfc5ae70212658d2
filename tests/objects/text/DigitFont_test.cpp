#include "objects/text/DigitFont.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <set>
#include <string>

namespace zyn {
namespace {

using Limits = std::numeric_limits<double>;

TEST(NumberText, HasTenDigitsAtMost) {
  EXPECT_EQ(numberText(0), "0");
  EXPECT_EQ(numberText(-0.0), "-0");
  EXPECT_EQ(numberText(1234.5), "1234.5");
  EXPECT_EQ(numberText(-7), "-7");
  EXPECT_EQ(numberText(0.1), "0.1");
  EXPECT_EQ(numberText(1.0 / 3), "0.3333333333");
  EXPECT_EQ(numberText(12345678901.0), "1.23456789e+10");
  EXPECT_EQ(numberText(1e-5), "1e-05");
  EXPECT_EQ(numberText(1e300), "1e+300");
  EXPECT_EQ(numberText(9999999999.6), "1e+10");
}

TEST(NumberText, OfWhatIsNoNumber) {
  EXPECT_EQ(numberText(Limits::infinity()), "inf");
  EXPECT_EQ(numberText(-Limits::infinity()), "-inf");
  EXPECT_EQ(numberText(Limits::quiet_NaN()), "nan");
  EXPECT_EQ(numberText(-Limits::quiet_NaN()), "nan");
}

TEST(NumberText, IsThatOfPrintf) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20'000; ++i) {
    const auto bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!(value == value)) {
      continue;
    }
    char expected[80];
    std::snprintf(expected, sizeof expected, "%.10g", value);
    ASSERT_EQ(numberText(value), expected);
  }
}

constexpr std::string_view kNumberCharacters = "0123456789.-+e";

struct Measures {
  int height;
  int digitWidth, digitAdvance;
  int oneWidth, oneAdvance;
  int pointWidth, pointAdvance;
};

constexpr Measures kTable[kDigitSizes] = {
    {4, 3, 4, 2, 3, 1, 2}, {5, 4, 5, 2, 3, 1, 2}, {6, 4, 5, 2, 3, 1, 2},  {7, 5, 6, 3, 4, 1, 2},
    {8, 5, 6, 4, 5, 2, 3}, {9, 6, 7, 4, 5, 2, 3}, {10, 6, 7, 4, 5, 2, 3}, {11, 7, 9, 5, 7, 2, 4},
};

/// All eight sizes.
class DigitFontTest : public testing::TestWithParam<int> {
 protected:
  int size() const { return GetParam(); }
  const Measures& measures() const { return kTable[size() - 1]; }
  const DigitGlyph& glyph(char character) const { return digitGlyph(character, size()); }
};

TEST_P(DigitFontTest, GlyphsHaveTheirSizes) {
  EXPECT_EQ(digitHeight(size()), measures().height);
  for (const char character : kNumberCharacters) {
    const bool isOne = character == '1';
    const bool isPoint = character == '.';
    EXPECT_EQ(glyph(character).width, isOne     ? measures().oneWidth
                                      : isPoint ? measures().pointWidth
                                                : measures().digitWidth)
        << character;
    EXPECT_EQ(glyph(character).advance, isOne     ? measures().oneAdvance
                                        : isPoint ? measures().pointAdvance
                                                  : measures().digitAdvance)
        << character;
  }
}

TEST_P(DigitFontTest, PixelsFillTheWidthAndHeightOfDigitsAndNoMore) {
  for (const char character : kNumberCharacters) {
    const DigitGlyph& drawn = glyph(character);
    const int right = 8 - drawn.width;
    unsigned columns = 0;
    for (int row = 0; row < kLargestDigitHeight; ++row) {
      const unsigned pixels = drawn.rows.at(static_cast<std::size_t>(row));
      columns |= pixels;
      if (row >= digitHeight(size())) {
        EXPECT_EQ(pixels, 0U) << character << " row " << row;
      }
    }
    EXPECT_EQ(columns & ((1U << right) - 1U), 0U) << character;
    if (character >= '0' && character <= '9') {
      EXPECT_NE(drawn.rows.front(), 0) << character;
      EXPECT_NE(drawn.rows.at(static_cast<std::size_t>(digitHeight(size()) - 1)), 0) << character;
      if (character != '1') {
        EXPECT_NE(columns & 0x80U, 0U) << character;
        EXPECT_NE(columns & (1U << right), 0U) << character;
      }
    }
  }
}

TEST_P(DigitFontTest, EachCharacterHasAShapeOfItsOwn) {
  std::set<std::array<std::uint8_t, kLargestDigitHeight>> shapes;
  for (const char character : kNumberCharacters) {
    shapes.insert(glyph(character).rows);
  }
  EXPECT_EQ(shapes.size(), kNumberCharacters.size());
}

TEST_P(DigitFontTest, SignsOfTheDecimalPointAndTheExponentAreAllRead) {
  EXPECT_EQ(&glyph(','), &glyph('.'));
  EXPECT_EQ(&glyph(':'), &glyph('.'));
  EXPECT_EQ(&glyph('E'), &glyph('e'));
}

TEST_P(DigitFontTest, OtherCharactersAreGaps) {
  for (const char character : std::string(" infa/;*~\0\x80\xff", 12)) {
    const DigitGlyph& gap = glyph(character);
    EXPECT_EQ(gap.width, measures().digitWidth) << int{character};
    EXPECT_EQ(gap.advance, measures().digitAdvance) << int{character};
    for (const unsigned row : gap.rows) {
      EXPECT_EQ(row, 0U) << int{character};
    }
  }
}

TEST_P(DigitFontTest, ANumberIsAsWideAsItsFirstGlyphAndTheAdvancesOfTheOthers) {
  const Measures& m = measures();
  EXPECT_EQ(digitTextWidth("", size()), 0);
  EXPECT_EQ(digitTextWidth("7", size()), m.digitWidth);
  EXPECT_EQ(digitTextWidth("1", size()), m.oneWidth);
  EXPECT_EQ(digitTextWidth(".", size()), m.pointWidth);
  EXPECT_EQ(digitTextWidth("1234.5", size()), m.oneWidth + 4 * m.digitAdvance + m.pointAdvance);
  EXPECT_EQ(digitTextWidth("1234:5", size()), digitTextWidth("1234.5", size()));
  EXPECT_EQ(digitTextWidth("0.11", size()), m.digitWidth + m.pointAdvance + 2 * m.oneAdvance);
  EXPECT_EQ(digitTextWidth("-1e+20", size()), m.digitWidth + m.oneAdvance + 4 * m.digitAdvance);
}

INSTANTIATE_TEST_SUITE_P(Sizes, DigitFontTest, testing::Range(1, kDigitSizes + 1));

TEST(DigitFont, ZeroOfTheSmallestSizeIsARing) {
  const std::array<std::uint8_t, 4> ring = {0xE0, 0xA0, 0xA0, 0xE0};
  for (std::size_t row = 0; row < ring.size(); ++row) {
    EXPECT_EQ(digitGlyph('0', 1).rows.at(row), ring.at(row));
  }
}

TEST(DigitFont, RowsGoFromTheBottom) {
  // The bar of a 7 is its highest row; the arm of a 4 is near its lowest.
  EXPECT_EQ(digitGlyph('7', 4).rows[6], 0xF8);
  EXPECT_EQ(digitGlyph('4', 4).rows[2], 0xF8);
}

}  // namespace
}  // namespace zyn
