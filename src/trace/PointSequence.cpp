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
  for (std::size_t i = first; i <= last; ++i) {
    if (points.isGap(i)) {
      run.whole = false;
    } else {
      const double x = points.x(i);
      const double y = points.y(i);
      const double z = points.z(i);
      run.box.unite({x, x, y, y, z, z});
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
  }
  return run;
}

RunBox RunBoxes::all() const {
  return levels_.empty() ? nothing() : levels_.back()[levels_.back().first()];
}

}  // namespace zyn
