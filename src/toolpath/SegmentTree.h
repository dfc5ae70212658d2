#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "toolpath/ToolPath.h"

namespace zyn {

/// Boxes around segments that follow one another, in levels: a box of the lowest holds kLeaf
/// segments, one of a further level kFan boxes of the level below, in single precision, rounded
/// outwards.
class SegmentTree {
 public:
  /// Takes in the segments that have come since the last time.
  void extend(const ToolPath& path);

  /// Calls `visit(segment)` for the segments in boxes for which `mayMeet(box)` holds, in order.
  template <class MayMeet, class Visit>
  void forEachSegment(MayMeet mayMeet, Visit visit) const {
    if (!levels_.empty()) {
      descend(levels_.size() - 1, 0, mayMeet, visit);
    }
  }

 private:
  static constexpr std::size_t kLeaf = 16;
  static constexpr std::size_t kFan = 8;

  struct Box {
    float low[3];
    float high[3];

    Box3 box() const { return {low[0], high[0], low[1], high[1], low[2], high[2]}; }
  };

  static Box boxOfSegments(const ToolPath& path, std::size_t first, std::size_t end);
  static Box boxOfBoxes(const std::vector<Box>& boxes, std::size_t first, std::size_t end);

  template <class MayMeet, class Visit>
  void descend(std::size_t level, std::size_t index, MayMeet& mayMeet, Visit& visit) const {
    if (!mayMeet(levels_[level][index].box())) {
      return;
    }
    const std::size_t fan = level == 0 ? kLeaf : kFan;
    const std::size_t below = level == 0 ? count_ : levels_[level - 1].size();
    const std::size_t end = std::min(below, (index + 1) * fan);
    for (std::size_t child = index * fan; child < end; ++child) {
      if (level == 0) {
        visit(child);
      } else {
        descend(level - 1, child, mayMeet, visit);
      }
    }
  }

  std::size_t count_ = 0;                 ///< of segments
  std::vector<std::vector<Box>> levels_;  ///< the last has one box
};

}  // namespace zyn
