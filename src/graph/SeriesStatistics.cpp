#include "graph/SeriesStatistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace zyn {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The smaller of two distances, of which 0 is none.
double smaller(double a, double b) { return a == 0 || b == 0 ? a + b : std::min(a, b); }

double smallestOfSorted(const PointSequence& points) {
  std::vector<double> sorted;
  for (std::size_t i = points.first(); i < points.end(); ++i) {
    if (std::isfinite(points.x(i))) {
      sorted.push_back(points.x(i));
    }
  }
  std::sort(sorted.begin(), sorted.end());
  double smallest = 0;
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    smallest = smaller(smallest, sorted[i] - sorted[i - 1]);
  }
  return smallest;
}

}  // namespace

void StatisticsKeeper::Moments::merge(const Moments& next) {
  if (next.count == 0) {
    return;
  }
  if (count == 0) {
    *this = next;
    return;
  }
  const auto own = static_cast<long double>(count);
  const auto others = static_cast<long double>(next.count);
  const long double away = next.mean - mean;
  squares += next.squares + away * away * (own * others / (own + others));
  mean += away * (others / (own + others));
  count += next.count;
  min = std::min(min, next.min);
  max = std::max(max, next.max);
}

StatisticsKeeper::Moments StatisticsKeeper::momentsOf(const PointSequence& points, std::size_t from,
                                                      std::size_t to) {
  Moments moments;
  long double sum = 0;
  for (std::size_t i = from; i < to; ++i) {
    if (const double y = points.y(i); std::isfinite(y)) {
      moments.min = moments.count == 0 ? y : std::min(moments.min, y);
      moments.max = moments.count == 0 ? y : std::max(moments.max, y);
      sum += y;
      ++moments.count;
    }
  }
  if (moments.count == 0) {
    return moments;
  }
  moments.mean = sum / static_cast<long double>(moments.count);
  for (std::size_t i = from; i < to; ++i) {
    if (const double y = points.y(i); std::isfinite(y)) {
      moments.squares += (y - moments.mean) * (y - moments.mean);
    }
  }
  return moments;
}

SeriesStatistics StatisticsKeeper::of(const PointSequence& points) {
  const Moments all = blocks_.total(
      points.first(), points.end(),
      [&points](std::size_t from, std::size_t to) { return momentsOf(points, from, to); });
  if (all.count == 0) {
    return {0, kNaN, kNaN, kNaN, kNaN};
  }
  const double deviation =
      all.count == 1
          ? kNaN
          : static_cast<double>(std::sqrt(all.squares / static_cast<long double>(all.count - 1)));
  const double mean = std::clamp(static_cast<double>(all.mean), all.min, all.max);
  return {all.count, all.min, all.max, mean, deviation};
}

void GapKeeper::Gaps::take(double x) {
  if (!isEmpty) {
    smallest = smaller(smallest, std::fabs(x - last));
    rises = rises && x >= last;
    falls = falls && x <= last;
  } else {
    first = x;
    isEmpty = false;
  }
  last = x;
}

void GapKeeper::Gaps::merge(const Gaps& next) {
  if (next.isEmpty) {
    return;
  }
  take(next.first);
  smallest = smaller(smallest, next.smallest);
  rises = rises && next.rises;
  falls = falls && next.falls;
  last = next.last;
}

GapKeeper::Gaps GapKeeper::gapsOf(const PointSequence& points, std::size_t from, std::size_t to) {
  Gaps gaps;
  for (std::size_t i = from; i < to; ++i) {
    if (std::isfinite(points.x(i))) {
      gaps.take(points.x(i));
    }
  }
  return gaps;
}

double GapKeeper::of(const PointSequence& points) {
  const Gaps all = blocks_.total(
      points.first(), points.end(),
      [&points](std::size_t from, std::size_t to) { return gapsOf(points, from, to); });
  return all.rises || all.falls ? all.smallest : smallestOfSorted(points);
}

}  // namespace zyn
