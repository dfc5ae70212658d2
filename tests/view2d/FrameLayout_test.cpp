#include "view2d/FrameLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/BoxFont.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {
namespace {

using Line = FrameLayout::Line;
using Lines = std::vector<Line>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

const FontMetrics kFont = boxFont();

LinearGraph linear() {
  LinearGraph graph;
  graph.colour = {0.1, 0.2, 0.3};
  graph.x = {{"Nom", "mm", {}}, 0, 10, 2, 0.5};
  graph.y = {{"Nom", "mm", {}}, 0, 5, 1, 0.5};
  return graph;
}

LogLogGraph logLog() {
  LogLogGraph graph;
  graph.colour = {0.1, 0.2, 0.3};
  graph.x = {{}, 0, 4, {1, 0, 0}};
  graph.y = {{}, -1, 2, {0, 0, 1}};
  return graph;
}

template <class Graph>
GraphPlacement placementOf(const Graph& graph, ClientSize client, double xScale = 1,
                           double yScale = 1) {
  ViewState2D view;
  view.resize(client);
  view.showGraph({graph.x.min, graph.x.max, graph.y.min, graph.y.max}, xScale, yScale);
  return view.graphPlacement().value();
}

/// In a window of so many pixels of a screen, each of which is `pixelScale` of its own.
template <class Graph>
GraphPlacement finerPlacementOf(const Graph& graph, ClientSize client, double pixelScale) {
  const ClientSize fine{static_cast<int>(client.width * pixelScale),
                        static_cast<int>(client.height * pixelScale)};
  ViewState2D view;
  view.resize(fine);
  view.showGraph({graph.x.min, graph.x.max, graph.y.min, graph.y.max}, 1, 1);
  return view.graphPlacement(fine, pixelScale).value();
}

template <class Graph>
FrameLayout layOut(const Graph& graph, ClientSize client, double xScale = 1, double yScale = 1) {
  return layOutFrame(graph, placementOf(graph, client, xScale, yScale), kFont);
}

/// What the window shows of a graph, around the graph's origin.
template <class Graph>
PixelBox windowOf(const Graph& graph, const GraphPlacement& placement) {
  const FrameAxis x{graph.x.min, graph.x.max, placement.unitsPerPixelX};
  const FrameAxis y{graph.y.min, graph.y.max, placement.unitsPerPixelY};
  return {x.position(placement.visible.xMin), x.position(placement.visible.xMax),
          y.position(placement.visible.yMin), y.position(placement.visible.yMax)};
}

void expectLine(const Line& line, double fromX, double fromY, double toX, double toY) {
  EXPECT_NEAR(line.from.x, fromX, 1e-9);
  EXPECT_NEAR(line.from.y, fromY, 1e-9);
  EXPECT_NEAR(line.to.x, toX, 1e-9);
  EXPECT_NEAR(line.to.y, toY, 1e-9);
}

bool isEmpty(const FrameLayout& layout) {
  return layout.lines.empty() && layout.arrows.empty() && layout.labels.empty() &&
         layout.titleX.texts.empty() && layout.titleY.texts.empty();
}

TEST(FrameLayoutTest, AxesEndInTheirArrows) {
  const FrameLayout layout = layOut(linear(), {560, 280});  // 40 pixels a unit
  const FrameLayout::LineGroup& axes = layout.lines.back();
  EXPECT_EQ(axes.width, 2);
  EXPECT_EQ(axes.colour, (GraphColour{0.1, 0.2, 0.3}));
  ASSERT_EQ(axes.lines.size(), 2U);
  expectLine(axes.lines[0], 0, 0, 410 - 3, 0);
  expectLine(axes.lines[1], 0, 0, 0, 205 - 3);
  ASSERT_EQ(layout.arrows.size(), 2U);
  EXPECT_NEAR(layout.arrows[0][0].x, 410, 1e-9);
  EXPECT_NEAR(layout.arrows[0][1].x, 403, 1e-9);
  EXPECT_NEAR(layout.arrows[0][1].y, 7, 1e-9);
  EXPECT_NEAR(layout.arrows[0][2].y, -7, 1e-9);
  EXPECT_NEAR(layout.arrows[1][0].y, 205, 1e-9);
  EXPECT_NEAR(layout.arrows[1][1].x, -7, 1e-9);
  EXPECT_NEAR(layout.arrows[1][2].x, 7, 1e-9);
  EXPECT_NEAR(layout.arrows[1][2].y, 198, 1e-9);
}

TEST(FrameLayoutTest, TicksPointAwayFromTheGraph) {
  const FrameLayout layout = layOut(linear(), {560, 280});
  ASSERT_EQ(layout.lines.size(), 3U);
  const Lines& x = layout.lines[0].lines;
  ASSERT_EQ(x.size(), 20U + 5U);
  expectLine(x[1], 20, 0, 20, -4);
  expectLine(x[21], 80, 0, 80, -8);
  const Lines& y = layout.lines[1].lines;
  ASSERT_EQ(y.size(), 10U + 5U);
  expectLine(y[1], 0, 20, -4, 20);
  expectLine(y[11], 0, 40, -8, 40);
  for (const FrameLayout::LineGroup& group : layout.lines) {
    EXPECT_EQ(group.colour, layout.colour);
    EXPECT_EQ(group.alpha, 1);
  }
}

TEST(FrameLayoutTest, LabelsOfBothAxes) {
  const FrameLayout layout = layOut(linear(), {560, 280});
  ASSERT_EQ(layout.labels.size(), 10U);
  EXPECT_EQ(layout.labels[1].label, "2");
  EXPECT_EQ(layout.labels[1].box, (PixelBox{78, 82, -16, -10}));
  EXPECT_EQ(layout.labels[6].label, "1");
  EXPECT_EQ(layout.labels[6].box, (PixelBox{-12, -10, 37, 43}));
}

TEST(FrameLayoutTest, ScalesChangeNothingInPixels) {
  LinearGraph stretched = linear();
  stretched.x.max = 10000;
  stretched.x.bigStep = 2000;
  stretched.x.smallStep = 500;
  const FrameLayout layout = layOut(stretched, {560, 280}, 0.003, 3);
  const Lines& x = layout.lines[0].lines;
  ASSERT_EQ(x.size(), 25U);
  expectLine(x[21], 80, 0, 80, -8);
  expectLine(layout.lines[1].lines[11], 0, 40, -8, 40);
}

TEST(FrameLayoutTest, UselessStepsLeaveTheRest) {
  for (const double useless : {0.0, -1.0, kNaN, 1e-300}) {
    LinearGraph graph = linear();
    graph.x.bigStep = useless;
    graph.y.smallStep = useless;
    const FrameLayout layout = layOut(graph, {560, 280});
    EXPECT_EQ(layout.lines[0].lines.size(), 20U);
    EXPECT_EQ(layout.lines[1].lines.size(), 5U);
    EXPECT_EQ(layout.labels.size(), 5U);
    EXPECT_EQ(layout.lines[2].lines.size(), 2U);
  }
}

TEST(FrameLayoutTest, EverythingFitsEverySize) {
  for (const ClientSize client : {ClientSize{150, 100},
                                  {200, 150},
                                  {300, 100},
                                  {150, 400},
                                  {400, 300},
                                  {1600, 1200},
                                  {4000, 3000}}) {
    for (const auto& [min, max] : {std::pair(0.0, 10.0),
                                   {-10.0, -2.0},
                                   {0.0, 1e-9},
                                   {0.0, 1e12},
                                   {1e6, 1e6 + 1},
                                   {-1e9, 1e9}}) {
      LinearGraph graph = linear();
      graph.x.min = graph.y.min = min;
      graph.x.max = graph.y.max = max;
      graph.x.bigStep = graph.y.bigStep = (max - min) / 10;
      const GraphPlacement placement = placementOf(graph, client);
      const FrameLayout layout = layOutFrame(graph, placement, kFont);
      const PixelBox window = windowOf(graph, placement);
      EXPECT_GE(layout.labels.size(), 4U) << client.width << " " << min;
      std::vector<PixelBox> boxes{layout.titleX.box, layout.titleY.box};
      for (const PlacedLabel& label : layout.labels) {
        boxes.push_back(label.box);
      }
      for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(window.holds(boxes[i])) << client.width << " " << min << " " << i;
        for (std::size_t j = 0; j < i; ++j) {
          EXPECT_FALSE(boxes[i].overlaps(boxes[j])) << client.width << " " << min << " " << i;
        }
      }
    }
  }
}

