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

double distanceToSegment(const PlanePoint& at, const PlanePoint& from, const PlanePoint& to) {
  const PlanePoint along = to - from;
  const double square = along.x * along.x + along.y * along.y;
  const PlanePoint off = at - from;
  const double part =
      square > 0 ? std::clamp((off.x * along.x + off.y * along.y) / square, 0.0, 1.0) : 0.0;
  return lengthOf(at - (from + part * along));
}

/// Measures what is drawn from one point of a series to the next.
class DrawnDistance {
 public:
  DrawnDistance(const PlotSeries& series, const PlotPlace& place, const WindowMapping& mapping,
                const PlanePoint& at)
      : kind_(series.kind), mapping_(mapping), at_(at) {
    base_ = place.y.canShow(series.base) ? place.y.pixelOf(series.base) : place.area.bottom;
  }

  PlanePoint pixelOf(const PointSequence& points, std::size_t i) const {
    return {mapping_.x.at(points.x(i), points.y(i), 0), mapping_.y.at(points.x(i), points.y(i), 0)};
  }

  double of(const PointSequence& points, std::size_t i) const {
    const PlanePoint from = pixelOf(points, i);
    const bool isJoined = i + 1 < points.end() && !points.isGap(i + 1);
    if (kind_ == SeriesKind::kBars) {
      return distanceToSegment(at_, {from.x, base_}, from);
    }
    if (kind_ == SeriesKind::kPoints || !isJoined) {
      return lengthOf(at_ - from);
    }
    const PlanePoint to = pixelOf(points, i + 1);
    if (kind_ == SeriesKind::kSteps) {
      const PlanePoint corner{to.x, from.y};
      return std::min(distanceToSegment(at_, from, corner), distanceToSegment(at_, corner, to));
    }
    return distanceToSegment(at_, from, to);
  }

  /// Whether what is drawn of the points in a box is farther away than `reach`.
  bool isBeyond(const Box3& box, double reach) const {
    const double y = mapping_.y.lowest(box);
    const double yEnd = mapping_.y.highest(box);
    const bool fromBase = kind_ == SeriesKind::kBars;
    return at_.x < mapping_.x.lowest(box) - reach || at_.x > mapping_.x.highest(box) + reach ||
           at_.y < (fromBase ? std::min(y, base_) : y) - reach ||
           at_.y > (fromBase ? std::max(yEnd, base_) : yEnd) + reach;
  }

 private:
  SeriesKind kind_;
  const WindowMapping& mapping_;
  PlanePoint at_;
  double base_ = 0;
};

}  // namespace

std::optional<double> distanceTo(PlotSeries& series, const PlanePoint& at, const PlotPlace& place,
                                 double reach) {
  const auto mapping = place.mapping();
  if (!mapping) {
    return std::nullopt;
  }
  const SeriesData::Plotted plotted = series.data.plotted(place.logs());
  const DrawnDistance distance(series, place, *mapping, at);
  std::optional<double> least;
  PointWalk(
      plotted.points, plotted.boxes,
      [&](const Box3& box) { return distance.isBeyond(box, least.value_or(reach)); },
      [&](std::size_t i) {
        if (const double away = distance.of(plotted.points, i); away <= least.value_or(reach)) {
          least = away;
        }
      });
  return least;
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
