#include "objects/text/FontMetrics.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

// Numbers that binary fractions hold exactly.
GlyphMetrics glyph(float originY, float blackBoxY) { return {0.5F, blackBoxY, 0.0F, originY}; }

FontMetrics evenDigits() {
  FontMetrics metrics;
  for (std::size_t digit = '0'; digit <= '9'; ++digit) {
    metrics.glyphs[digit] = glyph(0.75F, 0.75F);
  }
  return metrics;
}

TEST(FontMetrics, TextGoesFromBelowTheDescenderToAboveTheCapitals) {
  FontMetrics metrics = evenDigits();
  metrics.glyphs['M'] = glyph(0.75F, 0.75F);
  metrics.glyphs['p'] = glyph(0.5F, 0.75F);
  metrics.glyphs['A'] = glyph(2.0F, 4.0F);  // no letter that counts
  metrics.measureLines();
  EXPECT_NEAR(metrics.text.top, 0.75 + 0.2, 1e-15);
  EXPECT_NEAR(metrics.text.bottom, -0.25 - 0.02, 1e-15);
  EXPECT_NEAR(metrics.text.height(), 1.22, 1e-15);
  EXPECT_NEAR(metrics.text.middle(), 0.34, 1e-15);
}

TEST(FontMetrics, DigitsGoFromTheLowestToTheHighest) {
  FontMetrics metrics = evenDigits();
  metrics.measureLines();
  EXPECT_EQ(metrics.digits.bottom, 0);
  EXPECT_EQ(metrics.digits.top, 0.75);

  metrics.glyphs['3'] = glyph(0.75F, 1.0F);
  metrics.glyphs['8'] = glyph(0.875F, 0.875F);
  metrics.glyphs['/'] = metrics.glyphs[':'] = glyph(2.0F, 4.0F);
  metrics.measureLines();
  EXPECT_EQ(metrics.digits.bottom, -0.25);
  EXPECT_EQ(metrics.digits.top, 0.875);
}

TEST(FontMetrics, DigitsMayAllLieOnOneSideOfTheBaseline) {
  FontMetrics metrics;
  for (std::size_t digit = '0'; digit <= '9'; ++digit) {
    metrics.glyphs[digit] = glyph(0.75F, 0.5F);
  }
  metrics.measureLines();
  EXPECT_EQ(metrics.digits.bottom, 0.25);
  EXPECT_EQ(metrics.digits.top, 0.75);
}

TEST(FontMetrics, WithoutGlyphsLinesAreEmpty) {
  FontMetrics metrics;
  metrics.measureLines();
  EXPECT_EQ(metrics.text.height(), 0);
  EXPECT_EQ(metrics.digits.height(), 0);
}

}  // namespace
}  // namespace zyn
