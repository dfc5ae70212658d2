#include "image/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <queue>
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
      const int end = runEnd(row, x, picture.width);
      add(colourAt(row, x), static_cast<std::uint64_t>(end - x));
      x = end;
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
  for (std::size_t i = 0; i < groups.size(); ++i) {
    addGroup(keys[i], groups[i]);
  }
}

namespace {

int square(int value) { return value * value; }

int distance(Colour24 a, Colour24 b) {
  return square(a.red - b.red) + square(a.green - b.green) + square(a.blue - b.blue);
}

/// Squared distances along one component from a value to the nearest and farthest of a cell.
struct Range {
  int nearest;
  int farthest;
};

Range rangeTo(int value, int lowest, int side) {
  const int highest = lowest + side - 1;
  const int outside = std::max({0, lowest - value, value - highest});
  return {square(outside), square(std::max(std::abs(value - lowest), std::abs(value - highest)))};
}

/// To the cell of `side` that has `inside` in it.
Range rangeTo(Colour24 colour, Colour24 inside, int side) {
  const Range red = rangeTo(colour.red, inside.red & -side, side);
  const Range green = rangeTo(colour.green, inside.green & -side, side);
  const Range blue = rangeTo(colour.blue, inside.blue & -side, side);
  return {red.nearest + green.nearest + blue.nearest,
          red.farthest + green.farthest + blue.farthest};
}

}  // namespace

NearestColour::NearestColour(const Palette& palette) : cells_(Cells::kCount) {
  for (auto colour = palette.begin(); colour != palette.end(); ++colour) {
    if (std::find(palette.begin(), colour, *colour) == colour) {
      all_.push_back({*colour, static_cast<std::uint8_t>(colour - palette.begin())});
    }
  }
}

std::uint8_t NearestColour::indexOf(Colour24 colour) {
  Candidates& candidates = cells_[Cells::cellOf(colour)];
  if (candidates.empty()) {
    candidates = candidatesFor(colour);
  }
  const Candidate* nearest = candidates.data();
  int least = std::numeric_limits<int>::max();
  for (const Candidate& each : candidates) {
    const int found = distance(each.colour, colour);
    if (found < least) {
      least = found;
      nearest = &each;
    }
  }
  return nearest->index;
}

/// Those that can be nearest to a colour in the cell of `colour`.
NearestColour::Candidates NearestColour::candidatesFor(Colour24 colour) const {
  std::vector<int> nearest;
  int bound = std::numeric_limits<int>::max();
  for (const Candidate& each : all_) {
    const Range range = rangeTo(each.colour, colour, Cells::kSide);
    nearest.push_back(range.nearest);
    bound = std::min(bound, range.farthest);
  }
  Candidates chosen;
  for (std::size_t i = 0; i < all_.size(); ++i) {
    if (nearest[i] <= bound) {
      chosen.push_back(all_[i]);
    }
  }
  return chosen;
}

NearColour::NearColour(const Palette& palette)
    : nearest_(palette), known_(Cells::kCount, kUnknown) {
  for (std::size_t i = palette.size(); i-- > 0;) {
    known_[Cells::cellOf(palette[i])] = static_cast<std::uint8_t>(i);
  }
}

std::uint8_t NearColour::nearestToMiddle(Colour24 colour) {
  const auto middle = [](std::uint8_t component) {
    return static_cast<std::uint8_t>((component & -Cells::kSide) + Cells::kSide / 2);
  };
  return nearest_.indexOf({middle(colour.red), middle(colour.green), middle(colour.blue)});
}

namespace {

constexpr int kRefinements = 4;

/// Weighted sums of colours.
struct Moments {
  double count = 0;
  std::array<double, 3> sum{};
  double squares = 0;

  void add(const Moments& other) {
    count += other.count;
    for (std::size_t c = 0; c < 3; ++c) {
      sum[c] += other.sum[c];
    }
    squares += other.squares;
  }

  Moments without(const Moments& other) const {
    Moments rest = *this;
    rest.count -= other.count;
    for (std::size_t c = 0; c < 3; ++c) {
      rest.sum[c] -= other.sum[c];
    }
    rest.squares -= other.squares;
    return rest;
  }

  /// The part of the squares that the mean explains.
  double explained() const { return (sum[0] * sum[0] + sum[1] * sum[1] + sum[2] * sum[2]) / count; }
  double error() const { return squares - explained(); }
  double mean(std::size_t component) const { return sum[component] / count; }

