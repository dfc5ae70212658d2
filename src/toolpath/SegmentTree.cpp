#include "toolpath/SegmentTree.h"

#include <cmath>
#include <limits>
#include <utility>

namespace zyn {

namespace {

constexpr float kFar = std::numeric_limits<float>::infinity();

float roundedDown(double number) { return std::nextafter(static_cast<float>(number), -kFar); }
float roundedUp(double number) { return std::nextafter(static_cast<float>(number), kFar); }

bool isBetweenCuts(std::int32_t type) {
  return type == segment_type::kRapid || type == segment_type::kPlunge ||
         type == segment_type::kRetract;
}

}  // namespace

SegmentTree::Box SegmentTree::Part::boxOfSegments(const ToolPath& path, std::size_t first,
                                                  std::size_t end) const {
  Box around{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
  for (std::size_t i = first; i < end; ++i) {
    const PathPoint from = path.pointAt(segments[i]);
    const PathPoint to = path.pointAt(segments[i] + 1);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      around.low[axis] = std::min(around.low[axis], roundedDown(std::min(from[axis], to[axis])));
      around.high[axis] = std::max(around.high[axis], roundedUp(std::max(from[axis], to[axis])));
    }
  }
  return around;
}

SegmentTree::Box SegmentTree::boxOfBoxes(const std::vector<Box>& boxes, std::size_t first,
                                         std::size_t end) {
  Box around = boxes[first];
  for (std::size_t i = first + 1; i < end; ++i) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      around.low[axis] = std::min(around.low[axis], boxes[i].low[axis]);
      around.high[axis] = std::max(around.high[axis], boxes[i].high[axis]);
    }
  }
  return around;
}

/// Those from `from` on are new.
void SegmentTree::Part::extend(const ToolPath& path, std::size_t from) {
  std::size_t changed = from / kLeaf;
  std::size_t below = segments.size();
  std::size_t fan = kLeaf;
  for (std::size_t level = 0; below > 0 && (level == 0 || below > 1); ++level, fan = kFan) {
    if (level == levels.size()) {
      levels.emplace_back();
      changed = 0;
    }
    const std::size_t boxes = (below + fan - 1) / fan;
    levels[level].resize(boxes);
    for (std::size_t i = changed; i < boxes; ++i) {
      const std::size_t end = std::min(below, (i + 1) * fan);
      levels[level][i] = level == 0 ? boxOfSegments(path, i * fan, end)
                                    : boxOfBoxes(levels[level - 1], i * fan, end);
    }
    below = boxes;
    changed /= kFan;
  }
}

void SegmentTree::extend(const ToolPath& path) {
  const std::size_t count = path.segmentCount();
  if (count == count_) {
    return;
  }
  SegmentTree grown = std::move(*this);
  *this = {};  // where memory runs out it is made anew the next time
  const std::array<std::size_t, 2> known{grown.parts_[0].segments.size(),
                                         grown.parts_[1].segments.size()};
  for (std::size_t segment = grown.count_; segment < count; ++segment) {
    Part& part = grown.parts_[isBetweenCuts(path.typeOf(segment)) ? 1 : 0];
    part.segments.push_back(static_cast<std::uint32_t>(segment));
  }
  for (std::size_t i = 0; i < known.size(); ++i) {
    grown.parts_[i].extend(path, known[i]);
  }
  grown.count_ = count;
  *this = std::move(grown);
}

}  // namespace zyn
