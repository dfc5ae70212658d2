#include "offscreen/ColourHistogram.h"

#include <utility>

namespace zyn {
namespace {

constexpr std::size_t kSlots = 4 * ColourHistogram::kMostGroups;

std::size_t slotOf(std::uint32_t key) { return (key * 0x9E3779B1U >> 15) % kSlots; }

}  // namespace

ColourHistogram::ColourHistogram(const PixelView& picture) : slots_(kSlots, -1) {
  for (int y = 0; y < picture.height; ++y) {
    const std::uint8_t* const row = picture.row(y);
    for (int x = 0; x < picture.width;) {
      const Colour24 colour = colourAt(row, x);
      const int start = x;
      do {
        ++x;
      } while (x < picture.width && colourAt(row, x) == colour);
      add(colour, static_cast<std::uint64_t>(x - start));
    }
  }
}

void ColourHistogram::add(Colour24 colour, std::uint64_t count) {
  const std::uint32_t key =
      std::uint32_t{colour.red} << 16 | std::uint32_t{colour.green} << 8 | colour.blue;
  addGroup(key, {count, count * colour.red, count * colour.green, count * colour.blue});
}

void ColourHistogram::addGroup(std::uint32_t key, const Group& added) {
  key &= mask_;
  std::size_t slot = slotOf(key);
  while (slots_[slot] >= 0 && keys_[static_cast<std::size_t>(slots_[slot])] != key) {
    slot = (slot + 1) % kSlots;
  }
  if (slots_[slot] >= 0) {
    Group& group = groups_[static_cast<std::size_t>(slots_[slot])];
    group.count += added.count;
    group.red += added.red;
    group.green += added.green;
    group.blue += added.blue;
    return;
  }
  if (groups_.size() == kMostGroups) {
    dropLowestBit();
    return addGroup(key, added);
  }
  slots_[slot] = static_cast<std::int32_t>(groups_.size());
  groups_.push_back(added);
  keys_.push_back(key);
}

void ColourHistogram::dropLowestBit() {
  mask_ &= mask_ << 1 & 0xFEFEFE;  // one bit of each component
  const std::vector<Group> groups = std::exchange(groups_, {});
  const std::vector<std::uint32_t> keys = std::exchange(keys_, {});
  slots_.assign(kSlots, -1);
  for (std::size_t i = 0; i < groups.size(); ++i) addGroup(keys[i], groups[i]);
}

}  // namespace zyn
