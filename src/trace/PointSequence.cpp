#include "trace/PointSequence.h"

#include <algorithm>
#include <limits>

namespace zyn {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

RunBox nothing() {
  return {Box3{kInfinity, -kInfinity, kInfinity, -kInfinity, kInfinity, -kInfinity}, true};
}

RunBox around(const PointSequence& points, std::size_t first, std::size_t last) {
  RunBox run = nothing();
  double before = -kInfinity;
  for (std::size_t i = first; i <= last; ++i) {
    if (points.isGap(i)) {
      run.whole = false;
    } else {
      const double x = points.x(i);
      const double y = points.y(i);
      const double z = points.z(i);
      Box3& box = run.box;
      box = {std::min(box.xMin, x), std::max(box.xMax, x), std::min(box.yMin, y),
             std::max(box.yMax, y), std::min(box.zMin, z), std::max(box.zMax, z)};
      run.rises = run.rises && x >= before;
      before = x;
    }
  }
  return run;
}

}  // namespace

/// What there is to be of a level.
struct RunBoxes::Change {
  std::size_t first;
  std::size_t last;
  bool lostPoints;
};

void RunBoxes::follow(const PointSequence& points) {
  if (points.first() >= end_) {
    levels_.clear();
  }
  end_ = 0;  // until all is done
  if (points.size() > 0) {
    const std::size_t last = std::max<std::size_t>(points.end() - 1, 1);
    Change change{0, (last - 1) / kFan, points.first() > first_};
    change.first = std::min(points.first() / kFan, change.last);
    std::size_t level = 0;
    renew(points, level, change);
    while (change.first < change.last) {
      change.first /= kFan;
      change.last /= kFan;
      renew(points, ++level, change);
    }
    levels_.resize(level + 1);
  }
  first_ = points.first();
  end_ = points.end();
}

/// The runs that were not there, the last of those that were, since it may have become longer, and
/// the first where it has become shorter.
void RunBoxes::renew(const PointSequence& points, std::size_t level, const Change& change) {
  if (level == levels_.size()) {
    levels_.emplace_back(change.first);
  }
  SlidingVector<RunBox>& runs = levels_[level];
  const std::size_t known = runs.end();
  runs.dropBefore(change.first);
  if (change.lostPoints && change.first < known) {
    runs[change.first] = made(points, level, change.first);
  }
  if (change.first < known) {
    runs[known - 1] = made(points, level, known - 1);
  }
  runs.reserve(change.last + 1 - known);
  for (std::size_t i = known; i <= change.last; ++i) {
    runs.push_back(made(points, level, i));
  }
}

RunBox RunBoxes::made(const PointSequence& points, std::size_t level, std::size_t index) const {
  const std::size_t first = index * kFan;
  if (level == 0) {
    return around(points, std::max(first, points.first()),
                  std::min(first + kFan, points.end() - 1));
  }
  const SlidingVector<RunBox>& below = levels_[level - 1];
  const std::size_t end = std::min(first + kFan, below.end());
  RunBox run = nothing();
  for (std::size_t i = std::max(first, below.first()); i < end; ++i) {
    run.box.unite(below[i].box);
    run.whole = run.whole && below[i].whole;
    run.rises = run.rises && below[i].rises;
  }
  return run;
}

/// Of each level those runs that are not in one of the next: neighbours share a point.
std::pair<double, double> RunBoxes::heights(const PointSequence& points, std::size_t first,
                                            std::size_t last) const {
  double low = kInfinity;
  double high = -kInfinity;
  const auto takePoints = [&](std::size_t from, std::size_t to) {
    for (std::size_t i = from; i <= to; ++i) {
      low = std::min(low, points.y(i));
      high = std::max(high, points.y(i));
    }
  };
  const auto takeRuns = [&](const SlidingVector<RunBox>& runs, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
      low = std::min(low, runs[i].box.yMin);
      high = std::max(high, runs[i].box.yMax);
    }
  };
  std::size_t from = (first + kFan - 1) / kFan;
  std::size_t to = last / kFan;
  if (from >= to) {
    takePoints(first, last);
    return {low, high};
  }
  takePoints(first, from * kFan);
  takePoints(to * kFan, last);
  for (std::size_t level = 0; from < to; ++level) {
    const std::size_t innerFrom = (from + kFan - 1) / kFan;
    const std::size_t innerTo = to / kFan;
    if (innerFrom >= innerTo) {
      takeRuns(levels_[level], from, to);
      break;
    }
    takeRuns(levels_[level], from, innerFrom * kFan);
    takeRuns(levels_[level], innerTo * kFan, to);
    from = innerFrom;
    to = innerTo;
  }
  return {low, high};
}

RunBox RunBoxes::all() const {
  return levels_.empty() ? nothing() : levels_.back()[levels_.back().first()];
}

}  // namespace zyn
