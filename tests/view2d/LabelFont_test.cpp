#include "view2d/LabelFont.h"

#include <gtest/gtest.h>

namespace zyn::test {
namespace {

Graduation labelled(const std::string& label, const std::string& exponent = {}) {
  return {.position = 0.0, .factor = 0.0, .label = label, .exponent = exponent};
}

TEST(LabelFontTest, OrdinaryWindowsHaveSmallDigits) {
  for (const double pixels : {0.0, 100.0, 1080.0, 1499.0}) {
    const LabelFont font = LabelFont::forWindow(pixels);
    EXPECT_EQ(font.size, 3) << pixels;
    EXPECT_EQ(font.exponentSize, 1) << pixels;
  }
}

TEST(LabelFontTest, LargeWindowsHaveLargerDigits) {
  EXPECT_EQ(LabelFont::forWindow(1500).size, 5);
  EXPECT_EQ(LabelFont::forWindow(3000).size, 8);
}

TEST(LabelFontTest, MeasuresLabels) {
  const LabelFont font;
  EXPECT_EQ(font.width(labelled("0.5")), 11);
  EXPECT_EQ(font.width(labelled("10")), 7);
  EXPECT_EQ(font.height(labelled("10")), 6);
  EXPECT_EQ(font.digitHeight(), 6);
}

TEST(LabelFontTest, ExponentsAreRaisedBehindTheLabel) {
  const LabelFont font;
  EXPECT_EQ(font.width(labelled("10", "-3")), 7 + 1 + 3 + 4);
  EXPECT_EQ(font.exponentRise(), 4);
  EXPECT_EQ(font.height(labelled("10", "-3")), 8);
  const LabelFont large = LabelFont::forWindow(3000);
  EXPECT_EQ(large.exponentRise(), 11 - 3);
  EXPECT_EQ(large.height(labelled("10", "-3")), 8 + 7);
}

/// Digits half an em height high, and half as wide.
FontMetrics outlineMetrics() {
  FontMetrics metrics;
  metrics.digits = {0.0, 0.5};
  for (const char character : {'0', '1', '5', '-', '3'}) {
    metrics.glyphs[static_cast<unsigned char>(character)] = {0.2F, 0.5F, 0, 0.5F, 0.25F, 0};
  }
  return metrics;
}

TEST(LabelFontTest, FinerPixelsTakeALargerHandDrawnFont) {
  const FontMetrics metrics = outlineMetrics();
  const LabelFont font = LabelFont::forWindow(800, 1.5, &metrics);
  EXPECT_EQ(font.outlines, nullptr);
  EXPECT_EQ(font.size, 3);
  EXPECT_EQ(font.drawnSize(3), 6);  // 9 pixels high
  EXPECT_EQ(font.drawnSize(1), 3);
  EXPECT_DOUBLE_EQ(font.digitHeight(), 6);
  const LabelFont nine{.size = 6};
  EXPECT_DOUBLE_EQ(font.width(labelled("10")), nine.width(labelled("10")) / 1.5);
}

TEST(LabelFontTest, OutlinesAreAsHighAsTheDigitsWouldBe) {
  const FontMetrics metrics = outlineMetrics();
  const LabelFont font = LabelFont::forWindow(800, 2, &metrics);
  ASSERT_EQ(font.outlines, &metrics);
  EXPECT_DOUBLE_EQ(font.digitHeight(), 6);
  EXPECT_DOUBLE_EQ(font.emHeight(3), 12);
  EXPECT_NEAR(font.width(labelled("10")), 12 * (0.25 + 0.2), 1e-5);
  EXPECT_DOUBLE_EQ(font.exponentRise(), 4);
  EXPECT_DOUBLE_EQ(font.height(labelled("10", "-3")), 8);
  EXPECT_NEAR(font.width(labelled("10", "-3")), 12 * 0.45 + 1 + 8 * 0.45, 1e-5);
}

TEST(LabelFontTest, WithoutOutlinesTheLargestDigitsAreAllThereIs) {
  const FontMetrics nothing;
  for (const FontMetrics* const metrics : {static_cast<const FontMetrics*>(nullptr), &nothing}) {
    const LabelFont font = LabelFont::forWindow(800, 4, metrics);
    EXPECT_EQ(font.outlines, nullptr);
    EXPECT_EQ(font.drawnSize(3), 8);
    EXPECT_DOUBLE_EQ(font.digitHeight(), 11 / 4.0);
  }
}

TEST(LabelFontTest, CoarserPixelsLeaveTheSmallestDigits) {
  const LabelFont font = LabelFont::forWindow(800, 0.25);
  EXPECT_EQ(font.drawnSize(3), 1);
  EXPECT_EQ(font.drawnSize(1), 1);
}

}  // namespace
}  // namespace zyn::test
