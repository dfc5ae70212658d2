#include "plot/PlotCursors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "plot/BlockText.h"

namespace zyn::test {
namespace {

class PlotCursorsTest : public testing::Test {
 protected:
  PlotCursorsTest() {
    axes.resize(2);
    axes[0].range = {0, 10};
    axes[1].side = AxisSide::kLeft;
    input.page = &page;
    input.theme = &themeOf(PlotThemeKind::kLight);
    input.axes = {{&axes[0], axes[0].range}, {&axes[1]}};
    layout = layOutPlot(input);
    cursors = {{3, 5}, {{"Time", {}, {"3.0 s", "5.0 s"}, "2.0 s"}}};
    addReading("Force", "1.25 N", "-10.50 N", "-11.75 N");
  }

  void addReading(const std::string& name, const std::string& first, const std::string& second,
                  const std::string& difference) {
    const auto drawSample = [](const PixelBox& box, DrawnLayer& layer) {
      layer.items.emplace_back(DrawnBoxes{kSample, {box}});
    };
    cursors.readings.push_back({name, drawSample, {first, second}, difference});
  }

  Drawing draw() { return drawCursors(cursors, layout, layout.axes[0].scale, input); }

  static std::vector<PixelBox> linesOf(const Drawing& drawing) {
    return itemsOf<DrawnBoxes>({drawing.front()}).front().boxes;
  }

  static std::vector<PixelBox> boxesIn(const Drawing& drawing, const DrawColour& colour) {
    std::vector<PixelBox> found;
    for (const DrawnBoxes& boxes : itemsOf<DrawnBoxes>(drawing)) {
      if (boxes.colour == colour) {
        found.push_back(boxes.boxes.front());
      }
    }
    return found;
  }

  /// The ground of the table.
  PixelBox tableIn(const Drawing& drawing) const {
    const std::vector<PixelBox> found = boxesIn(drawing, input.theme->legend);
    EXPECT_LE(found.size(), 1U);
    return found.empty() ? PixelBox{} : found.front();
  }

  static PixelBox inkOfText(const Drawing& drawing, const std::string& text) {
    const std::vector<DrawnText> texts = itemsOf<DrawnText>(drawing);
    const auto found = std::ranges::find(texts, text, &DrawnText::text);
    EXPECT_NE(found, texts.end()) << text;
    return found == texts.end() ? PixelBox{} : inkOf(*found);
  }

  static constexpr DrawColour kSample{0.1, 0.2, 0.3, 1};

