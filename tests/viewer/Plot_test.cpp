#include "viewer/Plot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace zyn::viewer {
namespace {

const double kGap = std::nan("");

Plot arranged(table::Table table, const LogAxes& logarithmic = {}) {
  Plot plot = makePlot(std::move(table));
  plot.arrange(logarithmic);
  return plot;
}

std::string complaint(const table::Table& table, const LogAxes& logarithmic) {
  try {
    arranged(table, logarithmic);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "none";
}

TEST(PlotTest, TheFirstColumnIsX) {
  const Plot plot =
      arranged({{{"t [s]", {0, 1, 2}}, {"a [V]", {5, 6, 7}}, {"b [V]", {1, kGap, 3}}}});
  EXPECT_EQ(plot.xTitle.name, "t");
  EXPECT_EQ(plot.xTitle.unit, "s");
  EXPECT_FALSE(plot.hasDates);
  EXPECT_EQ(plot.x, (std::vector<double>{0, 1, 2}));
  ASSERT_EQ(plot.traces.size(), 2U);
  EXPECT_EQ(plot.traces[0].title.name, "a");
  EXPECT_EQ(plot.traces[0].y, (std::vector<double>{5, 6, 7}));
  EXPECT_TRUE(std::isnan(plot.traces[1].y[1]));
}

TEST(PlotTest, OneColumnIsDrawnOverItsRows) {
  const Plot plot = arranged({{{"a", {5, 6, 4}}}});
  EXPECT_EQ(plot.xTitle.name, "row");
  EXPECT_EQ(plot.x, (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(plot.traces.size(), 1U);
}

TEST(PlotTest, DatesLieAlongX) {
  EXPECT_TRUE(arranged({{{"day", {45292, 45293}, true}, {"a", {1, 2}}}}).hasDates);
  EXPECT_FALSE(arranged({{{"day", {45292, 45293}, true}}}).hasDates) << "along x are the rows";
}

/// The sides of the traces, "LR" for the first on the left and another on the right.
std::string sides(table::Table table, const LogAxes& logarithmic = {}) {
  std::string text;
  for (const PlotTrace& trace : arranged(std::move(table), logarithmic).traces) {
    text += trace.side == PlotSide::kLeft ? 'L' : 'R';
  }
  return text;
}

TEST(PlotTest, OtherUnitsStandOnTheRight) {
  const std::vector<double> some = {1, 2};
  EXPECT_EQ(sides({{{"t", some}, {"a [V]", some}, {"b [A]", some}, {"c [V]", some}}}), "LRL");
  EXPECT_EQ(sides({{{"t", some}, {"a [V]", some}, {"b [A]", some}, {"c [W]", some}}}), "LRR");
  EXPECT_EQ(sides({{{"t", some}, {"a [V]", {1, 2}}, {"b [V]", {1000, 5000}}}}), "LL")
      << "what has the same unit is to be compared";
  EXPECT_EQ(sides({{{"t", some}, {"a [V]", some}, {"b", some}}}), "LL");
}

TEST(PlotTest, WhatWouldBeFlatBesideTheFirstStandsOnTheRight) {
  const std::vector<double> t = {0, 1, 2};
  EXPECT_EQ(sides({{{"t", t}, {"T", {20, 25, 22}}, {"p", {1013, 1018, 1009}}}}), "LR");
  EXPECT_EQ(sides({{{"t", t}, {"a", {0, 10, 5}}, {"b", {0, 0.1, kGap}}}}), "LR");
  EXPECT_EQ(sides({{{"t", t}, {"a", {0, 0.1, 0}}, {"b", {0, 10, 5}}}}), "LR");
  EXPECT_EQ(sides({{{"t", t}, {"a", {0, 10, 5}}, {"b", {3, 4, 3}}}}), "LL");
  EXPECT_EQ(sides({{{"t", t}, {"a", {20, 30, 25}}, {"limit", {25, 25, 25}}}}), "LL");
  EXPECT_EQ(sides({{{"t", t}, {"a", {1000, 1001, 1000}}, {"none", {0, 0, 0}}}}), "LR");
  EXPECT_EQ(sides({{{"t", t}, {"a", {7, 7, 7}}, {"b", {900, 900, 900}}}}), "LL");
  EXPECT_EQ(sides({{{"t", t}, {"a", {1, 2, 3}}, {"b", {kGap, kGap, kGap}}}}), "LL");
  constexpr double kMost = std::numeric_limits<double>::max();
  EXPECT_EQ(sides({{{"t", t}, {"a", {-kMost, kMost, 0}}, {"b", {1, 2, 3}}}}), "LR");
}

TEST(PlotTest, OnALogarithmicAxisOnlyUnitsCount) {
  const std::vector<double> t = {1, 2};
  EXPECT_EQ(sides({{{"t", t}, {"a", {1, 10}}, {"b", {0.001, 0.002}}}}, {.y = true}), "LL");
  EXPECT_EQ(sides({{{"t", t}, {"a [V]", {1, 10}}, {"b [A]", {1, 2}}}}, {.y = true}), "LR");
}

TEST(PlotTest, AnAxisIsCalledAfterWhatItShows) {
  const Plot one = arranged({{{"x", {1}}, {"a [V]", {1}}}});
  EXPECT_EQ(one.titleOf(PlotSide::kLeft).text(), "a (V)");
  EXPECT_EQ(one.titleOf(PlotSide::kRight).text(), "");
  const Plot alike = arranged({{{"x", {1}}, {"a [V]", {1}}, {"b [V]", {2}}}});
  EXPECT_EQ(alike.titleOf(PlotSide::kLeft).name, "") << "the legend tells";
  EXPECT_EQ(alike.titleOf(PlotSide::kLeft).unit, "V");
  EXPECT_EQ(alike.nameOf(alike.traces[1]), "b");
  const Plot both =
      arranged({{{"x", {1}}, {"a [V]", {1}}, {"b [V]", {2}}, {"c [A]", {2}}, {"d [W]", {2}}}});
  EXPECT_EQ(both.titleOf(PlotSide::kLeft).text(), "a, b (V)");
  EXPECT_EQ(both.titleOf(PlotSide::kRight).text(), "c (A), d (W)");
  EXPECT_EQ(both.nameOf(both.traces[0]), "a");
  EXPECT_EQ(both.nameOf(both.traces[3]), "d (W)");
  const std::string lengthy(30, 'n');
  const Plot wide =
      arranged({{{"x", {1}}, {lengthy + " [V]", {1}}, {lengthy + " [V]", {2}}, {"c [A]", {2}}}});
  EXPECT_EQ(wide.titleOf(PlotSide::kLeft).name, "");
  EXPECT_EQ(wide.titleOf(PlotSide::kLeft).unit, "V");
}

TEST(PlotTest, SomethingMustBeThereToShow) {
  const table::Table apart{{{"x", {1, kGap}}, {"a", {kGap, 1}}}};
  EXPECT_EQ(complaint(apart, {}), "no row has two numbers to show");
  const table::Table negative{{{"x", {1, 2}}, {"a", {-1, 0}}}};
  const char* const kNone =
      "no row has two numbers of which those on logarithmic axes are positive";
  EXPECT_EQ(complaint(negative, {}), "none");
  EXPECT_EQ(complaint(negative, {.x = true}), "none");
  EXPECT_EQ(complaint(negative, {.y = true}), kNone);
  EXPECT_EQ(complaint({{{"x", {-1, 0}}, {"a", {1, 2}}}}, {.x = true}), kNone);
}

TEST(PlotTest, WhatCannotBeShownChangesNothing) {
  Plot plot = arranged({{{"t", {1, 2}}, {"a", {-5, -10}}, {"b", {-0.1, -0.2}}}});
  EXPECT_THROW(plot.arrange({.y = true}), std::runtime_error);
  EXPECT_TRUE(plot.uses(PlotSide::kRight));
}

}  // namespace
}  // namespace zyn::viewer
