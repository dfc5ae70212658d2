#include "plot/SeriesReading.h"

#include <algorithm>
#include <cmath>

#include "graph/PointWalk.h"

namespace zyn {

std::optional<NearestOnScreen> nearestTo(PlotSeries& series, const PlanePoint& target,
                                         const PlotPlace* place) {
  if (!place) {
    const SeriesData::Plotted plotted = series.data.plotted({});
    return nearestOnScreen(plotted.points, plotted.boxes, target, {1, 1});
  }
  const auto mapping = place->mapping();
  if (!mapping || !place->x.canShow(target.x) || !place->y.canShow(target.y)) {
    return std::nullopt;
  }
  const SeriesData::Plotted plotted = series.data.plotted(place->logs());
  const PlanePoint at{place->x.coordinateOf(target.x), place->y.coordinateOf(target.y)};
  return nearestOnScreen(plotted.points, plotted.boxes, at,
                         {std::abs(mapping->x.x), std::abs(mapping->y.y)});
}

namespace {

/// The two points around a place of the x axis between which a line of the series crosses it.
struct Crossing {
  std::size_t before = 0;
  std::size_t after = 0;
};

/// The newest one.
std::optional<Crossing> crossingAt(const SeriesData::Plotted& plotted, double x) {
  const PointSequence& points = plotted.points;
  std::optional<Crossing> found;
  const auto leadsAcross = [&points, x](std::size_t i) {
    return i + 1 < points.end() && !points.isGap(i + 1) &&
           std::min(points.x(i), points.x(i + 1)) <= x &&
           x <= std::max(points.x(i), points.x(i + 1));
  };
  PointWalk(
      points, plotted.boxes, [x](const Box3& box) { return x < box.xMin || x > box.xMax; },
      [&](std::size_t i) {
        if (leadsAcross(i)) {
          found = {i, i + 1};
        } else if (points.x(i) == x && !(found && found->after == i)) {
          found = {i, i};
        }
      });
  return found;
}

}  // namespace

std::optional<double> valueAt(PlotSeries& series, double x, const AxisLogs& logs) {
  const SeriesData::Plotted plotted = series.data.plotted(logs);
  const PointSequence& points = plotted.points;
  const double at = logs.x ? std::log10(x) : x;
  const auto crossing = std::isfinite(at) ? crossingAt(plotted, at) : std::nullopt;
  if (!crossing) {
    return std::nullopt;
  }
  const PlanePoint from{points.x(crossing->before), points.y(crossing->before)};
  const PlanePoint to{points.x(crossing->after), points.y(crossing->after)};
  const double width = to.x - from.x;
  double y = to.y;
  if (series.kind == SeriesKind::kSteps) {
    y = at == to.x ? to.y : from.y;
  } else if (width != 0) {
    const double part = (at - from.x) / width;
    y = (1 - part) * from.y + part * to.y;
  }
  return logs.y ? std::pow(10.0, y) : y;
}

}  // namespace zyn
