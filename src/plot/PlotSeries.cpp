#include "plot/PlotSeries.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "plot/ErrorBars.h"

namespace zyn {

namespace {

constexpr double kAreaOpacity = 0.3;  ///< of a fill that nobody has chosen
constexpr double kLeastDot = 3;       ///< of a point between gaps
constexpr double kBarPart = 0.8;      ///< of the smallest gap

/// So far around the plot area lines are cut off: more than any of them is wide.
constexpr double kBeyond = 64;

/// Coordinates of an axis to pixels.
struct AxisLine {
  double factor;
  double constant;
};

/// Without the digits that rounding changes while a range is moved: views of one size have one
/// factor.
double steady(double factor) {
  constexpr double kDigits = 0x1p40;
  int exponent = 0;
  const double mantissa = std::frexp(factor, &exponent);
  return std::ldexp(std::round(mantissa * kDigits) / kDigits, exponent);
}

std::optional<AxisLine> lineOf(const AxisScale& scale) {
  const double min = scale.coordinateOf(scale.min);
  const double max = scale.coordinateOf(scale.max);
  const double span = max / 2 - min / 2;
  const double length = (scale.pixelTo - scale.pixelFrom) / 2;
  const double factor = steady((scale.isInverted ? -length : length) / span);
  const double constant = scale.pixelFrom / 2 + scale.pixelTo / 2 - factor * (min / 2 + max / 2);
  if (!std::isnormal(factor) || !std::isfinite(constant)) {
    return std::nullopt;
  }
  return AxisLine{factor, constant};
}

PixelGrid gridAround(const PixelBox& area) {
  PixelGrid grid;
  grid.left = area.left;
  grid.right = area.right;
  grid.bottom = area.bottom;
  grid.top = area.top;
  grid.depthStep = std::numeric_limits<double>::infinity();
  return grid;
}

PixelBox grown(const PixelBox& box, double by) { return box.shrunk(-by); }

DrawColour faded(DrawColour colour, double opacity) {
  colour.alpha *= opacity;
  return colour;
}

DrawColour fillOf(const PlotSeries& series, const DrawColour& colour) {
  return series.fill.value_or(series.kind == SeriesKind::kArea ? faded(colour, kAreaOpacity)
                                                               : colour);
}

Stroke strokeOf(const PlotSeries& series, const DrawColour& colour, double pixelScale) {
  Stroke stroke{.colour = colour,
                .width = series.width * pixelScale,
                .isSmooth = series.isSmooth,
                .leastDot = kLeastDot * pixelScale};
  if (series.isDashed) {
    stroke.dashes = {std::max(6.0, 4 * series.width) * pixelScale,
                     std::max(4.0, 3 * series.width) * pixelScale};
  }
  return stroke;
}

/// With two dashes at least, of which the last one is whole.
Stroke sampleStroke(const PlotSeries& series, const DrawColour& colour, double pixelScale,
                    double length) {
  Stroke stroke = strokeOf(series, colour, pixelScale);
  if (series.isDashed) {
    const double period = stroke.dashes[0] + stroke.dashes[1];
    const double count = std::max(2.0, std::floor((length + stroke.dashes[1]) / period));
    const double factor = length / (count * period - stroke.dashes[1]);
    stroke.dashes = {factor * stroke.dashes[0], factor * stroke.dashes[1]};
  }
  return stroke;
}

DrawnMarkers markersLike(const PlotSeries& series, const DrawColour& colour, double pixelScale) {
  return {.shape = series.marker,
          .size = series.markerSize * pixelScale,
          .colour = series.markerColour.value_or(colour),
          .isSmooth = series.isSmooth,
          .lineWidth = std::max(1.0, series.markerSize / 6) * pixelScale,
          .middles = {}};
}

/// Bars of several series share the place of one.
struct BarWidth {
  double width;  ///< in coordinates of the axis
  double shift;  ///< of their middles
};

double groupWidth(PlotSeries& series, const AxisLogs& logs) {
  if (series.barWidth) {
    return *series.barWidth;
  }
  const double gap = series.data.smallestGap(logs);
  return gap > 0 ? kBarPart * gap : kBarPart;
}

BarWidth widthOf(PlotSeries& series, const AxisLogs& logs, const BarPlace& place) {
  const double width = groupWidth(series, logs) / place.count;
  return {width, width * (place.index - (place.count - 1) / 2.0)};
}

/// Draws one series.
class SeriesDrawing {
 public:
  SeriesDrawing(const std::shared_ptr<PlotSeries>& series, const PlotPlace& place,
                const WindowMapping& mapping, const DrawColour& colour, DrawnLayer& layer)
      : series_(series),
        place_(place),
        mapping_(mapping),
        plotted_(series->data.plotted(place.logs())),
        trace_{plotted_.points, plotted_.boxes, mapping_, true},
        colour_(colour),
        layer_(layer) {
    renewCache();
  }

