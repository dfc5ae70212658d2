// Colour bars beside the plot area.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "plot/BlockText.h"
#include "plot/PlotLayout.h"

namespace zyn::test {
namespace {

class PlotBarsTest : public testing::Test {
 protected:
  PlotBarsTest() {
    axes[0].title = "Time";
    axes[1].side = AxisSide::kLeft;
    axes[1].title = "Depth";
  }

  PlotLayout layOut(double width = 600, double height = 400, double pixelScale = 1) {
    page = {width, height, pixelScale, shapeBlocks};
    input.page = &page;
    input.theme = &themeOf(PlotThemeKind::kDark);
    input.axes.clear();
    for (const PlotAxis& axis : axes) {
      input.axes.push_back({&axis, axis.range});
    }
    return layOutPlot(input);
  }

  void addBar(double first, double last, const std::string& title) {
    input.bars.push_back({{.range = {first, last}}, title});
  }

  static std::vector<PixelBox> barsIn(const PlotLayout& layout) {
    std::vector<PixelBox> boxes;
    for (const DrawnImage& image : itemsOf<DrawnImage>(layout.inFront)) {
      boxes.push_back(image.box);
    }
    return boxes;
  }

  /// Texts on the right of the plot area, and those of them that are upright.
  static std::vector<DrawnText> textsBeside(const PlotLayout& layout) {
    std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
    std::erase_if(texts,
                  [&](const DrawnText& text) { return inkOf(text).left < layout.area.right; });
    return texts;
  }

  PlotPage page;
  std::vector<PlotAxis> axes = std::vector<PlotAxis>(2);
  PlotInput input;
};

TEST_F(PlotBarsTest, IsAsHighAsThePlotAreaAndHasAnAxis) {
  addBar(10, 30, "\u03a9\u00b7m");
  for (const double scale : {1.0, 2.0}) {
    const PlotLayout layout = layOut(600 * scale, 400 * scale, scale);
    const std::vector<PixelBox> bars = barsIn(layout);
    ASSERT_EQ(bars.size(), 1U);
    EXPECT_EQ(bars[0].bottom, layout.area.bottom);
    EXPECT_EQ(bars[0].top, layout.area.top);
    EXPECT_EQ(bars[0].left, layout.area.right + 10 * scale);
    EXPECT_NEAR(bars[0].width(), 16 * scale, 1);
    const std::vector<DrawnText> texts = textsBeside(layout);
    const auto label = std::ranges::find(texts, "20", &DrawnText::text);
    ASSERT_NE(label, texts.end());
    const PixelBox ink = inkOf(*label);
    EXPECT_NEAR((ink.bottom + ink.top) / 2, (layout.area.bottom + layout.area.top) / 2, 1);
    EXPECT_GT(ink.left, bars[0].right + 5 * scale);
    EXPECT_EQ(label->emHeight, 12 * scale);
    EXPECT_EQ(label->colour, input.theme->text);
    EXPECT_NE(std::ranges::find(texts, "10", &DrawnText::text), texts.end()) << "at its ends too";
    EXPECT_NE(std::ranges::find(texts, "30", &DrawnText::text), texts.end());
    EXPECT_EQ(texts.back().text, "\u03a9\u00b7m");
    EXPECT_TRUE(texts.back().isUpright);
    EXPECT_EQ(layout.axes.size(), 2U) << "those that were asked for";
  }
}

TEST_F(PlotBarsTest, ItsColoursRiseOrFallWithItsRange) {
  addBar(0, 1, "");
  input.bars[0].scale.palette = ColourPalette(ColourPalette::kGrey);
  const auto image = itemsOf<DrawnImage>(layOut().inFront)[0].image;
  EXPECT_EQ(image->pixels[0], 0);
  EXPECT_EQ(image->pixels[image->pixels.size() - 4], 255);
  const auto labelMiddle = [this](const std::string& text) {
    const PlotLayout layout = layOut();
    const std::vector<DrawnText> texts = textsBeside(layout);
    const PixelBox ink = inkOf(*std::ranges::find(texts, text, &DrawnText::text));
    return (ink.bottom + ink.top) / 2;
  };
  EXPECT_LT(labelMiddle("0.0"), labelMiddle("1.0"));
  input.bars[0].scale.range = {1, 0};
  EXPECT_GT(labelMiddle("0.0"), labelMiddle("1.0"));
  input.bars[0].scale.bands = 4;
  const PlotLayout banded = layOut();
  EXPECT_TRUE(itemsOf<DrawnImage>(banded.inFront).empty());
  const DrawColour third{2 / 3.0, 2 / 3.0, 2 / 3.0};
  const std::vector<DrawnBoxes> drawn = itemsOf<DrawnBoxes>(banded.inFront);
  const auto band = std::ranges::find_if(drawn, [&](const DrawnBoxes& boxes) {
    return std::abs(boxes.colour.r - third.r) < 1e-3 && boxes.colour.r == boxes.colour.g;
  });
  ASSERT_NE(band, drawn.end());
  EXPECT_NEAR(band->boxes[0].height(), banded.area.height() / 4, 1);
  EXPECT_NEAR(band->boxes[0].bottom, banded.area.bottom + banded.area.height() / 2, 1);
}

TEST_F(PlotBarsTest, SeveralStandBesideAxesAndLegend) {
  PlotAxis& right = axes.emplace_back();
  right.side = AxisSide::kRight;
  right.title = "Speed";
  addBar(0, 1, "first");
  addBar(1e6, 5e6, "second");
  input.bars[1].scale.isLogarithmic = true;
  input.legend = {true, LegendPlace::kRight};
  input.entries = {{"one", true, {}}, {"two", true, {}}};
  for (const double width : {500.0, 900.0, 1600.0}) {
    const PlotLayout layout = layOut(width, 400);
    const std::vector<PixelBox> bars = barsIn(layout);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_GT(bars[0].left, layout.axes[2].box.right);
    EXPECT_GT(bars[1].left, bars[0].right);
    EXPECT_GT(layout.legend.left, bars[1].right);
    EXPECT_LE(layout.legend.right, width);
    for (const DrawnText& text : textsBeside(layout)) {
      EXPECT_TRUE(std::ranges::none_of(bars, [&](const PixelBox& bar) {
        return bar.overlaps(inkOf(text));
      })) << text.text;
    }
  }
}

TEST_F(PlotBarsTest, WithoutRoomItGoesBeforeThePlotAreaDoes) {
  addBar(0, 1, "title");
  for (const double width : {20.0, 60.0, 100.0, 160.0, 240.0, 320.0}) {
    const PlotLayout layout = layOut(width, 240);
    EXPECT_FALSE(layout.area.isEmpty());
    for (const PixelBox& bar : barsIn(layout)) {
      EXPECT_GT(bar.left, layout.area.right);
      EXPECT_LE(bar.right, width);
    }
  }
  EXPECT_EQ(barsIn(layOut(320, 240)).size(), 1U);
  EXPECT_TRUE(barsIn(layOut(20, 240)).empty());
}

TEST_F(PlotBarsTest, ARangeThatNoAxisHasIsABarWithoutLabels) {
  addBar(-1, 5, "title");
  input.bars[0].scale.isLogarithmic = true;
  EXPECT_EQ(barsIn(layOut()).size(), 1U);
  addBar(3, 3, "");
  EXPECT_EQ(barsIn(layOut()).size(), 2U);
}

}  // namespace
}  // namespace zyn::test
