#include "offscreen/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <queue>
#include <utility>

#include "offscreen/NearestColour.h"

namespace zyn {
namespace {

constexpr int kRefinements = 4;

/// Weighted sums of colours.
struct Moments {
  double count = 0;
  std::array<double, 3> sum{};
  double squares = 0;

  void add(const Moments& other) {
    count += other.count;
    for (std::size_t c = 0; c < 3; ++c) sum[c] += other.sum[c];
    squares += other.squares;
  }

  Moments without(const Moments& other) const {
    Moments rest = *this;
    rest.count -= other.count;
    for (std::size_t c = 0; c < 3; ++c) rest.sum[c] -= other.sum[c];
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

Moments momentsOf(const ColourHistogram::Group& group) {
  const auto count = static_cast<double>(group.count);
  Moments moments{count,
                  {static_cast<double>(group.red), static_cast<double>(group.green),
                   static_cast<double>(group.blue)},
                  0};
  moments.squares = moments.explained();
  return moments;
}

/// A run of colours of the list that is being cut.
struct Box {
  std::size_t begin;
  std::size_t end;
  Moments total;

  bool operator<(const Box& other) const { return total.error() < other.total.error(); }
};

Box boxOf(const std::vector<Moments>& colours, std::size_t begin, std::size_t end) {
  Box box{begin, end, {}};
  for (std::size_t i = begin; i < end; ++i) box.total.add(colours[i]);
  return box;
}

/// The component in which the box's colours differ most.
std::size_t widestComponent(const std::vector<Moments>& colours, const Box& box) {
  std::array<double, 3> variance{};
  for (std::size_t i = box.begin; i < box.end; ++i) {
    for (std::size_t c = 0; c < 3; ++c) {
      const double distance = colours[i].mean(c) - box.total.mean(c);
      variance[c] += colours[i].count * distance * distance;
    }
  }
  return static_cast<std::size_t>(std::max_element(variance.begin(), variance.end()) -
                                  variance.begin());
}

/// Cuts the box in two along its widest component, where least error is left.
std::pair<Box, Box> cut(std::vector<Moments>& colours, const Box& box) {
  const std::size_t component = widestComponent(colours, box);
  const auto at = [&](std::size_t i) { return colours.begin() + static_cast<std::ptrdiff_t>(i); };
  std::sort(at(box.begin), at(box.end), [component](const Moments& a, const Moments& b) {
    return a.mean(component) < b.mean(component);
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

Palette cutPalette(std::vector<Moments>& colours, std::size_t size) {
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
  for (; !boxes.empty(); boxes.pop()) finished.push_back(boxes.top().total);
  Palette palette;
  for (const Moments& moments : finished) palette.push_back(moments.colour());
  return palette;
}

/// Moves each colour of the palette to the mean of the colours nearest to it.
Palette refined(const Palette& palette, const std::vector<Moments>& colours) {
  NearestColour nearest(palette);
  std::vector<Moments> totals(palette.size());
  for (const Moments& colour : colours) totals[nearest.indexOf(colour.colour())].add(colour);
  Palette moved = palette;
  for (std::size_t i = 0; i < palette.size(); ++i) {
    if (totals[i].count > 0) moved[i] = totals[i].colour();
  }
  return moved;
}

}  // namespace

Palette paletteOf(const ColourHistogram& histogram, std::size_t size) {
  std::vector<Moments> colours;
  for (const ColourHistogram::Group& group : histogram.groups()) {
    colours.push_back(momentsOf(group));
  }
  if (colours.empty()) return {};
  Palette palette = cutPalette(colours, size);
  if (colours.size() <= size) return palette;
  for (int i = 0; i < kRefinements; ++i) palette = refined(palette, colours);
  return palette;
}

}  // namespace zyn
