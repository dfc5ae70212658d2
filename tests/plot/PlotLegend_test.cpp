#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "plot/BlockText.h"
#include "plot/PlotLayout.h"

namespace zyn::test {
namespace {

class PlotLegendTest : public testing::Test {
 protected:
  PlotLegendTest() {
    axes.resize(2);
    axes[1].side = AxisSide::kLeft;
    axes[1].title = "Force";
    input.page = &page;
    input.theme = &themeOf(PlotThemeKind::kDark);
    input.axes = {{&axes[0]}, {&axes[1]}};
    input.legend = {true, LegendPlace::kTopRight};
    addEntries({"short", "a longer name"});
  }

  void addEntries(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      input.entries.push_back({name, true, [this](const PixelBox& box, DrawnLayer& layer) {
                                 samples.push_back(box);
                                 layer.items.emplace_back(DrawnBoxes{{1, 0, 0}, {box}});
                               }});
    }
  }

  PlotLayout layOut() {
    samples.clear();
    return layOutPlot(input);
  }

  static PixelBox inkOfText(const PlotLayout& layout, const std::string& name) {
    for (const DrawnText& text : itemsOf<DrawnText>(layout.inFront)) {
      if (text.text == name) {
        return inkOf(text);
      }
    }
    ADD_FAILURE() << name;
    return {};
  }

