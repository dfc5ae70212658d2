#include "plot/PlotSeries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr DrawColour kBlue{0, 0, 1, 1};

class PlotSeriesTest : public testing::Test {
 protected:
  PlotSeriesTest() {
    place.area = {10, 210, 20, 120};
    place.x = {AxisKind::kLinear, 0, 10, false, 10, 210};
    place.y = {AxisKind::kLinear, 0, 5, false, 20, 120};
  }

  DrawnLayer drawn(const BarPlace& bars = {}) {
    DrawnLayer layer;
    drawSeries(series, place, bars, kBlue, layer);
    return layer;
  }
  template <class Item>
  static const Item& only(const DrawnLayer& layer) {
    EXPECT_EQ(layer.items.size(), 1U);
    return std::get<Item>(layer.items.front());
  }

  std::shared_ptr<PlotSeries> series = std::make_shared<PlotSeries>();
  PlotPlace place;
};

TEST_F(PlotSeriesTest, TheMappingIsThatOfTheAxes) {
  for (const bool isInverted : {false, true}) {
    place.x.isInverted = isInverted;
    for (const auto& [min, max] :
         {std::pair{-1e308, 1e308}, {1e-300, 2e-300}, {45000.0, 45000.001}, {-3.0, 7.0}}) {
      place.x.min = min;
      place.x.max = max;
      const auto mapping = place.mapping();
      ASSERT_TRUE(mapping);
      for (const double part : {0.0, 0.25, 1.0}) {
        const double value = std::lerp(min, max, part);
        EXPECT_NEAR(mapping->x.at(value, 1, 0), place.x.pixelOf(value), 1e-4) << min << " " << part;
      }
    }
  }
}

TEST_F(PlotSeriesTest, TheMappingCountsDecadesOnLogarithmicAxes) {
  place.y = {AxisKind::kLog10, 1, 1000, false, 20, 120};
  EXPECT_NEAR(place.mapping()->y.at(0, 1, 0), place.y.pixelOf(10), 1e-9);
}

TEST_F(PlotSeriesTest, ThereIsNoMappingWhereDoublesCannotHoldIt) {
  place.x.min = 0;
  place.x.max = 1e-320;
  EXPECT_FALSE(place.mapping());
  series->data.setPoints({0}, {0});
  EXPECT_TRUE(drawn().items.empty());
}

/// So that what was chosen for one view serves the next.
TEST_F(PlotSeriesTest, AMovedRangeHasTheSameFactor) {
  const double factor = place.mapping()->x.x;
  for (int i = 1; i < 100; ++i) {
    place.x.min = i * 0.1;
    place.x.max = 10 + i * 0.1;
    EXPECT_EQ(place.mapping()->x.x, factor) << i;
  }
}

TEST_F(PlotSeriesTest, ALineIsATraceOfItsPoints) {
  series->data.setPoints({0, 10}, {0, 5});
  series->width = 2;
  place.pixelScale = 3;
  const DrawnLayer layer = drawn();
  const auto& trace = only<DrawnTrace>(layer);
  EXPECT_EQ(trace.points->size(), 2U);
  EXPECT_EQ(trace.stroke.width, 6);
  EXPECT_EQ(trace.stroke.colour, kBlue);
  EXPECT_TRUE(trace.stroke.isSmooth);
  EXPECT_EQ(trace.owner, series);
}

TEST_F(PlotSeriesTest, PointsBetweenGapsCanBeSeen) {
  series->data.setPoints({1, 2, 3}, {kNaN, 1, kNaN});
  place.pixelScale = 2;
  for (const SeriesKind kind : {SeriesKind::kLine, SeriesKind::kSteps}) {
    series->kind = kind;
    const DrawnLayer layer = drawn();
    const Stroke& stroke =
        kind == SeriesKind::kLine ? only<DrawnTrace>(layer).stroke : only<DrawnLines>(layer).stroke;
    EXPECT_EQ(stroke.width, 2);
    EXPECT_EQ(stroke.dot(), 6);
  }
}