  void draw(const BarPlace& bars) const {
    if (series_->kind == SeriesKind::kBars) {
      drawBars(bars);
    }
    if (series_->kind == SeriesKind::kArea) {
      layer_.items.emplace_back(
          DrawnArea{fillOf(*series_, colour_), areaOf(lines(), basePixel()), basePixel()});
    }
    if (series_->kind == SeriesKind::kLine || series_->kind == SeriesKind::kArea) {
      drawLine();
    }
    if (series_->kind == SeriesKind::kSteps) {
      drawSteps();
    }
    if (series_->data.hasErrors()) {
      layer_.items.emplace_back(DrawnBoxes{colour_, errorBars(series_->data, trace_, place_)});
    }
    drawMarkers();
  }

 private:
  void renewCache() const {
    PlotSeries& series = *series_;
    if (series.cachedRevision != series.data.revision() || series.cachedLogs != place_.logs()) {
      series.cache.clear();
      series.cachedRevision = series.data.revision();
      series.cachedLogs = place_.logs();
    }
  }

  void drawLine() const {
    layer_.items.emplace_back(DrawnTrace{strokeOf(*series_, colour_, place_.pixelScale), series_,
                                         &plotted_.points, &plotted_.boxes, &series_->cache,
                                         mapping_});
  }

  /// Level and upright lines are sharp without being smoothed.
  void drawSteps() const {
    Stroke stroke = strokeOf(*series_, colour_, place_.pixelScale);
    stroke.isSmooth = false;
    const ReducedPath path = reducePath(trace_, gridAround(grown(place_.area, kBeyond)));
    layer_.items.emplace_back(DrawnLines{stroke, held(stepsOf(path, mapping_))});
  }

  PixelLines lines() const {
    return held(linesOf(reducePath(trace_, gridAround(grown(place_.area, kBeyond))), mapping_));
  }

  /// Lines that stay near the plot area, in which they are the same.
  PixelLines held(const PixelLines& lines) const {
    return heldIn(lines, grown(place_.area, 2 * kBeyond));
  }

  void drawBars(const BarPlace& bars) const {
    const AxisLogs logs = place_.logs();
    const BarWidth width = widthOf(*series_, logs, bars);
    const PixelBox seen = grown(place_.area, kBeyond);
    DrawnBoxes boxes{fillOf(*series_, colour_), {}};
    for (const PixelBar& bar :
         barsOf(trace_, gridAround(place_.area), {width.width, width.shift, basePixel()})) {
      const PixelBox box{
          std::clamp(bar.left, seen.left, seen.right), std::clamp(bar.right, seen.left, seen.right),
          std::clamp(bar.low, seen.bottom, seen.top), std::clamp(bar.high, seen.bottom, seen.top)};
      boxes.boxes.push_back(box);
    }
    layer_.items.emplace_back(std::move(boxes));
  }

  /// Where bars and areas begin. A base that the axis cannot show lies beyond its lower end.
  double basePixel() const {
    const AxisScale& y = place_.y;
    const PixelBox seen = grown(place_.area, kBeyond);
    if (!y.canShow(series_->base)) {
      return y.isInverted ? seen.top : seen.bottom;
    }
    return std::clamp(y.pixelOf(series_->base), seen.bottom, seen.top);
  }

