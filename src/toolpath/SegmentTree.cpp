#include "toolpath/SegmentTree.h"

#include <cmath>
#include <limits>

namespace zyn {

namespace {

constexpr float kFar = std::numeric_limits<float>::infinity();

float roundedDown(double number) { return std::nextafter(static_cast<float>(number), -kFar); }
float roundedUp(double number) { return std::nextafter(static_cast<float>(number), kFar); }

}  // namespace

SegmentTree::Box SegmentTree::boxOfSegments(const ToolPath& path, std::size_t first,
                                            std::size_t end) {
  PathPoint low = path.pointAt(first);
  PathPoint high = low;
  for (std::size_t point = first + 1; point <= end; ++point) {
    const PathPoint place = path.pointAt(point);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      low[axis] = std::min(low[axis], place[axis]);
      high[axis] = std::max(high[axis], place[axis]);
    }
  }
  return {{roundedDown(low[0]), roundedDown(low[1]), roundedDown(low[2])},
          {roundedUp(high[0]), roundedUp(high[1]), roundedUp(high[2])}};
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

void SegmentTree::extend(const ToolPath& path) {
  const std::size_t count = path.segmentCount();
  if (count == count_) {
    return;
  }
  std::size_t from = count_ / kLeaf;
  count_ = 0;  // nothing is there where memory runs out
  std::size_t below = count;
  std::size_t fan = kLeaf;
  for (std::size_t level = 0; level == 0 || below > 1; ++level, fan = kFan) {
    if (level == levels_.size()) {
      levels_.emplace_back();
      from = 0;
    }
    const std::size_t boxes = (below + fan - 1) / fan;
    levels_[level].resize(boxes);
    for (std::size_t i = from; i < boxes; ++i) {
      const std::size_t end = std::min(below, (i + 1) * fan);
      levels_[level][i] = level == 0 ? boxOfSegments(path, i * fan, end)
                                     : boxOfBoxes(levels_[level - 1], i * fan, end);
    }
    below = boxes;
    from /= kFan;
  }
  count_ = count;
}

}  // namespace zyn
