#include "viewer/GraphMarks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace zyn::viewer {
namespace {

constexpr double kPixel = 0.01;

Plot plotOf(std::size_t traces, bool logarithmic) {
  table::Table table{{{"x [m]", {1, 10}}}};
  for (std::size_t i = 0; i < traces; ++i) {
    table.columns.push_back({"trace " + std::to_string(i + 1) + " [V]", {1, 100}});
  }
  return makePlot(table, logarithmic);
}

std::vector<std::string> textsAt(const GraphMarks& marks, TextAnchor anchor) {
  std::vector<std::string> texts;
  for (const MarkText& text : marks.texts) {
    if (text.anchor == anchor) {
      texts.push_back(text.text);
    }
  }
  return texts;
}

using Texts = std::vector<std::string>;

TEST(GraphMarksTest, NumbersStandAtTheBigGraduations) {
  const GraphMarks marks = graphMarks(plotOf(1, false), {}, kPixel);
  EXPECT_EQ(textsAt(marks, TextAnchor::kTopCentre), (Texts{"2", "4", "6", "8", "10"}));
  EXPECT_EQ(textsAt(marks, TextAnchor::kRightMiddle), (Texts{"0", "20", "40", "60", "80", "100"}));
}

TEST(GraphMarksTest, TitlesHaveTheirUnits) {
  const GraphMarks marks = graphMarks(plotOf(1, false), {}, kPixel);
  EXPECT_EQ(textsAt(marks, TextAnchor::kTopRight), Texts{"x [m]"});
  EXPECT_EQ(textsAt(marks, TextAnchor::kBottomLeft), Texts{"trace 1 [V]"});
  EXPECT_EQ(textsAt(graphMarks(plotOf(2, false), {}, kPixel), TextAnchor::kBottomLeft),
            Texts{"[V]"});
}

TEST(GraphMarksTest, PlacesAreScaled) {
  const Plot plot = plotOf(1, false);
  const PlotScale scale{2, 0.5};
  const GraphMarks marks = graphMarks(plot, scale, kPixel);
  const auto four = std::ranges::find(marks.texts, "4", &MarkText::text);
  ASSERT_NE(four, marks.texts.end());
  EXPECT_EQ(four->x, 8);
  EXPECT_DOUBLE_EQ(four->y, plot.yRange.low * scale.y - 11 * kPixel);
}

TEST(GraphMarksTest, LogarithmicGraphsHaveLinesAtTheDecades) {
  const GraphMarks marks = graphMarks(plotOf(1, true), {}, kPixel);
  EXPECT_EQ(textsAt(marks, TextAnchor::kTopCentre), (Texts{"1", "10"}));
  EXPECT_EQ(textsAt(marks, TextAnchor::kRightMiddle), (Texts{"1", "10", "100"}));
  EXPECT_EQ(std::ranges::count_if(marks.lines, &MarkLine::isGrid), 5);
}

TEST(GraphMarksTest, TooManyGraduationsAreLeftOut) {
  Plot plot = plotOf(1, false);
  plot.xRange = {1e9, 1e9 + 1, 1e-9, 1e-10};
  const GraphMarks marks = graphMarks(plot, {}, kPixel);
  EXPECT_TRUE(textsAt(marks, TextAnchor::kTopCentre).empty());
  EXPECT_FALSE(textsAt(marks, TextAnchor::kRightMiddle).empty());
}

TEST(LegendTest, EveryTraceHasItsNameBehindItsLine) {
  const Plot plot = plotOf(5, false);
  const auto entries = legendOf(plot, {2, 3});
  ASSERT_EQ(entries.size(), 5U);
  std::set<std::pair<double, double>> places;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    EXPECT_EQ(entries[i].text.text, "trace " + std::to_string(i + 1));
    EXPECT_GT(entries[i].text.x, entries[i].line.x2);
    EXPECT_EQ(entries[i].text.y, entries[i].line.y1);
    EXPECT_GT(entries[i].line.y1, plot.yRange.high * 3);
    EXPECT_LT(entries[i].line.x2, plot.xRange.high * 2);
    places.emplace(entries[i].text.x, entries[i].text.y);
  }
  EXPECT_EQ(places.size(), 5U);
}

TEST(LegendTest, NamesThatFindNoRoomAreLeftOut) {
  EXPECT_EQ(legendOf(plotOf(12, false), {}).size(), 12U);
  EXPECT_EQ(legendOf(plotOf(40, false), {}).size(), 15U);
}

}  // namespace
}  // namespace zyn::viewer
