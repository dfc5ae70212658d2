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

std::vector<RunBox> lowestLevel(const PointSequence& points) {
  std::vector<RunBox> runs;
  const std::size_t end = points.size() - 1;
  runs.reserve(end / RunBoxes::kFan + 1);
  std::size_t first = 0;
  do {
    const std::size_t last = std::min(first + RunBoxes::kFan, end);
    runs.push_back(around(points, first, last));
    first = last;
  } while (first < end);
  return runs;
}

std::vector<RunBox> levelAbove(const std::vector<RunBox>& below) {
  std::vector<RunBox> runs((below.size() + RunBoxes::kFan - 1) / RunBoxes::kFan, nothing());
  for (std::size_t i = 0; i < below.size(); ++i) {
    RunBox& run = runs[i / RunBoxes::kFan];
    run.box.unite(below[i].box);
    run.whole = run.whole && below[i].whole;
  }
  return runs;
}

}  // namespace

RunBoxes::RunBoxes(const PointSequence& points) {
  if (points.size() == 0) {
    return;
  }
  levels_.push_back(lowestLevel(points));
  while (levels_.back().size() > 1) {
    levels_.push_back(levelAbove(levels_.back()));
  }
}

RunBox RunBoxes::all() const { return levels_.empty() ? nothing() : levels_.back().front(); }

std::size_t RunBoxes::length(std::size_t level) {
  std::size_t length = kFan;
  for (; level > 0; --level) {
    length *= kFan;
  }
  return length;
}

}  // namespace zyn