TEST_F(PlotSeriesTest, BarsAreAsWideOnALogarithmicAxisWhereSomeHaveNoLogarithm) {
  series->kind = SeriesKind::kBars;
  series->data.setPoints({1, 2, 3, 7}, {0, 4, kNaN, 2});
  const double width = only<DrawnBoxes>(drawn()).boxes.front().width();
  EXPECT_NEAR(width, 0.8 * 20, 1e-9);
  place.y = {AxisKind::kLog10, 1, 10, false, 20, 120};
  const DrawnLayer layer = drawn();
  ASSERT_EQ(only<DrawnBoxes>(layer).boxes.size(), 2U);
  EXPECT_NEAR(only<DrawnBoxes>(layer).boxes.front().width(), width, 1e-9);
}

TEST_F(PlotSeriesTest, ItsOwnColoursCount) {
  series->data.setPoints({0, 10}, {0, 5});
  series->colour = DrawColour{1, 0, 0, 1};
  series->kind = SeriesKind::kArea;
  series->marker = MarkerShape::kSquare;
  const DrawnLayer layer = drawn();
  ASSERT_EQ(layer.items.size(), 3U);
  EXPECT_EQ(std::get<DrawnArea>(layer.items[0]).colour.r, 1);
  EXPECT_LT(std::get<DrawnArea>(layer.items[0]).colour.alpha, 0.5);
  EXPECT_EQ(std::get<DrawnTrace>(layer.items[1]).stroke.colour, *series->colour);
  EXPECT_EQ(std::get<DrawnMarkers>(layer.items[2]).colour, *series->colour);
}

TEST_F(PlotSeriesTest, StepsHoldTheLeftValue) {
  series->data.setPoints({0, 5, 10}, {1, 3, 2});
  series->kind = SeriesKind::kSteps;
  const DrawnLayer layer = drawn();
  const auto& points = only<DrawnLines>(layer).lines.points;
  ASSERT_EQ(points.size(), 5U);
  EXPECT_NEAR(points[1].x, 110, 1e-9);
  EXPECT_NEAR(points[1].y, 40, 1e-9);
  EXPECT_NEAR(points[2].y, 80, 1e-9);
}

TEST_F(PlotSeriesTest, LinesStayNearThePlot) {
  series->data.setPoints({-1e300, 5, 1e300}, {-1e300, 2.5, 1e300});
  for (const SeriesKind kind : {SeriesKind::kSteps, SeriesKind::kArea}) {
    series->kind = kind;
    const DrawnLayer layer = drawn();
    const PixelLines& lines = kind == SeriesKind::kSteps
                                  ? std::get<DrawnLines>(layer.items.front()).lines
                                  : std::get<DrawnArea>(layer.items.front()).edge;
    for (const PlanePoint& point : lines.points) {
      EXPECT_TRUE(place.area.shrunk(-200).holds(point.x, point.y)) << point.x << ", " << point.y;
    }
  }
}

TEST_F(PlotSeriesTest, BarsOfSeveralSeriesStandSideBySide) {
  series->data.setPoints({2, 4}, {3, -1});
  series->kind = SeriesKind::kBars;
  const DrawnLayer left = drawn({0, 2});
  const DrawnLayer right = drawn({1, 2});
  const PixelBox& first = only<DrawnBoxes>(left).boxes.front();
  const PixelBox& second = only<DrawnBoxes>(right).boxes.front();
  EXPECT_NEAR(first.left, 10 + 20 * (2 - 0.8), 1e-9) << "0.8 of the gap, about the point";
  EXPECT_NEAR(first.right, 50, 1e-9);
  EXPECT_NEAR(second.left, 50, 1e-9);
  EXPECT_NEAR(second.right, 10 + 20 * (2 + 0.8), 1e-9);
  EXPECT_NEAR(first.bottom, 20, 1e-9);
  EXPECT_NEAR(first.top, 80, 1e-9);
  EXPECT_LT(only<DrawnBoxes>(left).boxes.back().bottom, 20) << "below the base";
}