  PlotPage page{.width = 600, .height = 400, .pixelScale = 1, .shape = shapeBlocks};
  std::vector<PlotAxis> axes;
  PlotInput input;
  std::vector<PixelBox> samples;
};

TEST_F(PlotLegendTest, IsNotThereUnlessAskedFor) {
  input.legend.isVisible = false;
  EXPECT_TRUE(layOut().legend.isEmpty());
  EXPECT_TRUE(samples.empty());
  input.legend.isVisible = true;
  input.entries.clear();
  EXPECT_TRUE(layOut().legend.isEmpty());
}

TEST_F(PlotLegendTest, LiesInTheCornersOfThePlotArea) {
  for (const bool isRight : {false, true}) {
    for (const bool isTop : {false, true}) {
      input.legend.place = isTop     ? isRight ? LegendPlace::kTopRight : LegendPlace::kTopLeft
                           : isRight ? LegendPlace::kBottomRight
                                     : LegendPlace::kBottomLeft;
      const PlotLayout layout = layOut();
      const PixelBox& area = layout.area;
      EXPECT_TRUE(area.holds(layout.legend));
      EXPECT_EQ(isRight ? area.right - layout.legend.right : layout.legend.left - area.left, 9);
      EXPECT_EQ(isTop ? area.top - layout.legend.top : layout.legend.bottom - area.bottom, 9);
    }
  }
}

TEST_F(PlotLegendTest, SamplesAreAlignedBesideNames) {
  const PlotLayout layout = layOut();
  ASSERT_EQ(samples.size(), 2U);
  ASSERT_EQ(layout.entries.size(), 2U);
  EXPECT_EQ(samples[0].left, samples[1].left);
  EXPECT_EQ(samples[0].width(), samples[1].width());
  EXPECT_GT(samples[0].bottom, samples[1].top);
  const PixelBox first = inkOfText(layout, "short");
  const PixelBox second = inkOfText(layout, "a longer name");
  EXPECT_EQ(first.left, second.left);
  EXPECT_GT(first.left, samples[0].right);
  EXPECT_TRUE(layout.entries[0].holds(first));
  EXPECT_TRUE(layout.entries[0].holds(samples[0]));
  EXPECT_TRUE(layout.entries[1].holds(second));
  EXPECT_TRUE(layout.legend.holds(layout.entries[0]));
  EXPECT_TRUE(layout.legend.holds(layout.entries[1]));
  EXPECT_FALSE(layout.entries[0].overlaps(layout.entries[1]));
}

TEST_F(PlotLegendTest, NamesOfHiddenSeriesAreGrey) {
  input.entries[1].isShown = false;
  for (const DrawnText& text : itemsOf<DrawnText>(layOut().inFront)) {
    EXPECT_EQ(text.colour == input.theme->hidden, text.text == "a longer name") << text.text;
  }
}

TEST_F(PlotLegendTest, LiesWhereItHidesLeast) {
  input.legend.place = LegendPlace::kWhereLeastIsHidden;
  EXPECT_EQ(layOut().legend.right, layOut().area.right - 9);
  PixelBox asked;
  const auto hide = [&](double x, double y) {
    input.hiddenBy = [x, y, &asked](const PixelBox& box, const PixelBox& area,
                                    const std::vector<AxisLayout>& shown) {
      EXPECT_EQ(shown.size(), 2U);
      EXPECT_TRUE(area.holds(box));
      asked = area;
      return box.holds(area.left + x * area.width(), area.bottom + y * area.height()) ? 0.0 : 5.0;
    };
  };
  hide(0.1, 0.1);
  PlotLayout layout = layOut();
  EXPECT_EQ(asked, layout.area);
  EXPECT_EQ(layout.legend.left, layout.area.left + 9);
  EXPECT_EQ(layout.legend.bottom, layout.area.bottom + 9);
  hide(0.9, 0.5);
  layout = layOut();
  EXPECT_EQ(layout.legend.right, layout.area.right - 9);
  EXPECT_NEAR(layout.legend.bottom + layout.legend.top, layout.area.bottom + layout.area.top, 2);
}

TEST_F(PlotLegendTest, FindsRoomBetweenTheMiddlesOfEdges) {
  input.legend.place = LegendPlace::kWhereLeastIsHidden;
  input.hiddenBy = [](const PixelBox& box, const PixelBox& area, const auto&) {
    return box.holds(area.left + 0.85 * area.width(), area.bottom + 0.25 * area.height()) ? 0 : 1.0;
  };
  const PlotLayout layout = layOut();
  EXPECT_TRUE(layout.legend.holds(layout.area.left + 0.85 * layout.area.width(),
                                  layout.area.bottom + 0.25 * layout.area.height()));
}

TEST_F(PlotLegendTest, StaysWhereItHidesHardlyMore) {
  input.legend.place = LegendPlace::kWhereLeastIsHidden;
  double hiddenAbove = 0;
  input.hiddenBy = [&hiddenAbove](const PixelBox& box, const PixelBox& area, const auto&) {
    return box.top > area.bottom + area.height() / 2 ? hiddenAbove : 0.1;
  };
  PlotLayout layout = layOut();
  const PixelBox first = layout.legend;
  ASSERT_TRUE(layout.legendSpot);
  hiddenAbove = 0.11;
  input.legend.spot = layout.legendSpot;
  EXPECT_EQ(layOut().legend, first);
  hiddenAbove = 0.2;
  layout = layOut();
  EXPECT_LT(layout.legend.top, first.bottom);
  input.legend.spot = layout.legendSpot;
  hiddenAbove = 0.09;
  EXPECT_EQ(layOut().legend, layout.legend);
}

TEST_F(PlotLegendTest, TakesRoomOnTheRight) {
  const PixelBox without = layOut().area;
  input.legend.place = LegendPlace::kRight;
  axes.push_back({});
  axes[2].side = AxisSide::kRight;
  axes[2].title = "Mass";
  input.axes = {{&axes[0]}, {&axes[1]}, {&axes[2]}};
  const PlotLayout layout = layOut();
  EXPECT_LT(layout.area.right, without.right - layout.legend.width());
  EXPECT_GT(layout.legend.left, layout.axes[2].box.right);
  EXPECT_EQ(layout.legend.top, layout.area.top);
  EXPECT_LE(layout.legend.right, page.width - 7);
}

TEST_F(PlotLegendTest, TakesRoomBelowInAsManyColumnsAsItCan) {
  axes[0].title = "Time";
  const PixelBox without = layOut().area;
  addEntries({"third", "fourth", "fifth"});
  input.legend.place = LegendPlace::kBelow;
  const PlotLayout layout = layOut();
  EXPECT_GT(layout.area.bottom, without.bottom + layout.legend.height());
  EXPECT_LT(layout.legend.top, inkOfText(layout, "Time").bottom);
  EXPECT_GE(layout.legend.bottom, 7);
  EXPECT_EQ(layout.entries[0].bottom, layout.entries[1].bottom);
  EXPECT_GT(layout.entries[1].left, layout.entries[0].right);
  EXPECT_LT(layout.entries[4].top, layout.entries[0].bottom + 1);
  EXPECT_EQ(layout.entries[4].left, layout.entries[layout.entries[3].left > 99 ? 1 : 0].left);
}

TEST_F(PlotLegendTest, LiesWithinWhereThereIsNoRoomBeside) {
  page.width = 260;
  page.height = 130;
  for (const LegendPlace place : {LegendPlace::kRight, LegendPlace::kBelow}) {
    input.legend.place = place;
    const PlotLayout layout = layOut();
    ASSERT_FALSE(layout.legend.isEmpty());
    EXPECT_TRUE(layout.area.holds(layout.legend));
  }
}

TEST_F(PlotLegendTest, NamesThatAreTooLongAreCut) {
  input.entries[0].name = std::string(300, 'n');
  const PlotLayout layout = layOut();
  EXPECT_TRUE(layout.area.holds(layout.legend));
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
  EXPECT_EQ(std::ranges::count_if(texts, [](auto& text) { return text.text.ends_with("nn…"); }), 1);
}

TEST_F(PlotLegendTest, TheLastPlaceCountsEntriesWithoutRoom) {
  for (int i = 0; i < 200; ++i) {
    addEntries({"number " + std::to_string(i)});
  }
  const PlotLayout layout = layOut();
  ASSERT_EQ(layout.entries.size(), 202U);
  EXPECT_FALSE(layout.entries[0].isEmpty());
  EXPECT_TRUE(layout.entries[201].isEmpty());
  EXPECT_TRUE(layout.area.holds(layout.legend));
  EXPECT_GT(layout.entries[20].left, layout.entries[0].right);  // in several columns
  const auto isShown = [](const PixelBox& box) { return !box.isEmpty(); };
  const auto shown = std::ranges::count_if(layout.entries, isShown);
  EXPECT_EQ(std::ranges::ssize(samples), shown);
  const PixelBox count = inkOfText(layout, "\u2026 +" + std::to_string(202 - shown));
  EXPECT_TRUE(layout.legend.holds(count));
  for (const PixelBox& entry : layout.entries) {
    EXPECT_FALSE(entry.overlaps(count));
  }
  page.width = 60;
  page.height = 40;
  EXPECT_TRUE(layOut().legend.isEmpty());
  EXPECT_TRUE(layOut().entries.empty());
}

TEST_F(PlotLegendTest, LiesOnAGroundOfItsOwnInFrontOfTheAxes) {
  const PlotLayout layout = layOut();
  const std::vector<DrawnItem>& items = layout.inFront.back().items;
  const auto* ground = std::get_if<DrawnBoxes>(&items.front());
  ASSERT_NE(ground, nullptr);
  EXPECT_EQ(ground->colour, input.theme->legend);
  EXPECT_EQ(ground->boxes, std::vector<PixelBox>{layout.legend});
}

}  // namespace
}  // namespace zyn::test
