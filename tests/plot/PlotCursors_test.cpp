#include "plot/PlotCursors.h"

#include <gtest/gtest.h>

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
  }

  Drawing draw(const std::vector<PlotCursor>& cursors) {
    return drawCursors(cursors, layout, layout.axes[0].scale, input);
  }

  static std::vector<PixelBox> linesOf(const Drawing& drawing) {
    return itemsOf<DrawnBoxes>({drawing.front()}).front().boxes;
  }

  /// The grounds of the readings.
  std::vector<PixelBox> readingsOf(const Drawing& drawing) const {
    std::vector<PixelBox> found;
    for (const DrawnBoxes& boxes : itemsOf<DrawnBoxes>(drawing)) {
      if (boxes.colour == input.theme->legend) {
        found.push_back(boxes.boxes.front());
      }
    }
    return found;
  }

  PlotPage page{.width = 600, .height = 400, .pixelScale = 1, .shape = shapeBlocks};
  std::vector<PlotAxis> axes;
  PlotInput input;
  PlotLayout layout;
};

TEST_F(PlotCursorsTest, StandAcrossThePlotAreaAtTheirValues) {
  const Drawing drawing = draw({{5, {}}, {10, {}}});
  const double middle = std::floor(layout.axes[0].scale.pixelOf(5));
  const PixelBox& area = layout.area;
  EXPECT_EQ(linesOf(drawing),
            (std::vector<PixelBox>{{middle, middle + 1, area.bottom, area.top},
                                   {area.right - 1, area.right, area.bottom, area.top}}));
  EXPECT_TRUE(readingsOf(drawing).empty());
}

TEST_F(PlotCursorsTest, AreNotDrawnBeyondTheAxis) {
  const Drawing drawing = draw({{-1, {"a"}}, {5, {"b"}}, {11, {"c"}}, {std::nan(""), {"d"}}});
  EXPECT_EQ(linesOf(drawing).size(), 1U);
  ASSERT_EQ(itemsOf<DrawnText>(drawing).size(), 1U);
  EXPECT_EQ(itemsOf<DrawnText>(drawing)[0].text, "b");
}

TEST_F(PlotCursorsTest, HaveTheirReadingsBesideThem) {
  const Drawing drawing = draw({{5, {"x = 5", "force 3.25", "mass 1"}}});
  const PixelBox line = linesOf(drawing)[0];
  ASSERT_EQ(readingsOf(drawing).size(), 1U);
  const PixelBox box = readingsOf(drawing)[0];
  EXPECT_GT(box.left, line.right);
  EXPECT_TRUE(layout.area.holds(box));
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(drawing);
  ASSERT_EQ(texts.size(), 3U);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_TRUE(box.holds(inkOf(texts[i])));
    EXPECT_TRUE(i == 0 || inkOf(texts[i]).top < inkOf(texts[i - 1]).bottom);
  }
}

TEST_F(PlotCursorsTest, ReadingsHideNeitherEachOtherNorLines) {
  for (double first = 0; first <= 10; first += 0.5) {
    for (double second = 0; second <= 10; second += 0.5) {
      const Drawing drawing = draw({{first, {"x = 5", "force 3.25"}}, {second, {"y"}}});
      const std::vector<PixelBox> boxes = readingsOf(drawing);
      ASSERT_EQ(boxes.size(), 2U);
      EXPECT_FALSE(boxes[0].overlaps(boxes[1])) << first << " " << second;
      for (const PixelBox& box : boxes) {
        EXPECT_TRUE(layout.area.holds(box));
        const bool isRoomy = first >= 2 && first <= 8 && second >= 2 && second <= 8;
        for (const PixelBox& line : linesOf(drawing)) {
          EXPECT_FALSE(isRoomy && box.overlaps(line)) << first << " " << second;
        }
      }
    }
  }
}

TEST_F(PlotCursorsTest, ReadingsOfTheLeftOneAreOnItsLeft) {
  const std::vector<PixelBox> boxes = readingsOf(draw({{6, {"right"}}, {4, {"left"}}}));
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_GT(boxes[0].left, layout.axes[0].scale.pixelOf(6));
  EXPECT_LT(boxes[1].right, layout.axes[0].scale.pixelOf(4));
}

TEST_F(PlotCursorsTest, ReadingsLeaveTheLegendFree) {
  input.legend = {true, LegendPlace::kTopRight};
  input.entries = {{"a series with a rather long name", true, {}}};
  layout = layOutPlot(input);
  const PixelBox box = readingsOf(draw({{7, {"reading"}}})).at(0);
  EXPECT_FALSE(box.overlaps(layout.legend));
}

TEST_F(PlotCursorsTest, ReadingsWithoutRoomAreLeftOut) {
  const Drawing drawing = draw({{5, {std::string(200, 'a')}}});
  EXPECT_EQ(linesOf(drawing).size(), 1U);
  EXPECT_TRUE(itemsOf<DrawnText>(drawing).empty());
}

}  // namespace
}  // namespace zyn::test