TEST_F(PlotSeriesTest, BarsReachDownOnALogarithmicAxis) {
  place.y = {AxisKind::kLog10, 1, 100, false, 20, 120};
  series->data.setPoints({5}, {10});
  series->kind = SeriesKind::kBars;
  series->barWidth = 1;
  const DrawnLayer layer = drawn();
  const PixelBox& bar = only<DrawnBoxes>(layer).boxes.front();
  EXPECT_LT(bar.bottom, 20);
  EXPECT_NEAR(bar.top, 70, 1e-6);
}

TEST_F(PlotSeriesTest, PointsHaveMarkersByThemselves) {
  series->data.setPoints({1, kNaN, 3}, {1, 2, 3});
  series->kind = SeriesKind::kPoints;
  const DrawnLayer layer = drawn();
  const auto& markers = only<DrawnMarkers>(layer);
  EXPECT_EQ(markers.shape, MarkerShape::kCircle);
  ASSERT_EQ(markers.middles.size(), 2U);
  EXPECT_NEAR(markers.middles[1].x, 70, 1e-9);
  EXPECT_NEAR(markers.middles[1].y, 80, 1e-9);
}

TEST_F(PlotSeriesTest, ErrorBarsReachIntoThePlotFromOutside) {
  series->kind = SeriesKind::kPoints;
  series->data.setPoints({5, 6, 7}, {1000, 2, 3});
  series->data.setErrorsY(std::vector<double>{999, 0, kNaN}, std::vector<double>{0, 0, 0});
  const DrawnLayer layer = drawn();
  const auto& boxes = std::get<DrawnBoxes>(layer.items.front()).boxes;
  ASSERT_EQ(boxes.size(), 3U) << "one bar with two caps";
  EXPECT_NEAR(boxes[0].left, 110, 1);
  EXPECT_EQ(boxes[0].width(), 1);
  EXPECT_NEAR(boxes[0].bottom, 40, 1e-6);
  EXPECT_GT(boxes[0].top, 120);
  for (const PixelBox& box : boxes) {
    EXPECT_EQ(box.left, std::round(box.left)) << "between pixels";
  }
}

TEST_F(PlotSeriesTest, ErrorBarsInBothDirectionsAreOnLogarithmicAxesToo) {
  place.x = {AxisKind::kLog10, 1, 100, false, 10, 210};
  series->kind = SeriesKind::kPoints;
  series->data.setPoints({10}, {2});
  series->data.setErrorsX(std::vector<double>{20}, std::vector<double>{90});
  const DrawnLayer layer = drawn();
  const auto& boxes = std::get<DrawnBoxes>(layer.items.front()).boxes;
  ASSERT_EQ(boxes.size(), 3U);
  EXPECT_LT(boxes[0].left, 10) << "10 - 20 cannot be shown";
  EXPECT_NEAR(boxes[0].right, 210, 1e-6);
}

TEST_F(PlotSeriesTest, ManyErrorBarsAreOneForEachColumn) {
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < 100000; ++i) {
    x.push_back(10.0 * i / 100000);
    y.push_back(2 + std::sin(i));
  }
  const std::vector<double> errors(x.size(), 0.5);
  series->kind = SeriesKind::kPoints;
  series->data.setPoints(x, y);
  series->data.setErrorsY(errors, errors);
  const DrawnLayer layer = drawn();
  const auto& boxes = std::get<DrawnBoxes>(layer.items.front()).boxes;
  EXPECT_GE(boxes.size(), 200U);
  EXPECT_LT(boxes.size(), 220U);
  for (const PixelBox& box : boxes) {
    EXPECT_NEAR(box.bottom, 20 + 20 * 0.5, 1);
    EXPECT_NEAR(box.top, 20 + 20 * 3.5, 1);
  }
}

