#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "graph/AxisScale.h"
#include "graph/SeriesData.h"
#include "plot/Drawing.h"

namespace zyn {

/// As hosts number them.
enum class SeriesKind { kLine, kSteps, kPoints, kBars, kArea };

/// A series of a graph: its values and how they are drawn. Lengths are in pixels of a screen.
struct PlotSeries {
  SeriesData data;

  std::string name;  ///< UTF-8
  SeriesKind kind = SeriesKind::kLine;
  MarkerShape marker = MarkerShape::kNone;
  double markerSize = 7.0;
  double width = 1.0;  ///< of lines
  bool isSmooth = true;
  bool isDashed = false;
  double base = 0.0;               ///< of bars and areas, in units of the axis
  std::optional<double> barWidth;  ///< in coordinates of the axis; none: 0.8 of the smallest gap
  std::optional<DrawColour> colour{};        ///< none: the next of the theme's cycle
  std::optional<DrawColour> fill{};          ///< none: that colour, lighter for areas
  std::optional<DrawColour> markerColour{};  ///< none: that colour
  bool isVisible = true;

  /// What was chosen of the line for views of late, and of which points.
  PathCache cache;
  std::uint64_t cachedRevision = 0;
  AxisLogs cachedLogs{};
};

/// Where something is plotted.
struct PlotPlace {
  PixelBox area;
  AxisScale x;  ///< in pixels of the picture
  AxisScale y;
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen

  AxisLogs logs() const { return {x.kind == AxisKind::kLog10, y.kind == AxisKind::kLog10}; }
  /// From coordinates of the axes (decades on logarithmic ones) to pixels; none where doubles
  /// cannot hold it.
  std::optional<WindowMapping> mapping() const;
};

/// Where the bars of a series stand beside those of others.
struct BarPlace {
  int index = 0;
  int count = 1;
};

/// Draws a series into a layer that is clipped to the plot area: its area or bars, line, error
/// bars, markers. `colour` is its own, or that of the cycle. `owner` keeps the series.
void drawSeries(const std::shared_ptr<PlotSeries>& series, const PlotPlace& place,
                const BarPlace& bars, const DrawColour& colour, DrawnLayer& layer);

/// In which most of that is drawn.
DrawColour colourOfSample(const PlotSeries& series, const DrawColour& colour);

/// What the legend shows of it: a piece of line, a box, a marker.
void drawSample(const PlotSeries& series, const DrawColour& colour, const PixelBox& box,
                double pixelScale, DrawnLayer& layer);

/// What the axes have to show of it, in their coordinates; none without a point that they can.
std::optional<Box3> extentOf(PlotSeries& series, const AxisLogs& logs);

}  // namespace zyn
