#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "toolpath/ToolPath.h"

namespace zyn {

/// Boxes around segments that follow one another, in levels: a box of the lowest holds kLeaf
/// segments, one of a further level kFan boxes of the level below, in single precision, rounded
/// outwards. Rapids, plunges and retracts have boxes of their own: they lead up and down,
/// while the boxes of a layer's cuts are flat.
class SegmentTree {
 public:
  /// Takes in the segments that have come since the last time.
  void extend(const ToolPath& path);

  /// Calls `visit(segment)` for the segments in boxes for which `mayMeet(box)` holds.
  template <class MayMeet, class Visit>
  void forEachSegment(MayMeet mayMeet, Visit visit) const {
    forEachSegment(
        mayMeet, [](const Box3&) { return 0; }, visit);
  }

  /// The same, of boxes beside one another those with the least `rank(box)` first.
  template <class MayMeet, class Rank, class Visit>
  void forEachSegment(MayMeet mayMeet, Rank rank, Visit visit) const {
    for (const Part& part : parts_) {
      if (!part.levels.empty()) {
        part.descend(part.levels.size() - 1, 0, mayMeet, rank, visit);
      }
    }
  }

 private:
  static constexpr std::size_t kLeaf = 8;
  static constexpr std::size_t kFan = 4;

  struct Box {
    float low[3];
    float high[3];

    Box3 box() const { return {low[0], high[0], low[1], high[1], low[2], high[2]}; }
  };

  struct Part {
    std::vector<std::uint32_t> segments;   ///< in order
    std::vector<std::vector<Box>> levels;  ///< the last has one box

    void extend(const ToolPath& path, std::size_t from);
    Box boxOfSegments(const ToolPath& path, std::size_t first, std::size_t end) const;

    template <class MayMeet, class Rank, class Visit>
    void descend(std::size_t level, std::size_t index, MayMeet& mayMeet, Rank& rank,
                 Visit& visit) const {
      if (!mayMeet(levels[level][index].box())) {
        return;
      }
      if (level == 0) {
        const std::size_t end = std::min(segments.size(), (index + 1) * kLeaf);
        for (std::size_t i = index * kLeaf; i < end; ++i) {
          visit(segments[i]);
        }
        return;
      }
      const std::vector<Box>& below = levels[level - 1];
      std::array<std::size_t, kFan> children{};
      std::array<decltype(rank(Box3{})), kFan> ranks{};
      std::size_t count = 0;
      for (std::size_t child = index * kFan; child < std::min(below.size(), (index + 1) * kFan);
           ++child, ++count) {
        const auto own = rank(below[child].box());
        std::size_t at = count;
        for (; at > 0 && own < ranks[at - 1]; --at) {
          ranks[at] = ranks[at - 1];
          children[at] = children[at - 1];
        }
        ranks[at] = own;
        children[at] = child;
      }
      for (std::size_t i = 0; i < count; ++i) {
        descend(level - 1, children[i], mayMeet, rank, visit);
      }
    }
  };

  static Box boxOfBoxes(const std::vector<Box>& boxes, std::size_t first, std::size_t end);

  std::size_t count_ = 0;  ///< of segments
  std::array<Part, 2> parts_;
};

}  // namespace zyn
