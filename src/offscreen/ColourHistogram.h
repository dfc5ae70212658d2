#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/Dib.h"

namespace zyn {

/// Counts the colours of a picture. Up to `kMostGroups` different colours are counted one by one;
/// where there are more, the lowest bits are dropped, one a time, so that near colours fall into
/// one group. Time and memory do not grow with the number of colours.
class ColourHistogram {
 public:
  static constexpr std::size_t kMostGroups = 32768;

  /// Colours that share their leading bits: how many pixels, and the sum of each component.
  struct Group {
    std::uint64_t count = 0;
    std::uint64_t red = 0;
    std::uint64_t green = 0;
    std::uint64_t blue = 0;
  };

  explicit ColourHistogram(const PixelView& picture);

  const std::vector<Group>& groups() const { return groups_; }

  /// Whether every group is a single colour.
  bool isExact() const { return mask_ == 0xFFFFFF; }

 private:
  void add(Colour24 colour, std::uint64_t count);
  void addGroup(std::uint32_t key, const Group& added);
  void dropLowestBit();

  std::uint32_t mask_ = 0xFFFFFF;
  std::vector<Group> groups_;
  std::vector<std::uint32_t> keys_;  // of groups_
  std::vector<std::int32_t> slots_;  // hash table: index into groups_, -1 = free
};

}  // namespace zyn