  void drawMarkers() const {
    DrawnMarkers markers = markersLike(*series_, colour_, place_.pixelScale);
    if (markers.shape == MarkerShape::kNone && series_->kind == SeriesKind::kPoints) {
      markers.shape = MarkerShape::kCircle;
    }
    if (markers.shape == MarkerShape::kNone) {
      return;
    }
    for (const std::size_t i : markersOf(trace_, gridAround(grown(place_.area, markers.size)))) {
      markers.middles.push_back({trace_.windowX(i), trace_.windowY(i)});
    }
    layer_.items.emplace_back(std::move(markers));
  }

  const std::shared_ptr<PlotSeries>& series_;
  const PlotPlace& place_;
  const WindowMapping& mapping_;
  const SeriesData::Plotted plotted_;
  const TraceInWindow trace_;
  const DrawColour& colour_;
  DrawnLayer& layer_;
};

}  // namespace

std::optional<WindowMapping> PlotPlace::mapping() const {
  const std::optional<AxisLine> across = lineOf(x);
  const std::optional<AxisLine> along = lineOf(y);
  if (!across || !along) {
    return std::nullopt;
  }
  return WindowMapping{
      {across->factor, 0, 0, across->constant}, {0, along->factor, 0, along->constant}, {}};
}

void drawSeries(const std::shared_ptr<PlotSeries>& series, const PlotPlace& place,
                const BarPlace& bars, const DrawColour& colour, DrawnLayer& layer) {
  const std::optional<WindowMapping> mapping = place.mapping();
  if (!series->isVisible || !mapping || place.area.isEmpty()) {
    return;
  }
  SeriesDrawing(series, place, *mapping, series->colour.value_or(colour), layer).draw(bars);
}

DrawColour colourOfSample(const PlotSeries& series, const DrawColour& colour) {
  const DrawColour own = series.colour.value_or(colour);
  if (series.kind == SeriesKind::kPoints) {
    return series.markerColour.value_or(own);
  }
  return series.kind == SeriesKind::kBars ? series.fill.value_or(own) : own;
}

void drawSample(const PlotSeries& series, const DrawColour& colour, const PixelBox& box,
                double pixelScale, DrawnLayer& layer) {
  const DrawColour own = series.colour.value_or(colour);
  const double middle = std::floor((box.bottom + box.top) / 2) + 0.5;
  const bool isFilled = series.kind == SeriesKind::kBars || series.kind == SeriesKind::kArea;
  if (isFilled) {
    layer.items.emplace_back(DrawnBoxes{fillOf(series, own), {box}});
  }
  if (series.kind != SeriesKind::kBars && series.kind != SeriesKind::kPoints) {
    const double height = series.kind == SeriesKind::kArea ? box.top : middle;
    layer.items.emplace_back(DrawnLines{sampleStroke(series, own, pixelScale, box.width()),
                                        {{{box.left, height}, {box.right, height}}, {0}}});
  }
  DrawnMarkers markers = markersLike(series, own, pixelScale);
  if (markers.shape == MarkerShape::kNone && series.kind == SeriesKind::kPoints) {
    markers.shape = MarkerShape::kCircle;
  }
  if (markers.shape != MarkerShape::kNone) {
    markers.size = std::min(markers.size, box.height());
    markers.middles = {{(box.left + box.right) / 2, (box.bottom + box.top) / 2}};
    layer.items.emplace_back(std::move(markers));
  }
}

std::optional<Box3> extentOf(PlotSeries& series, const AxisLogs& logs) {
  std::optional<Box3> extent = series.data.extent(logs);
  if (!extent || series.kind != SeriesKind::kBars) {
    return extent;
  }
  if (const double half = groupWidth(series, logs) / 2; std::isfinite(half)) {
    extent->xMin -= half;
    extent->xMax += half;
  }
  if (!logs.y || series.base > 0) {
    const double base = logs.y ? std::log10(series.base) : series.base;
    extent->yMin = std::min(extent->yMin, base);
    extent->yMax = std::max(extent->yMax, base);
  }
  return extent;
}

}  // namespace zyn
