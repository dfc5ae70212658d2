#include "offscreen/NearestColour.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <limits>

namespace zyn {
namespace {

constexpr int kCellBits = 5;
constexpr int kCellShift = 8 - kCellBits;
constexpr int kCellSide = 1 << kCellShift;
constexpr std::size_t kCells = 1U << (3 * kCellBits);

int square(int value) { return value * value; }

int distance(Colour24 a, Colour24 b) {
  return square(a.red - b.red) + square(a.green - b.green) + square(a.blue - b.blue);
}

/// Squared distances along one component from a value to the nearest and farthest of a cell.
struct Range {
  int nearest;
  int farthest;
};

Range rangeTo(int value, int lowest) {
  const int highest = lowest + kCellSide - 1;
  const int outside = std::max({0, lowest - value, value - highest});
  return {square(outside), square(std::max(std::abs(value - lowest), std::abs(value - highest)))};
}

Range rangeTo(Colour24 colour, Colour24 lowest) {
  const Range red = rangeTo(colour.red, lowest.red);
  const Range green = rangeTo(colour.green, lowest.green);
  const Range blue = rangeTo(colour.blue, lowest.blue);
  return {red.nearest + green.nearest + blue.nearest,
          red.farthest + green.farthest + blue.farthest};
}

std::size_t cellOf(Colour24 colour) {
  return static_cast<std::size_t>(colour.red >> kCellShift << (2 * kCellBits) |
                                  colour.green >> kCellShift << kCellBits |
                                  colour.blue >> kCellShift);
}

/// The corner nearest to black of the cell a colour lies in.
Colour24 lowestOf(Colour24 colour) {
  const auto lowest = [](std::uint8_t component) {
    return static_cast<std::uint8_t>(component >> kCellShift << kCellShift);
  };
  return {lowest(colour.red), lowest(colour.green), lowest(colour.blue)};
}

}  // namespace

NearestColour::NearestColour(const std::vector<Colour24>& palette)
    : palette_(palette), cells_(kCells) {}

void NearestColour::fill(Cell& cell, Colour24 lowest) const {
  std::array<int, 256> nearest;
  int bound = std::numeric_limits<int>::max();
  for (std::size_t i = 0; i < palette_.size(); ++i) {
    const Range range = rangeTo(palette_[i], lowest);
    nearest[i] = range.nearest;
    bound = std::min(bound, range.farthest);
  }
  for (std::size_t i = 0; i < palette_.size(); ++i) {
    if (nearest[i] <= bound) cell.push_back(static_cast<std::uint8_t>(i));
  }
}

std::uint8_t NearestColour::indexOf(Colour24 colour) {
  Cell& cell = cells_[cellOf(colour)];
  if (cell.empty()) fill(cell, lowestOf(colour));
  std::uint8_t nearest = cell.front();
  int least = std::numeric_limits<int>::max();
  for (const std::uint8_t candidate : cell) {
    const int found = distance(palette_[candidate], colour);
    if (found < least) {
      least = found;
      nearest = candidate;
    }
  }
  return nearest;
}

}  // namespace zyn