/// Digits of finer pixels, or outlines, in about the same places.
TEST(FrameLayoutTest, EverythingFitsInFinerPixels) {
  for (const double pixelScale : {0.5, 1.25, 1.5, 2.0, 3.0, 8.0}) {
    for (const ClientSize client : {ClientSize{200, 150}, {400, 300}, {1600, 1200}}) {
      const LinearGraph graph = linear();
      const GraphPlacement placement = finerPlacementOf(graph, client, pixelScale);
      const FrameLayout layout = layOutFrame(graph, placement, kFont);
      const FrameLayout plain = layOut(graph, client);
      EXPECT_EQ(layout.labelFont.size, plain.labelFont.size);
      EXPECT_NEAR(layout.lines.back().lines[0].to.x, plain.lines.back().lines[0].to.x, 1e-6);
      EXPECT_GE(layout.labels.size(), 4U) << client.width << " " << pixelScale;
      const PixelBox window = windowOf(graph, placement);
      for (std::size_t i = 0; i < layout.labels.size(); ++i) {
        EXPECT_TRUE(window.holds(layout.labels[i].box)) << client.width << " " << pixelScale;
        for (std::size_t j = 0; j < i; ++j) {
          EXPECT_FALSE(layout.labels[i].box.overlaps(layout.labels[j].box))
              << client.width << " " << pixelScale << " " << i;
        }
      }
    }
  }
}

