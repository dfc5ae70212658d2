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

/// Answers which colour of a palette is nearest to a given one. Colour space is divided into large
/// cells and these into small ones; a cell lists the few palette colours that can be nearest to a
/// colour inside it, once asked.
class NearestColour {
 public:
  /// `palette` has 1 to 256 colours.
  explicit NearestColour(const Palette& palette);

  /// Index of the nearest colour by squared distance; of equally near ones, the first.
  std::uint8_t indexOf(Colour24 colour) {
    const Cell& cell = small_.cells[cellOf(colour, Grid::kSmallBits)];
    return nearestOf(cell.count > 0 ? cell : fill(colour), colour);
  }

 private:
  struct Candidate {
    Colour24 colour;
    std::uint8_t index;
  };
  /// Candidates that follow one another; none before the cell is asked.
  struct Cell {
    std::uint32_t begin = 0;
    std::uint32_t count = 0;
  };
  struct Grid {
    static constexpr int kLargeBits = 3;  ///< of each component
    static constexpr int kSmallBits = 6;

    explicit Grid(int bits) : cells(std::size_t{1} << (3 * bits)) {}

    std::vector<Cell> cells;
  };

  static std::size_t cellOf(Colour24 colour, int bits) {
    const int shift = 8 - bits;
    return static_cast<std::size_t>((colour.red >> shift << bits | colour.green >> shift) << bits |
                                    colour.blue >> shift);
  }
  std::uint8_t nearestOf(const Cell& cell, Colour24 colour) const;
  const Cell& fill(Colour24 colour);
  Cell choose(const Cell& from, Colour24 colour, int bits);

  std::vector<Candidate> candidates_;
  Cell all_;
  Grid large_{Grid::kLargeBits};
  Grid small_{Grid::kSmallBits};
};

}  // namespace zyn