  PlotPage page{.width = 600, .height = 400, .pixelScale = 1, .shape = shapeBlocks};
  std::vector<PlotAxis> axes;
  PlotInput input;
  PlotLayout layout;
  PlotCursors cursors;
};

TEST_F(PlotCursorsTest, StandAcrossThePlotAreaAtTheirValues) {
  cursors = {{5, 10}, {}};
  const Drawing drawing = draw();
  const double middle = std::floor(layout.axes[0].scale.pixelOf(5));
  const PixelBox& area = layout.area;
  EXPECT_EQ(linesOf(drawing),
            (std::vector<PixelBox>{{middle, middle + 1, area.bottom, area.top},
                                   {area.right - 1, area.right, area.bottom, area.top}}));
  EXPECT_TRUE(tableIn(drawing).isEmpty());
}

TEST_F(PlotCursorsTest, AreNotDrawnBeyondTheAxis) {
  cursors.places = {-1, 5};
  const Drawing drawing = draw();
  EXPECT_EQ(linesOf(drawing).size(), 1U);
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(drawing);
  ASSERT_EQ(texts.size(), 4U) << "names, and what the second one reads";
  EXPECT_EQ(texts[1].text, "5.0 s");
  EXPECT_EQ(texts[3].text, "-10.50 N");
  cursors.places = {11, std::nan("")};
  EXPECT_TRUE(itemsOf<DrawnText>(draw()).empty());
}

TEST_F(PlotCursorsTest, ATableHoldsWhatTheyRead) {
  const Drawing drawing = draw();
  const PixelBox table = tableIn(drawing);
  EXPECT_TRUE(layout.area.holds(table));
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(drawing);
  ASSERT_EQ(texts.size(), 8U);
  for (const DrawnText& text : texts) {
    EXPECT_TRUE(table.holds(inkOf(text))) << text.text;
  }
  const PixelBox time = inkOfText(drawing, "Time");
  const PixelBox force = inkOfText(drawing, "Force");
  EXPECT_EQ(time.left, force.left);
  EXPECT_LT(force.top, time.bottom);
  EXPECT_NEAR(inkOfText(drawing, "3.0 s").right, inkOfText(drawing, "1.25 N").right, 1);
  EXPECT_NEAR(inkOfText(drawing, "2.0 s").right, inkOfText(drawing, "-11.75 N").right, 1);
  EXPECT_GT(inkOfText(drawing, "-10.50 N").left, inkOfText(drawing, "1.25 N").right);
  const std::vector<PixelBox> samples = boxesIn(drawing, kSample);
  ASSERT_EQ(samples.size(), 1U);
  EXPECT_LT(samples[0].right, force.left);
  EXPECT_LT(samples[0].bottom, force.top);
}

TEST_F(PlotCursorsTest, TheTableHidesNeitherLinesNorLegend) {
  input.legend = {true, LegendPlace::kTopRight};
  input.entries = {{"a series with a rather long name", true, {}}};
  layout = layOutPlot(input);
  for (double first = 0; first <= 10; first += 0.5) {
    cursors.places = {first, first + 0.5};
    const Drawing drawing = draw();
    const PixelBox table = tableIn(drawing);
    ASSERT_FALSE(table.isEmpty());
    EXPECT_FALSE(table.overlaps(layout.legend)) << first;
    for (const PixelBox& line : linesOf(drawing)) {
      EXPECT_FALSE(table.overlaps(line)) << first;
      EXPECT_LT(std::max(table.left - line.right, line.left - table.right), 60) << "near";
    }
  }
}

TEST_F(PlotCursorsTest, TheTableLiesWhereItHidesLeast) {
  const PixelBox lower{layout.area.left, layout.area.right, layout.area.bottom,
                       layout.area.bottom + layout.area.height() / 2};
  input.hiddenBy = [&](const PixelBox& box, const PixelBox&, const auto&) {
    return box.overlaps(lower) ? 0.0 : 1.0;
  };
  EXPECT_TRUE(tableIn(draw()).overlaps(lower));
  input.hiddenBy = [&](const PixelBox& box, const PixelBox&, const auto&) {
    return box.overlaps(lower) ? 1.0 : 0.0;
  };
  EXPECT_FALSE(tableIn(draw()).overlaps(lower));
}

TEST_F(PlotCursorsTest, RowsWithoutRoomAreCounted) {
  for (int i = 0; i < 100; ++i) {
    addReading("series " + std::to_string(i), "1", "2", "1");
  }
  const Drawing drawing = draw();
  EXPECT_TRUE(layout.area.holds(tableIn(drawing)));
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(drawing);
  const std::size_t rows = texts.size() / 4;
  EXPECT_GT(rows, 10U);
  EXPECT_EQ(texts.back().text, "\u2026 +" + std::to_string(102 - rows));
}

TEST_F(PlotCursorsTest, ReadingsWithoutRoomAreLeftOut) {
  cursors.readings[1].difference = std::string(200, 'a');
  EXPECT_EQ(itemsOf<DrawnText>(draw()).size(), 6U) << "the column";
  cursors.readings[1].values[0] = std::string(200, 'a');
  const Drawing drawing = draw();
  EXPECT_EQ(linesOf(drawing).size(), 2U);
  EXPECT_TRUE(itemsOf<DrawnText>(drawing).empty());
}

}  // namespace
}  // namespace zyn::test
