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

}  // namespace
}  // namespace zyn::test
