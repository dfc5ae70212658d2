#include "objects/text/TextBox.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zyn {
namespace {

constexpr double kExact = 1e-12;

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
