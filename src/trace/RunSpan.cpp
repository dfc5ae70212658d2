#include "trace/RunSpan.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "trace/DiamondReach.h"
#include "trace/ExtremePoint.h"
#include "trace/PointsAbove.h"

namespace zyn {

namespace {

/// What lies closer to an edge, in pixels, may be on either side of it: more than the 1/256 to
/// which vertices are rounded.
constexpr double kClear = 1.0 / 128;

/// So many points in or beyond the last pixel are looked at.
constexpr int kMostPoints = 32;

/// As many points beyond an inner span are drawn with it: an outline has hardly more.
constexpr std::size_t kMostBeyond = 8;

/// The end of a run along its column, upwards.
struct Tip {
  std::size_t point = 0;
  double edge = 0.0;  ///< the lower edge of the last pixel that is lit
};

class TipSearch {
 public:
  TipSearch(const TraceInWindow& trace, const IndexRange& points, const DiamondReach& reach)
      : trace_(trace), points_(points), reach_(reach) {}

  /// `among`: where the highest point is likely to be; `height` is its height.
  std::optional<Tip> find(const IndexRange& among, double height) const {
    const std::size_t highest = highestPoint(among, height);
    const double edge = std::floor(height);
    if (isClear(height, edge) && isClear(reachOf(highest), edge)) {
      return tipAt(highest, edge);
    }
    const std::size_t furthest = search(reach_, points_);
    const double reached = std::floor(reachOf(furthest));
    if (isClear(reachOf(furthest), reached) && onlyCornersAreAbove(reached + 1 - kClear)) {
      return tipAt(furthest, reached);
    }
    return std::nullopt;
  }

 private:
  static bool isClear(double value, double edge) {
    return value >= edge + kClear && value <= edge + 1 - kClear;
  }

  /// The point, or another one whose lines light the same pixel for sure: from one on the axes of
  /// the diamond they may not.
  std::optional<Tip> tipAt(std::size_t point, double edge) const {
    if (!isOnAxis(point, edge)) {
      return Tip{point, edge};
    }
    std::optional<Tip> other;
    int count = 0;
    PointsAbove(trace_, reach_.along, edge + kClear).all(points_, [&](std::size_t i) {
      if (isClear(reachOf(i), edge) && !isOnAxis(i, edge)) {
        other = {i, edge};
      }
      return !other && ++count < kMostPoints;
    });
    return other;
  }

  bool isOnAxis(std::size_t i, double edge) const {
    return std::fabs(trace_.at(reach_.across, i) - reach_.middle) < kClear ||
           std::fabs(trace_.at(reach_.along, i) - (edge + 0.5)) < kClear;
  }

  template <class Form>
  std::size_t search(const Form& form, const IndexRange& among) const {
    return ExtremeSearch<Form>(trace_.points, trace_.boxes, form)
        .among(among.first, std::min(among.last, points_.last));
  }

  std::size_t highestPoint(const IndexRange& among, double height) const {
    const std::size_t found = search(reach_.along, among);
    return trace_.at(reach_.along, found) == height ? found : search(reach_.along, points_);
  }

  /// Whether the lines above a height stay on either side of the middle.
  bool onlyCornersAreAbove(double height) const {
    constexpr double kNever = -std::numeric_limits<double>::infinity();
    const auto staysBelow = [&](std::size_t i, std::size_t j) {
      return Chord(trace_, reach_.along, reach_.across, i, j)
          .crossesWithin(reach_.middle, {kNever, height});
    };
    int count = 0;
    return PointsAbove(trace_, reach_.along, height).all(points_, [&](std::size_t i) {
      return ++count <= kMostPoints && (i == points_.first || staysBelow(i - 1, i)) &&
             (i == points_.last || staysBelow(i, i + 1));
    });
  }

  double reachOf(std::size_t i) const {
    return reach_.at(trace_.points.x(i), trace_.points.y(i), trace_.points.z(i));
  }

  const TraceInWindow& trace_;
  const IndexRange& points_;
  const DiamondReach& reach_;
};

}  // namespace

RunLane laneOf(const TraceInWindow& trace, const CellRun& run) {
  const WindowMapping& mapping = trace.mapping;
  return run.isInColumn ? RunLane{mapping.y, mapping.x, run.y, run.column}
                        : RunLane{mapping.x, mapping.y, run.x, run.row};
}

Chord::Chord(const TraceInWindow& trace, const AffineForm& along, const AffineForm& across,
             std::size_t from, std::size_t to)
    : from_{trace.at(across, from), trace.at(along, from)},
      to_{trace.at(across, to), trace.at(along, to)} {}

double Chord::at(double place) const {
  const double width = to_.x - from_.x;
  const double part = width == 0 ? 0 : std::clamp((place - from_.x) / width, 0.0, 1.0);
  return from_.y + part * (to_.y - from_.y);
}

bool Chord::crossesWithin(double place, const Range& range) const {
  const auto [low, high] = std::minmax(from_.x, to_.x);
  return place < low || place > high || range.holds(at(place));
}

std::optional<RunSpan> spanOf(const TraceInWindow& trace, const CellRun& run) {
  const RunLane lane = laneOf(trace, run);
  const DiamondReach up{lane.along, lane.across, lane.cell.middle, true};
  const DiamondReach down{-lane.along, lane.across, lane.cell.middle, true};
  const RunExtent& extent = lane.extent;
  const auto top = TipSearch(trace, run.points, up).find(extent.highest, extent.pixels.high);
  if (!top) {
    return std::nullopt;
  }
  const auto bottom = TipSearch(trace, run.points, down).find(extent.lowest, -extent.pixels.low);
  if (!bottom) {
    return std::nullopt;
  }
  const auto [early, late] = std::minmax(top->point, bottom->point);
  const double low = -(bottom->edge + 1);
  const double high = top->edge + 1;
  const RunSpan span{early, late, low, high, {low + kClear, high - kClear}, {}};
  const auto isClear = [&](std::size_t from, std::size_t to) {
    return Chord(trace, lane.along, lane.across, from, to)
        .crossesWithin(lane.cell.middle, span.lit);
  };
  if (span.lit.size() > 0 && isClear(run.points.first, early) && isClear(early, late) &&
      isClear(late, run.points.last)) {
    return span;
  }
  return std::nullopt;
}

std::optional<RunSpan> innerSpanOf(const TraceInWindow& trace, const CellRun& run) {
  const RunLane lane = laneOf(trace, run);
  const double low = std::ceil(lane.extent.pixels.low);
  const double high = std::floor(lane.extent.pixels.high);
  if (!(low < high)) {
    return std::nullopt;
  }
  RunSpan span{run.points.first, run.points.last, low, high, {low + kClear, high - kClear}, {}};
  const auto take = [&span](std::size_t i) {
    span.beyond.push_back(i);
    return span.beyond.size() <= kMostBeyond;
  };
  if (!PointsAbove(trace, lane.along, span.lit.high).all(run.points, take) ||
      !PointsAbove(trace, -lane.along, -span.lit.low).all(run.points, take)) {
    return std::nullopt;
  }
  std::sort(span.beyond.begin(), span.beyond.end());
  return span;
}

}  // namespace zyn
