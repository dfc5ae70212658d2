#include "objects/text/TextLabel.h"

#include <gtest/gtest.h>

#include <limits>

namespace zyn {
namespace {

/// Lines of 1.25 and 0.5 em heights.
FontMetrics metrics() {
  FontMetrics font;
  font.glyphs['A'] = {.blackBoxX = 0.5F, .originX = 0.125F, .cellIncX = 0.75F};
  font.glyphs['1'] = {.blackBoxX = 0.25F, .originX = 0.125F, .cellIncX = 0.5F};
  font.text = {-0.25, 1.0};
  font.digits = {0.0, 0.5};
  return font;
}

TextLabel labelOf(const char* text) {
  TextLabel label;
  label.text = text;
  return label;
}

void expectPixels(const TextBox& box, double left, double right, double bottom, double top) {
  EXPECT_EQ(box.left, left);
  EXPECT_EQ(box.right, right);
  EXPECT_EQ(box.bottom, bottom);
  EXPECT_EQ(box.top, top);
}

TEST(TextLabel, ShowsItsTextOrItsValue) {
  TextLabel label = labelOf("A");
  label.value = 1234.5;
  EXPECT_EQ(label.shownText(), "A");
  label.isNumeric = true;
  EXPECT_EQ(label.shownText(), "1234.5");
}

TEST(TextLabel, PixelBoxAroundItsPosition) {
  // 20 pixels for 1.25 em heights: 16 an em. From 2 to 10 and from -4 to 16.
  TextLabel label = labelOf("A");
  expectPixels(label.pixelBox(metrics()), 2, 10, -4, 16);
  label.reference = 1;
  expectPixels(label.pixelBox(metrics()), 0, 8, 0, 20);
  label.reference = 3;
  expectPixels(label.pixelBox(metrics()), -8, 0, -20, 0);
  label.reference = 9;
  expectPixels(label.pixelBox(metrics()), -4, 4, -10, 10);
}

TEST(TextLabel, WhatIsBehindItSurroundsIt) {
  TextLabel label = labelOf("A");
  label.reference = 1;
  for (const bool filled : {true, false}) {
    label.background = {.isFilled = filled, .isFramed = !filled};
    expectPixels(label.pixelBox(metrics()), -4, 12, -2, 22);  // the text stays
  }
  label.text.clear();
  EXPECT_FALSE(label.hasBackground(label.box(metrics())));
  expectPixels(label.pixelBox(metrics()), 0, 0, 0, 20);
}

TEST(TextLabel, LaidOutItHasTheBoxAndTheLinesOfThat) {
  TextLabel label = labelOf("A");
  label.shaped = std::make_shared<const ShapedText>(
      ShapedText{.glyphs = {}, .left = -0.5, .right = 2, .text = {-0.5, 1.5}, .digits = {0, 1}});
  expectPixels(label.pixelBox(metrics()), -5, 20, -5, 15);
  label.numericSize = true;
  expectPixels(label.pixelBox(metrics()), -10, 40, 0, 20);
  label.isNumeric = true;
  EXPECT_EQ(label.digitSize(0.25), 0) << "no bitmaps in its place";
}

TEST(TextLabel, PixelBoxGoesOutToWholePixels) {
  TextLabel label = labelOf("A");
  label.height = 21;  // 16.8 an em: from 2.1 to 10.5 and from -4.2 to 16.8
  expectPixels(label.pixelBox(metrics()), 2, 11, -5, 17);
  label.reference = 9;
  expectPixels(label.pixelBox(metrics()), -5, 5, -11, 11);
  // Exact at every height in spite of rounding.
  label.reference = 1;
  for (std::int32_t height = 1; height < 500; ++height) {
    label.height = height;
    EXPECT_EQ(label.pixelBox(metrics()).top, height);
    EXPECT_EQ(label.pixelBox(metrics()).bottom, 0);
  }
}

TEST(TextLabel, PixelBoxOfTheDigitLine) {
  TextLabel label;
  label.value = 11;
  label.isNumeric = true;
  label.numericSize = true;  // 40 pixels an em
  expectPixels(label.pixelBox(metrics()), 5, 20 + 5 + 10, 0, 20);
}

TEST(TextLabel, PixelBoxOfNothing) {
  TextLabel label;
  expectPixels(label.pixelBox(metrics()), 0, 0, -4, 16);
  label.text = "A";
  for (const std::int32_t height : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    label.height = height;
    expectPixels(label.pixelBox(metrics()), 0, 0, 0, 0);
  }
  label.height = 20;
  expectPixels(label.pixelBox(FontMetrics()), 0, 0, 0, 0);
}

}  // namespace
}  // namespace zyn
