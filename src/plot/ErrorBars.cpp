#include "plot/ErrorBars.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "graph/PointWalk.h"

namespace zyn {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kCapReach = 3;  ///< of caps to both sides of a line, in pixels of a screen

/// As many bars for each pixel are told apart.
constexpr double kMostPerPixel = 2;

/// So far outside of the plot area bars end: their caps are not seen there.
constexpr double kBeyond = 64;

/// The error bars along one axis.
class Bars {
 public:
  Bars(const PlotPlace& place, bool isUp)
      : isUp_(isUp),
        scale_(isUp ? place.y : place.x),
        across_(isUp ? Range{place.area.left, place.area.right}
                     : Range{place.area.bottom, place.area.top}),
        along_(isUp ? Range{place.area.bottom, place.area.top}
                    : Range{place.area.left, place.area.right}),
        half_(std::max(1.0, std::round(place.pixelScale)) / 2),
        cap_(std::round(kCapReach * place.pixelScale) + half_) {}

  Range lanes() const { return {across_.low - cap_, across_.high + cap_}; }

  /// The bar of a value that lies at `at` of the other axis.
  void add(double at, double value, const ErrorRange& error) {
    const Range reached = reach(value, error);
    const bool isSeen =
        lanes().holds(at) && reached.high >= along_.low && reached.low <= along_.high;
    if (!isSeen || !(error.minus > 0 || error.plus > 0)) {
      return;
    }
    if (merged_.empty()) {
      bars_.push_back({at, reached});
      if (static_cast<double>(bars_.size()) > kMostPerPixel * lanes().size()) {
        merge();
      }
    } else {
      unite({at, reached});
    }
  }

  void write(std::vector<PixelBox>& boxes) const {
    for (const Bar& bar : bars_) {
      const double at = sharp(bar.at);
      boxes.push_back(boxOf({at - half_, at + half_}, bar.reached));
      for (const double end : {sharp(bar.reached.low), sharp(bar.reached.high)}) {
        boxes.push_back(boxOf({at - cap_, at + cap_}, {end - half_, end + half_}));
      }
    }
    for (std::size_t i = 0; i < merged_.size(); ++i) {
      if (merged_[i].low <= merged_[i].high) {
        const double lane = std::floor(lanes().low) + static_cast<double>(i);
        boxes.push_back(boxOf({lane, lane + 1}, merged_[i]));
      }
    }
  }

 private:
  struct Bar {
    double at;
    Range reached;
  };

  /// An end that the axis cannot show lies beyond its lower end.
  Range reach(double value, const ErrorRange& error) const {
    const Range ends{along_.low - kBeyond, along_.high + kBeyond};
    const auto pixelOf = [&](double end) {
      const double least = scale_.isInverted ? ends.high : ends.low;
      return scale_.canShow(end) ? std::clamp(scale_.pixelOf(end), ends.low, ends.high) : least;
    };
    const auto [low, high] =
        std::minmax({pixelOf(value - error.minus), pixelOf(value + error.plus)});
    return {low, high};
  }

  void merge() {
    merged_.resize(static_cast<std::size_t>(std::floor(lanes().high) - std::floor(lanes().low)) + 1,
                   {kInfinity, -kInfinity});
    for (const Bar& bar : bars_) {
      unite(bar);
    }
    bars_.clear();
  }

  void unite(const Bar& bar) {
    Range& lane = merged_[static_cast<std::size_t>(std::floor(bar.at) - std::floor(lanes().low))];
    lane = {std::min(lane.low, bar.reached.low), std::max(lane.high, bar.reached.high)};
  }

  /// Near a place, where what reaches half a line to both sides ends between pixels.
  double sharp(double place) const { return std::round(place - half_) + half_; }

  PixelBox boxOf(const Range& across, const Range& along) const {
    return isUp_ ? PixelBox{across.low, across.high, along.low, along.high}
                 : PixelBox{along.low, along.high, across.low, across.high};
  }

  bool isUp_;
  const AxisScale& scale_;
  Range across_;
  Range along_;
  double half_;  ///< of the width of a line
  double cap_;
  std::vector<Bar> bars_;
  std::vector<Range> merged_;  ///< for each pixel across; empty while bars are told apart
};

/// Calls `add(at, i)` with each point whose bar may be seen, and where it lies across the bars.
template <class Add>
void addBars(const TraceInWindow& trace, const AffineForm& across, Bars& bars, const Add& add) {
  const Range lanes = bars.lanes();
  PointWalk(
      trace.points, trace.boxes,
      [&](const Box3& box) {
        return across.highest(box) < lanes.low || across.lowest(box) > lanes.high;
      },
      [&](std::size_t i) { add(trace.at(across, i), i); });
}

}  // namespace

std::vector<PixelBox> errorBars(const SeriesData& data, const TraceInWindow& trace,
                                const PlotPlace& place) {
  std::vector<PixelBox> boxes;
  if (data.hasErrorsY()) {
    Bars bars(place, true);
    addBars(trace, trace.mapping.x, bars,
            [&](double at, std::size_t i) { bars.add(at, data.points().y(i), data.errorY(i)); });
    bars.write(boxes);
  }
  if (data.hasErrorsX()) {
    Bars bars(place, false);
    addBars(trace, trace.mapping.y, bars,
            [&](double at, std::size_t i) { bars.add(at, data.points().x(i), data.errorX(i)); });
    bars.write(boxes);
  }
  return boxes;
}

}  // namespace zyn