TEST(FrameLayoutTest, DecadeLinesCrossTheGraph) {
  const FrameLayout layout = layOut(logLog(), {560, 420});  // 100 pixels a decade
  ASSERT_EQ(layout.lines.size(), 7U);
  const FrameLayout::LineGroup& multiplesX = layout.lines[0];
  const FrameLayout::LineGroup& powersX = layout.lines[1];
  const FrameLayout::LineGroup& ticksX = layout.lines[2];
  EXPECT_EQ(multiplesX.colour, (GraphColour{1, 0, 0}));
  EXPECT_LT(multiplesX.alpha, 1);
  ASSERT_EQ(multiplesX.lines.size(), 32U);
  expectLine(multiplesX.lines[0], 100 * std::log10(2), 0, 100 * std::log10(2), 300);
  EXPECT_EQ(powersX.colour, (GraphColour{1, 0, 0}));
  EXPECT_EQ(powersX.alpha, 1);
  ASSERT_EQ(powersX.lines.size(), 5U);
  expectLine(powersX.lines[4], 400, 0, 400, 300);
  ASSERT_EQ(ticksX.lines.size(), 37U);
  expectLine(ticksX.lines[33], 100, 0, 100, -8);
  const FrameLayout::LineGroup& powersY = layout.lines[4];
  EXPECT_EQ(powersY.colour, (GraphColour{0, 0, 1}));
  ASSERT_EQ(powersY.lines.size(), 4U);
  expectLine(powersY.lines[1], 0, 100, 400, 100);
  EXPECT_EQ(layout.lines[6].colour, (GraphColour{0.1, 0.2, 0.3}));
}

TEST(FrameLayoutTest, DecadesHavePowersAsLabels) {
  const FrameLayout layout = layOut(logLog(), {560, 420});
  ASSERT_EQ(layout.labels.size(), 9U);
  EXPECT_EQ(layout.labels[3].label, "10");
  EXPECT_EQ(layout.labels[3].exponent, "3");
  EXPECT_EQ(layout.labels[5].exponent, "-1");
}

TEST(FrameLayoutTest, DecadesFitEverySize) {
  for (const ClientSize client : {ClientSize{150, 100}, {150, 400}, {400, 300}, {4000, 3000}}) {
    for (const auto& [min, max] : {std::pair(-6.0, 6.0), {0.0, 1.0}, {0.2, 0.8}, {-200.0, 200.0}}) {
      LogLogGraph graph = logLog();
      graph.x.min = graph.y.min = min;
      graph.x.max = graph.y.max = max;
      graph.x.picture = {20, 10, std::vector<std::uint8_t>(800)};
      const GraphPlacement placement = placementOf(graph, client);
      const FrameLayout layout = layOutFrame(graph, placement, kFont);
      EXPECT_GE(layout.labels.size(), 3U) << client.width << " " << min;
      EXPECT_TRUE(layout.titleX.picture);
      EXPECT_FALSE(layout.titleY.picture);
      for (std::size_t i = 0; i < layout.labels.size(); ++i) {
        const PixelBox& box = layout.labels[i].box;
        EXPECT_TRUE(windowOf(graph, placement).holds(box)) << client.width << " " << min;
        EXPECT_FALSE(box.overlaps(layout.titleX.box)) << client.width << " " << min;
        for (std::size_t j = 0; j < i; ++j) {
          EXPECT_FALSE(box.overlaps(layout.labels[j].box)) << client.width << " " << min;
        }
      }
    }
  }
}

TEST(FrameLayoutTest, MirroredAxesPointBackwards) {
  const FrameLayout layout = layOut(linear(), {560, 280}, -1, -1);
  const Lines& axes = layout.lines.back().lines;
  expectLine(axes[0], 0, 0, -410 + 3, 0);
  expectLine(axes[1], 0, 0, 0, -205 + 3);
  EXPECT_NEAR(layout.arrows[0][0].x, -410, 1e-9);
  EXPECT_NEAR(layout.arrows[0][1].x, -403, 1e-9);
  EXPECT_NEAR(layout.arrows[1][1].y, -198, 1e-9);
}

TEST(FrameLayoutTest, WhatIsNotANumberGivesNothing) {
  const GraphPlacement placement = placementOf(linear(), {560, 280});
  for (const double value : {kNaN, kInfinity, -kInfinity}) {
    LinearGraph graph = linear();
    graph.x.max = value;
    EXPECT_TRUE(isEmpty(layOutFrame(graph, placement, kFont))) << value;
    LogLogGraph decades = logLog();
    decades.y.min = value;
    EXPECT_TRUE(isEmpty(layOutFrame(decades, placement, kFont))) << value;
    GraphPlacement useless = placement;
    useless.unitsPerPixelX = value * 0;
    EXPECT_TRUE(isEmpty(layOutFrame(linear(), useless, kFont))) << value;
  }
  EXPECT_TRUE(isEmpty(layOutFrame(linear(), GraphPlacement(), kFont)));
}

TEST(FrameLayoutTest, EmptyRangesHaveAxesOnly) {
  LinearGraph graph = linear();
  graph.x.max = graph.x.min;
  const FrameLayout layout = layOut(graph, {560, 280});
  EXPECT_TRUE(layout.lines[0].lines.empty());
  EXPECT_FALSE(layout.lines[1].lines.empty());
}

}  // namespace
}  // namespace zyn::test
