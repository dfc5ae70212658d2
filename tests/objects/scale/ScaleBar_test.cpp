#include "objects/scale/ScaleBar.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "plot/BlockText.h"
#include "support/BoxFont.h"

namespace zyn::test {
namespace {

constexpr PlanePoint kPicture{400, 300};

class ScaleBarTest : public testing::Test {
 protected:
  BarLayout layOut(double pixelScale = 1.0, PlanePoint picture = kPicture) const {
    return layOutBar(bar, scale, picture, pixelScale, font);
  }

  const BarText* find(const BarLayout& layout, const std::string& text) const {
    const auto found = std::ranges::find(layout.texts, text, &BarText::text);
    return found != layout.texts.end() ? &*found : nullptr;
  }

  /// Where the text's box lies.
  PixelBox boxOf(const BarLayout& layout, const BarText& text) const {
    const TextBox box = measureText(font, text.text, font.digits);
    const double em = layout.emHeight;
    return {text.start.x + em * box.left, text.start.x + em * box.right,
            text.start.y + em * box.bottom, text.start.y + em * box.top};
  }

  PixelBox titleBox(const BarLayout& layout) const {
    const BarText& text = layout.texts.back();
    EXPECT_EQ(text.shaped, bar.title);
    const double em = layout.emHeight;
    return {text.start.x + em * text.shaped->left, text.start.x + em * text.shaped->right,
            text.start.y + em * text.shaped->text.bottom,
            text.start.y + em * text.shaped->text.top};
  }

  ScaleBar bar;
  ColourScale scale;
  const FontMetrics font = boxFont();
};

TEST_F(ScaleBarTest, LiesWithItsReferenceAtThePosition) {
  bar.x = 0.5;
  bar.y = 0.25;
  bar.width = 30;
  bar.height = 100;
  bar.reference = 1;
  EXPECT_EQ(layOut().bar, (PixelBox{200, 230, 75, 175}));
  bar.reference = 9;
  EXPECT_EQ(layOut().bar, (PixelBox{185, 215, 25, 125}));
  bar.reference = 3;
  EXPECT_EQ(layOut().bar, (PixelBox{170, 200, -25, 75}));
  bar.reference = 0;
  EXPECT_EQ(layOut().bar, (PixelBox{200, 230, 75, 175}));
}

TEST_F(ScaleBarTest, GrowsWithTheResolution) {
  bar.x = bar.y = 0.5;
  bar.reference = 9;
  const BarLayout once = layOut();
  const BarLayout twice = layOut(2, {800, 600});
  EXPECT_EQ(twice.bar, (PixelBox{2 * once.bar.left, 2 * once.bar.right, 2 * once.bar.bottom,
                                 2 * once.bar.top}));
  EXPECT_EQ(twice.emHeight, 2 * once.emHeight);
  EXPECT_EQ(twice.lineWidth, 2);
  EXPECT_EQ(twice.texts.size(), once.texts.size());
}

TEST_F(ScaleBarTest, TicksOfAnUprightBarAreOnItsRight) {
  bar.x = bar.y = 0.5;
  bar.reference = 9;
  const BarLayout layout = layOut();
  ASSERT_EQ(layout.ticks.size(), 6U);
  ASSERT_EQ(layout.texts.size(), 6U);
  for (const PixelBox& tick : layout.ticks) {
    EXPECT_EQ(tick.left, layout.bar.right);
    EXPECT_EQ(tick.top - tick.bottom, 1);
  }
  EXPECT_EQ(layout.ticks.front().bottom, layout.bar.bottom);
  EXPECT_EQ(layout.ticks.back().top, layout.bar.top);
  const BarText* label = find(layout, "0.4");
  ASSERT_TRUE(label);
  const PixelBox box = boxOf(layout, *label);
  EXPECT_GT(box.left, layout.ticks[2].right);
  EXPECT_NEAR((box.bottom + box.top) / 2, (layout.ticks[2].bottom + layout.ticks[2].top) / 2, 1);
}

TEST_F(ScaleBarTest, WithoutRoomOnTheRightTheyAreOnItsLeft) {
  bar.x = 1;
  bar.reference = 6;
  const BarLayout layout = layOut();
  EXPECT_EQ(layout.ticks.front().right, layout.bar.left);
  const BarText* label = find(layout, "0.4");
  ASSERT_TRUE(label);
  EXPECT_LT(boxOf(layout, *label).right, layout.ticks[2].left);
}

TEST_F(ScaleBarTest, ALyingBarHasItsTicksBelowOrAbove) {
  bar.width = 200;
  bar.height = 20;
  bar.x = 0.5;
  bar.y = 0.5;
  bar.reference = 9;
  BarLayout layout = layOut();
  ASSERT_GE(layout.ticks.size(), 3U);
  EXPECT_EQ(layout.ticks.front().top, layout.bar.bottom);
  EXPECT_EQ(layout.ticks.front().left, layout.bar.left);
  EXPECT_EQ(layout.ticks.back().right, layout.bar.right);
  EXPECT_LT(boxOf(layout, layout.texts.front()).top, layout.ticks.front().bottom);
  bar.y = 0;
  bar.reference = 5;
  layout = layOut();
  EXPECT_EQ(layout.ticks.front().bottom, layout.bar.top);
  EXPECT_GT(boxOf(layout, layout.texts.front()).bottom, layout.ticks.front().top);
}

TEST_F(ScaleBarTest, LabelsHaveRoomAndStayInThePicture) {
  for (const double width : {10.0, 60.0, 150.0, 390.0}) {
    for (const double height : {8.0, 40.0, 120.0, 300.0}) {
      for (const double last : {1.0, 1e5, -3e-8, 123456.789}) {
        bar.width = width;
        bar.height = height;
        bar.x = bar.y = 1;
        bar.reference = 3;
        scale.range.last = last;
        const BarLayout layout = layOut();
        std::vector<PixelBox> boxes;
        for (const BarText& text : layout.texts) {
          const PixelBox box = boxOf(layout, text);
          EXPECT_TRUE(box.left >= 0 && box.right <= 400 && box.bottom >= 0 && box.top <= 300);
          for (const PixelBox& other : boxes) {
            EXPECT_TRUE(box.left > other.right || box.right < other.left ||
                        box.bottom > other.top || box.top < other.bottom)
                << text.text << " in " << width << " x " << height;
          }
          boxes.push_back(box);
        }
      }
    }
  }
}

TEST_F(ScaleBarTest, ItsTitleIsAboveOrWithoutRoomBelow) {
  bar.x = bar.y = 0.5;
  bar.reference = 9;
  bar.title = layOutBlocks("Stress", true);
  BarLayout layout = layOut();
  PixelBox box = titleBox(layout);
  EXPECT_GT(box.bottom, layout.bar.top);
  EXPECT_NEAR((box.left + box.right) / 2, 200, 1);
  bar.y = 1;
  bar.reference = 7;
  layout = layOut();
  box = titleBox(layout);
  EXPECT_LT(box.top, layout.bar.bottom);
}

TEST_F(ScaleBarTest, WhatCannotBeLabelledIsABarOnly) {
  scale.isLogarithmic = true;  // from 0
  EXPECT_TRUE(layOut().texts.empty());
  EXPECT_TRUE(layOut().ticks.empty());
}

}  // namespace
}  // namespace zyn::test
