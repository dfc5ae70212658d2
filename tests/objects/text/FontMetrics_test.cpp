#include "objects/text/FontMetrics.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zyn {
namespace {

constexpr double kResolution = 72.0;
constexpr double kPixel = 0.004;
constexpr double kExact = 1e-12;

double pixels(double value, std::int32_t unit, double resolution = kResolution) {
  return FontSize{value, unit}.inPixels(kPixel, resolution);
}

TEST(FontSizeTest, TwentyPixelsAtFirst) {
  EXPECT_EQ(FontSize().inPixels(kPixel, kResolution), 20);
  EXPECT_FALSE(FontSize().isInModel());
}

TEST(FontSizeTest, LengthsOnPaperFollowTheResolution) {
  EXPECT_NEAR(pixels(25.4, FontSize::kMillimetre), 72, kExact);
  EXPECT_NEAR(pixels(5, FontSize::kMillimetre), 5 / 25.4 * 72, kExact);
  EXPECT_NEAR(pixels(0.5, FontSize::kInch), 36, kExact);
  EXPECT_NEAR(pixels(18, FontSize::kPoint), 18, kExact);
  EXPECT_NEAR(pixels(25.4, FontSize::kMillimetre, 300), 300, kExact);
  EXPECT_NEAR(pixels(0.5, FontSize::kInch, 300), 150, kExact);
  EXPECT_NEAR(pixels(18, FontSize::kPoint, 144), 36, kExact);
  EXPECT_EQ(pixels(18, FontSize::kPixel, 144), 18);
}

TEST(FontSizeTest, LengthsInTheModelFollowTheView) {
  EXPECT_NEAR(pixels(80, FontSize::kModelMillimetre), 20, kExact);
  EXPECT_NEAR(pixels(4, FontSize::kModelInch), 25.4, kExact);
  EXPECT_NEAR(pixels(0.1, FontSize::kModel), 25, kExact);
}

TEST(FontSizeTest, OnlyTheLastThreeUnitsAreInTheModel) {
  for (const std::int32_t unit :
       {FontSize::kPixel, FontSize::kMillimetre, FontSize::kInch, FontSize::kPoint}) {
    EXPECT_FALSE((FontSize{1, unit}.isInModel())) << unit;
  }
  for (const std::int32_t unit :
       {FontSize::kModelMillimetre, FontSize::kModelInch, FontSize::kModel}) {
    EXPECT_TRUE((FontSize{1, unit}.isInModel())) << unit;
  }
}

TEST(FontSizeTest, AnyOtherUnitCountsAsPixels) {
  for (const std::int32_t unit : {-1, 7, 1000, -2147483647}) {
    EXPECT_EQ(pixels(33.5, unit), 33.5) << unit;
    EXPECT_FALSE((FontSize{1, unit}.isInModel())) << unit;
  }
}

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

/// Measures that single precision holds exactly.
FontMetrics metrics() {
  FontMetrics font;
  font.glyphs['A'] = {.blackBoxX = 0.5F, .originX = 0.125F, .cellIncX = 0.75F};
  font.glyphs['i'] = {.blackBoxX = 0.0625F, .originX = 0.03125F, .cellIncX = 0.25F};
  font.glyphs[0xE9] = {.blackBoxX = 0.375F, .originX = -0.25F, .cellIncX = 0.5F};
  font.text = {-0.25, 1.0};
  font.digits = {0.0, 0.75};
  return font;
}

void expectBox(const TextBox& box, double left, double right, double bottom, double top) {
  EXPECT_NEAR(box.left, left, kExact);
  EXPECT_NEAR(box.right, right, kExact);
  EXPECT_NEAR(box.bottom, bottom, kExact);
  EXPECT_NEAR(box.top, top, kExact);
}

TEST(TextBox, OneCharacterIsItsBlackBox) {
  const FontMetrics font = metrics();
  expectBox(measureText(font, "A", font.text), 0.125, 0.625, -0.25, 1.0);
  expectBox(measureText(font, "\xE9", font.text), -0.25, 0.125, -0.25, 1.0);
}

TEST(TextBox, GoesFromTheFirstBlackBoxToTheLast) {
  const FontMetrics font = metrics();
  expectBox(measureText(font, "iA", font.text), 0.03125, 0.25 + 0.125 + 0.5, -0.25, 1.0);
  expectBox(measureText(font, "AiA", font.text), 0.125, 0.75 + 0.25 + 0.125 + 0.5, -0.25, 1.0);
  expectBox(measureText(font, "AA\xE9", font.text), 0.125, 1.5 - 0.25 + 0.375, -0.25, 1.0);
}

TEST(TextBox, IsAsHighAsItsLine) {
  const FontMetrics font = metrics();
  expectBox(measureText(font, "A", font.digits), 0.125, 0.625, 0.0, 0.75);
}

TEST(TextBox, OfNothingHasNoWidth) {
  const FontMetrics font = metrics();
  expectBox(measureText(font, "", font.text), 0.0, 0.0, -0.25, 1.0);
}

TEST(TextBox, AGlyphThatIsNotThereTakesNoRoom) {
  const FontMetrics font = metrics();
  expectBox(measureText(font, "A\xFF", font.text), 0.125, 0.75, -0.25, 1.0);
  expectBox(measureText(font, "\xFF", font.text), 0.0, 0.0, -0.25, 1.0);
}

TEST(TextBox, OfEveryByteAndOfALongText) {
  const FontMetrics font = metrics();
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  EXPECT_NEAR(measureText(font, all, font.text).right, 0.75 + 0.25 + 0.5, kExact);
  EXPECT_NEAR(measureText(font, std::string(1'000'001, 'A'), font.text).right, 750'000.625, 1e-6);
}

TEST(TextBox, AnchorsByTheirCodes) {
  const TextBox box{.left = -0.5, .right = 2.5, .bottom = -0.25, .top = 1.0};
  const struct {
    std::int32_t reference;
    double x;
    double y;
  } cases[] = {{1, -0.5, -0.25},
               {2, 2.5, -0.25},
               {3, 2.5, 1.0},
               {4, -0.5, 1.0},
               {5, 1.0, -0.25},
               {6, 2.5, 0.375},
               {7, 1.0, 1.0},
               {8, -0.5, 0.375},
               {9, 1.0, 0.375},
               {0, 0.0, 0.0},
               {10, 0.0, 0.0},
               {-1, 0.0, 0.0},
               {std::numeric_limits<std::int32_t>::max(), 0.0, 0.0},
               {std::numeric_limits<std::int32_t>::min(), 0.0, 0.0}};
  for (const auto& [reference, x, y] : cases) {
    const PlanePoint anchor = anchorOf(box, reference);
    EXPECT_NEAR(anchor.x, x, kExact) << reference;
    EXPECT_NEAR(anchor.y, y, kExact) << reference;
  }
}

}  // namespace
}  // namespace zyn