  Colour24 colour() const {
    const auto rounded = [this](std::size_t c) {
      return static_cast<std::uint8_t>(std::lround(mean(c)));
    };
    return {rounded(0), rounded(1), rounded(2)};
  }
};

/// A group of the histogram.
struct Group : Moments {
  explicit Group(const ColourHistogram::Group& group)
      : Moments{static_cast<double>(group.count),
                {static_cast<double>(group.red), static_cast<double>(group.green),
                 static_cast<double>(group.blue)},
                0},
        place{mean(0), mean(1), mean(2)} {
    squares = explained();
  }

  std::array<double, 3> place;  ///< the mean
};

/// A run of colours of the list that is being cut.
struct Box {
  std::size_t begin;
  std::size_t end;
  Moments total;

  bool operator<(const Box& other) const { return total.error() < other.total.error(); }
};

Box boxOf(const std::vector<Group>& colours, std::size_t begin, std::size_t end) {
  Box box{begin, end, {}};
  for (std::size_t i = begin; i < end; ++i) {
    box.total.add(colours[i]);
  }
  return box;
}

/// The component in which the box's colours differ most.
std::size_t widestComponent(const std::vector<Group>& colours, const Box& box) {
  const std::array<double, 3> centre{box.total.mean(0), box.total.mean(1), box.total.mean(2)};
  std::array<double, 3> variance{};
  for (std::size_t i = box.begin; i < box.end; ++i) {
    for (std::size_t c = 0; c < 3; ++c) {
      const double distance = colours[i].place[c] - centre[c];
      variance[c] += colours[i].count * distance * distance;
    }
  }
  return static_cast<std::size_t>(std::max_element(variance.begin(), variance.end()) -
                                  variance.begin());
}

/// Cuts the box in two along its widest component, where least error is left.
std::pair<Box, Box> cut(std::vector<Group>& colours, const Box& box) {
  const std::size_t component = widestComponent(colours, box);
  const auto at = [&](std::size_t i) { return colours.begin() + static_cast<std::ptrdiff_t>(i); };
  std::sort(at(box.begin), at(box.end), [component](const Group& a, const Group& b) {
    return a.place[component] < b.place[component];
  });
  Moments below;
  double best = -1;
  std::size_t place = box.begin + 1;
  for (std::size_t i = box.begin; i + 1 < box.end; ++i) {
    below.add(colours[i]);
    const double explained = below.explained() + box.total.without(below).explained();
    if (explained > best) {
      best = explained;
      place = i + 1;
    }
  }
  return {boxOf(colours, box.begin, place), boxOf(colours, place, box.end)};
}

Palette cutPalette(std::vector<Group>& colours, std::size_t size) {
  std::priority_queue<Box> boxes;
  std::vector<Moments> finished;
  boxes.push(boxOf(colours, 0, colours.size()));
  while (!boxes.empty() && boxes.size() + finished.size() < size) {
    const Box widest = boxes.top();
    boxes.pop();
    if (widest.end - widest.begin == 1) {
      finished.push_back(widest.total);
      continue;
    }
    const auto [below, above] = cut(colours, widest);
    boxes.push(below);
    boxes.push(above);
  }
  for (; !boxes.empty(); boxes.pop()) {
    finished.push_back(boxes.top().total);
  }
  Palette palette;
  for (const Moments& moments : finished) {
    palette.push_back(moments.colour());
  }
  return palette;
}

/// Moves each colour of the palette to the mean of the colours nearest to it.
Palette refined(const Palette& palette, const std::vector<Group>& colours) {
  NearestColour nearest(palette);
  std::vector<Moments> totals(palette.size());
  for (const Group& colour : colours) {
    totals[nearest.indexOf(colour.colour())].add(colour);
  }
  Palette moved = palette;
  for (std::size_t i = 0; i < palette.size(); ++i) {
    if (totals[i].count > 0) {
      moved[i] = totals[i].colour();
    }
  }
  return moved;
}

}  // namespace

Palette paletteOf(const ColourHistogram& histogram, std::size_t size) {
  std::vector<Group> colours(histogram.groups().begin(), histogram.groups().end());
  if (colours.empty()) {
    return {};
  }
  Palette palette = cutPalette(colours, size);
  if (colours.size() <= size) {
    return palette;
  }
  for (int i = 0; i < kRefinements; ++i) {
    palette = refined(palette, colours);
  }
  return palette;
}

}  // namespace zyn
