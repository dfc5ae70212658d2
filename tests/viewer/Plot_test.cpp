#include "viewer/Plot.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zyn::viewer {
namespace {

const double kGap = std::nan("");

std::string complaint(const table::Table& table, bool logarithmic) {
  try {
    makePlot(table, logarithmic);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "none";
}

TEST(PlotTest, TheFirstColumnIsX) {
  const Plot plot =
      makePlot({{{"t [s]", {0, 1, 2}}, {"a [V]", {5, 6, 7}}, {"b [V]", {1, kGap, 3}}}}, false);
  EXPECT_EQ(plot.xTitle.name, "t");
  EXPECT_EQ(plot.xTitle.unit, "s");
  EXPECT_EQ(plot.x, (std::vector<double>{0, 1, 2}));
  ASSERT_EQ(plot.traces.size(), 2U);
  EXPECT_EQ(plot.traces[0].title.name, "a");
  EXPECT_EQ(plot.traces[0].y, (std::vector<double>{5, 6, 7}));
  EXPECT_TRUE(std::isnan(plot.traces[1].y[1]));
  EXPECT_LE(plot.yRange.low, 1);
  EXPECT_GE(plot.yRange.high, 7);
}

TEST(PlotTest, OneColumnIsDrawnOverItsRows) {
  const Plot plot = makePlot({{{"a", {5, 6, 4}}}}, false);
  EXPECT_EQ(plot.xTitle.name, "row");
  EXPECT_EQ(plot.x, (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(plot.traces.size(), 1U);
}

TEST(PlotTest, TheYAxisIsCalledAfterTheOnlyTraceOrTheSharedUnit) {
  const auto title = [](const char* a, const char* b) {
    return makePlot({{{"x", {1}}, {a, {1}}, {b, {2}}}}, false).yTitle();
  };
  EXPECT_EQ(title("a [V]", "b [V]").unit, "V");
  EXPECT_EQ(title("a [V]", "b [V]").name, "");
  EXPECT_EQ(title("a [V]", "b [A]").unit, "");
  const AxisTitle only = makePlot({{{"x", {1}}, {"a [V]", {1}}}}, false).yTitle();
  EXPECT_EQ(only.name, "a");
  EXPECT_EQ(only.unit, "V");
}

TEST(PlotTest, RangesLookOnlyAtWholePoints) {
  const Plot plot =
      makePlot({{{"x", {0, 1, 2, 900}}, {"a", {1, 2, 3, kGap}}, {"b", {1, 1, 1, kGap}}}}, false);
  EXPECT_LE(plot.xRange.high, 3);
}

TEST(PlotTest, LogarithmicAxesShowLogarithmsOfWhatIsPositive) {
  const Plot plot = makePlot({{{"x", {1, 10, 0, 1000}}, {"a", {100, -5, 1, 0.01}}}}, true);
  EXPECT_TRUE(plot.isLogarithmic);
  EXPECT_EQ(plot.x[1], 1);
  EXPECT_TRUE(std::isnan(plot.x[2]));
  EXPECT_EQ(plot.traces[0].y[0], 2);
  EXPECT_TRUE(std::isnan(plot.traces[0].y[1]));
  EXPECT_EQ(plot.xRange.low, 0);
  EXPECT_EQ(plot.xRange.high, 3);
  EXPECT_EQ(plot.yRange.low, -2);
  EXPECT_EQ(plot.yRange.high, 2);
}

TEST(PlotTest, SomethingMustBeThereToShow) {
  const table::Table apart{{{"x", {1, kGap}}, {"a", {kGap, 1}}}};
  EXPECT_EQ(complaint(apart, false), "no row has two numbers to show");
  const table::Table negative{{{"x", {1, 2}}, {"a", {-1, 0}}}};
  EXPECT_EQ(complaint(negative, false), "none");
  EXPECT_EQ(complaint(negative, true),
            "no row has two positive numbers to show on logarithmic axes");
}

TEST(PlotTest, TheScaleFillsTheWindow) {
  const Plot plot = makePlot({{{"x", {0, 1000}}, {"a", {0, 0.1}}}}, false);
  const PlotScale scale = fittingScale(plot, 1.5);
  EXPECT_DOUBLE_EQ(plot.xRange.size() * scale.x, 1.5 * plot.yRange.size() * scale.y);
  const PlotScale decades = fittingScale(makePlot({{{"x", {1, 1000}}, {"a", {1, 10}}}}, true), 1.5);
  EXPECT_EQ(decades.x, 1);
  EXPECT_EQ(decades.y, 1);
}

}  // namespace
}  // namespace zyn::viewer
