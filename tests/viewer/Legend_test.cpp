#include "viewer/Legend.h"

#include <gtest/gtest.h>

#include <set>

namespace zyn::viewer {
namespace {

Plot plotOf(std::size_t traces) {
  table::Table table{{{"x [m]", {1, 10}}}};
  for (std::size_t i = 0; i < traces; ++i) {
    table.columns.push_back({"trace " + std::to_string(i + 1) + " [V]", {1, 100}});
  }
  return makePlot(table, false);
}

TEST(LegendTest, EveryTraceHasItsNameBehindItsLine) {
  const Plot plot = plotOf(5);
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
  EXPECT_EQ(legendOf(plotOf(12), {}).size(), 12U);
  EXPECT_EQ(legendOf(plotOf(40), {}).size(), 15U);
}

}  // namespace
}  // namespace zyn::viewer