TEST_F(PlotSeriesTest, WhatWasChosenOfTheLineGoesWithItsPoints) {
  series->data.setPoints({0, 10}, {0, 5});
  drawn();
  PixelGrid grid;
  grid.right = 200;
  grid.top = 200;
  const auto chosen = [&] {
    const DrawnLayer layer = drawn();
    const auto& trace = only<DrawnTrace>(layer);
    return trace.cache->reduced({*trace.points, *trace.boxes, trace.mapping, true}, grid)
        .path.points.size();
  };
  EXPECT_EQ(chosen(), 2U);
  series->data.append(std::vector<double>{11}, std::vector<double>{1});
  EXPECT_EQ(chosen(), 3U);
}

TEST_F(PlotSeriesTest, HiddenOnesAreNotDrawn) {
  series->data.setPoints({0, 10}, {0, 5});
  series->isVisible = false;
  EXPECT_TRUE(drawn().items.empty());
}

TEST_F(PlotSeriesTest, TheExtentHoldsBarsAndErrors) {
  series->data.setPoints({2, 4}, {3, 7});
  EXPECT_EQ(extentOf(*series, {}), (Box3{2, 4, 3, 7, 0, 0}));
  series->kind = SeriesKind::kBars;
  EXPECT_EQ(extentOf(*series, {}), (Box3{2 - 0.8, 4 + 0.8, 0, 7, 0, 0}));
  series->base = 1;
  EXPECT_EQ(extentOf(*series, {false, true})->yMin, 0);
  series->base = -1;
  EXPECT_EQ(extentOf(*series, {false, true})->yMin, std::log10(3.0));
  series->kind = SeriesKind::kLine;
  series->data.setErrorsY(std::vector<double>{1, 0}, std::vector<double>{0, 2});
  EXPECT_EQ(extentOf(*series, {}), (Box3{2, 4, 2, 9, 0, 0}));
  series->data.setPoints({kNaN}, {1});
  EXPECT_FALSE(extentOf(*series, {}));
}

TEST_F(PlotSeriesTest, TheSampleOfADashedLineHasTwoDashes) {
  series->isDashed = true;
  for (const double width : {0.5, 1.0, 2.0, 3.0, 6.0}) {
    for (const double length : {16.0, 24.0, 60.0}) {
      series->width = width;
      DrawnLayer layer;
      drawSample(*series, kBlue, {100, 100 + length, 50, 60}, 1, layer);
      const std::vector<double>& dashes = only<DrawnLines>(layer).stroke.dashes;
      const double count = (length + dashes[1]) / (dashes[0] + dashes[1]);
      EXPECT_GE(count, 2 - 1e-9) << width << " " << length;
      EXPECT_NEAR(count, std::round(count), 1e-9) << "whole ones";
    }
  }
}

TEST_F(PlotSeriesTest, TheSampleShowsItsKind) {
  const PixelBox box{100, 124, 50, 60};
  const auto sample = [&] {
    DrawnLayer layer;
    drawSample(*series, kBlue, box, 1, layer);
    return layer;
  };
  series->marker = MarkerShape::kDiamond;
  series->markerSize = 40;
  const DrawnLayer line = sample();
  ASSERT_EQ(line.items.size(), 2U);
  EXPECT_EQ(std::get<DrawnLines>(line.items[0]).lines.points[0].y, 55.5) << "within a row";
  EXPECT_EQ(std::get<DrawnMarkers>(line.items[1]).size, 10) << "no higher than the box";
  series->kind = SeriesKind::kBars;
  series->marker = MarkerShape::kNone;
  const DrawnLayer bars = sample();
  EXPECT_EQ(only<DrawnBoxes>(bars).boxes.front(), box);
}

}  // namespace
}  // namespace zyn
