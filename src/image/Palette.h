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

using Palette = std::vector<Colour24>;

/// At most `size` colours that stand for those of the histogram with a small squared error: boxes
/// of colours are cut where that lowers the variance most (Wan, Wong, Prusinkiewicz 1988), then
/// each colour of the palette moves to the mean of the pixels nearest to it, a few times.
/// A histogram of at most `size` groups gives their means.
Palette paletteOf(const ColourHistogram& histogram, std::size_t size);

/// Cells of colour space: colours that share the leading bits of each component.
template <int bits>
struct ColourCells {
  static constexpr std::size_t kCount = std::size_t{1} << (3 * bits);
  static constexpr int kSide = 1 << (8 - bits);

  static std::size_t cellOf(Colour24 colour) {
    constexpr int kShift = 8 - bits;
    return static_cast<std::size_t>(
        (colour.red >> kShift << bits | colour.green >> kShift) << bits | colour.blue >> kShift);
  }
};

/// Answers which colour of a palette is nearest to a given one. Each cell of colour space lists the
/// few palette colours that can be nearest to a colour inside it, once asked.
class NearestColour {
 public:
  /// `palette` has 1 to 256 colours.
  explicit NearestColour(const Palette& palette);

  /// Index of the nearest colour by squared distance; of equally near ones, the first.
  std::uint8_t indexOf(Colour24 colour);

 private:
  using Cells = ColourCells<4>;
  struct Candidate {
    Colour24 colour;
    std::uint8_t index;
  };
  using Candidates = std::vector<Candidate>;

  Candidates candidatesFor(Colour24 colour) const;

  Candidates all_;
  std::vector<Candidates> cells_;  ///< empty until they are asked
};

/// The same more quickly, for colours whose error is spread: one answer for each small cell, that
/// for its middle. Colours of the palette that lie apart are told exactly.
class NearColour {
 public:
  explicit NearColour(const Palette& palette);

  std::uint8_t indexOf(Colour24 colour) {
    std::uint16_t& known = known_[Cells::cellOf(colour)];
    if (known == kUnknown) {
      known = nearestToMiddle(colour);
    }
    return static_cast<std::uint8_t>(known);
  }

 private:
  using Cells = ColourCells<6>;
  static constexpr std::uint16_t kUnknown = 0x100;

  std::uint8_t nearestToMiddle(Colour24 colour);

  NearestColour nearest_;
  std::vector<std::uint16_t> known_;
};

}  // namespace zyn
