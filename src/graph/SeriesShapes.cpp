#include "graph/SeriesShapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "graph/PointWalk.h"

namespace zyn {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Calls `each(line)` with the indices of its first point and of the one behind its last.
template <class Each>
void forEachLine(const std::vector<std::size_t>& starts, std::size_t count, const Each& each) {
  for (std::size_t i = 0; i < starts.size(); ++i) {
    each(starts[i], i + 1 < starts.size() ? starts[i + 1] : count);
  }
}

PlanePoint placeOf(const Point& at, const WindowMapping& mapping) {
  return {mapping.x.at(at.x, at.y, 0), mapping.y.at(at.x, at.y, 0)};
}

struct PixelArea {
  Range x;
  Range y;
};

/// What a box covers of the window.
PixelArea areaOfBox(const Box3& box, const WindowMapping& mapping) {
  return {{mapping.x.lowest(box), mapping.x.highest(box)},
          {mapping.y.lowest(box), mapping.y.highest(box)}};
}

/// The pixels of a grid along one axis.
struct Lanes {
  double first;
  std::size_t count;

  explicit Lanes(const Range& seen)
      : first(std::floor(seen.low)),
        count(static_cast<std::size_t>(std::max(std::floor(seen.high) - first + 1, 1.0))) {}

  double end() const { return first + static_cast<double>(count); }
  bool holds(double place) const { return place >= first && place < end(); }
  bool isBeside(const Range& places) const { return places.high < first || places.low >= end(); }
  std::size_t at(double place) const {
    return static_cast<std::size_t>(
        std::clamp(std::floor(place) - first, 0.0, static_cast<double>(count - 1)));
  }
};

/// What points cover of each column of pixels.
class ColumnExtents {
 public:
  ColumnExtents(const Range& columns, const Range& rows)
      : lanes_(columns), rows_(rows), extents_(lanes_.count, Range{kInfinity, -kInfinity}) {}

  /// Whether nothing in the area is to be looked at any more.
  bool settle(const PixelArea& area) {
    if (lanes_.isBeside(area.x)) {
      return true;
    }
    const Range seen = seenOf(area.y);
    const std::size_t last = lanes_.at(area.x.high);
    const std::size_t first = lanes_.at(area.x.low);
    if (first == last && lanes_.holds(area.x.low) && lanes_.holds(area.x.high)) {
      unite(first, seen);
      return true;
    }
    constexpr std::size_t kFew = 16;
    return last - first < kFew &&
           std::all_of(extents_.begin() + static_cast<std::ptrdiff_t>(first),
                       extents_.begin() + static_cast<std::ptrdiff_t>(last) + 1,
                       [&seen](const Range& extent) { return extent.holds(seen); });
  }
  void take(double x, double y) {
    if (lanes_.holds(x)) {
      unite(lanes_.at(x), seenOf({y, y}));
    }
  }

  template <class Each>
  void forEach(const Each& each) const {
    for (std::size_t i = 0; i < extents_.size(); ++i) {
      if (extents_[i].low <= extents_[i].high) {
        each(lanes_.first + static_cast<double>(i) + 0.5, extents_[i]);
      }
    }
  }

 private:
  /// What lies beyond the picture is drawn as what lies at its edge.
  Range seenOf(const Range& y) const {
    return {std::clamp(y.low, rows_.low, rows_.high), std::clamp(y.high, rows_.low, rows_.high)};
  }
  void unite(std::size_t column, const Range& y) {
    Range& extent = extents_[column];
    extent = {std::min(extent.low, y.low), std::max(extent.high, y.high)};
  }

  Lanes lanes_;
  Range rows_;
  std::vector<Range> extents_;
};

/// Which pixels have a marker.
class MarkedPixels {
 public:
  MarkedPixels(const Range& columns, const Range& rows)
      : columns_(columns),
        rows_(rows),
        words_((rows_.count + kBits - 1) / kBits),
        marks_(columns_.count * words_) {}

  bool holds(double x, double y) const { return columns_.holds(x) && rows_.holds(y); }

  bool areBeside(const PixelArea& area) const {
    return columns_.isBeside(area.x) || rows_.isBeside(area.y);
  }

  /// Whether it was not marked yet.
  bool mark(double x, double y) {
    const std::size_t row = rows_.at(y);
    std::uint64_t& word = marks_[columns_.at(x) * words_ + row / kBits];
    const std::uint64_t bit = std::uint64_t{1} << (row % kBits);
    const bool isNew = (word & bit) == 0;
    word |= bit;
    return isNew;
  }

  /// Whether all pixels that an area touches are marked; false where these are many.
  bool areMarked(const PixelArea& area) const {
    constexpr std::size_t kFew = 16;
    const std::size_t last = columns_.at(area.x.high);
    for (std::size_t column = columns_.at(area.x.low); column <= last; ++column) {
      if (last - column >= kFew ||
          !areMarked(&marks_[column * words_], rows_.at(area.y.low), rows_.at(area.y.high))) {
        return false;
      }
    }
    return true;
  }

 private:
  static constexpr std::size_t kBits = 64;

  static bool areMarked(const std::uint64_t* words, std::size_t first, std::size_t last) {
    for (std::size_t word = first / kBits; word <= last / kBits; ++word) {
      std::uint64_t mask = ~std::uint64_t{0};
      if (word == first / kBits) {
        mask &= ~std::uint64_t{0} << (first % kBits);
      }
      if (word == last / kBits) {
        mask &= ~std::uint64_t{0} >> (kBits - 1 - last % kBits);
      }
      if ((words[word] & mask) != mask) {
        return false;
      }
    }
    return true;
  }

  Lanes columns_;
  Lanes rows_;
  std::size_t words_;  ///< for each column
  std::vector<std::uint64_t> marks_;
};

/// As far away as can be calculated with.
PlanePoint finite(const PlanePoint& point) {
  constexpr double kFar = 1e150;
  return {std::clamp(point.x, -kFar, kFar), std::clamp(point.y, -kFar, kFar)};
}

PlanePoint clamped(const PlanePoint& point, const PixelBox& box) {
  return {std::clamp(point.x, box.left, box.right), std::clamp(point.y, box.bottom, box.top)};
}

/// Adds where a segment crosses the sides of a box.
void addCrossings(const PlanePoint& from, const PlanePoint& to, const PixelBox& box,
                  std::vector<PlanePoint>& points) {
  std::array<double, 4> parts{kInfinity, kInfinity, kInfinity, kInfinity};
  std::size_t count = 0;
  const auto cross = [&](double start, double end, double side) {
    if ((start < side && end > side) || (start > side && end < side)) {
      parts[count++] = (side - start) / (end - start);
    }
  };
  cross(from.x, to.x, box.left);
  cross(from.x, to.x, box.right);
  cross(from.y, to.y, box.bottom);
  cross(from.y, to.y, box.top);
  std::sort(parts.begin(), parts.end());
  for (std::size_t i = 0; i < count; ++i) {
    points.push_back(
        clamped({std::lerp(from.x, to.x, parts[i]), std::lerp(from.y, to.y, parts[i])}, box));
  }
}

PixelBar barAround(double middle, double width, const Range& extent, double base) {
  return {middle - width / 2, middle + width / 2, std::min(base, extent.low),
          std::max(base, extent.high)};
}

/// The middles and heights of bars that can be seen; no more than `most` and one.
std::vector<PlanePoint> seenBars(const TraceInWindow& trace, const AffineForm& across,
                                 const Range& middles, std::size_t most) {
  std::vector<PlanePoint> seen;
  PointWalk(
      trace.points, trace.boxes,
      [&](const Box3& box) {
        return across.highest(box) < middles.low || across.lowest(box) > middles.high ||
               seen.size() > most;
      },
      [&](std::size_t i) {
        if (const double middle = trace.at(across, i); middles.holds(middle)) {
          seen.push_back({middle, trace.windowY(i)});
        }
      });
  return seen;
}

}  // namespace

PixelLines linesOf(const ReducedPath& path, const WindowMapping& mapping) {
  PixelLines lines;
  lines.starts = path.starts;
  lines.points.reserve(path.places.size());
  for (const Point& at : path.places) {
    lines.points.push_back(placeOf(at, mapping));
  }
  return lines;
}

PixelLines stepsOf(const ReducedPath& path, const WindowMapping& mapping) {
  const PixelLines lines = linesOf(path, mapping);
  PixelLines steps;
  steps.points.reserve(2 * lines.points.size());
  forEachLine(lines.starts, lines.points.size(), [&](std::size_t first, std::size_t end) {
    steps.starts.push_back(steps.points.size());
    steps.points.push_back(lines.points[first]);
    for (std::size_t i = first + 1; i < end; ++i) {
      steps.points.push_back({lines.points[i].x, lines.points[i - 1].y});
      steps.points.push_back(lines.points[i]);
    }
  });
  return steps;
}

PixelLines areaOf(const PixelLines& lines, double base) {
  PixelLines area;
  area.points.reserve(lines.points.size());
  forEachLine(lines.starts, lines.points.size(), [&](std::size_t first, std::size_t end) {
    area.starts.push_back(area.points.size());
    area.points.push_back(lines.points[first]);
    for (std::size_t i = first + 1; i < end; ++i) {
      const PlanePoint& from = lines.points[i - 1];
      const PlanePoint& to = lines.points[i];
      if ((from.y < base && to.y > base) || (from.y > base && to.y < base)) {
        const double part = (base - from.y) / (to.y - from.y);
        area.points.push_back({from.x + part * (to.x - from.x), base});
      }
      area.points.push_back(to);
    }
  });
  return area;
}

PixelLines heldIn(const PixelLines& lines, const PixelBox& box) {
  PixelLines held;
  held.points.reserve(lines.points.size());
  forEachLine(lines.starts, lines.points.size(), [&](std::size_t first, std::size_t end) {
    held.starts.push_back(held.points.size());
    for (std::size_t i = first; i < end; ++i) {
      const PlanePoint to = finite(lines.points[i]);
      if (i > first) {
        addCrossings(finite(lines.points[i - 1]), to, box, held.points);
      }
      held.points.push_back(clamped(to, box));
    }
  });
  return held;
}

std::vector<PixelBar> barsOf(const TraceInWindow& trace, const PixelGrid& grid,
                             const BarStyle& style) {
  AffineForm across = trace.mapping.x;
  across.constant += across.x * style.shift;
  const double width = std::max(std::fabs(across.x * style.width), 1.0);
  const Range middles{grid.left - width / 2, grid.right + width / 2};
  const double most = 2 * (middles.size() + 1);
  std::vector<PixelBar> bars;
  const std::vector<PlanePoint> seen =
      seenBars(trace, across, middles, static_cast<std::size_t>(most));
  if (static_cast<double>(seen.size()) <= most) {
    for (const PlanePoint& bar : seen) {
      bars.push_back(barAround(bar.x, width, {bar.y, bar.y}, style.base));
    }
    return bars;
  }
  ColumnExtents columns(middles, {grid.bottom, grid.top});
  const WindowMapping mapping{across, trace.mapping.y, {}};
  PointWalk(
      trace.points, trace.boxes,
      [&](const Box3& box) { return columns.settle(areaOfBox(box, mapping)); },
      [&](std::size_t i) { columns.take(trace.at(across, i), trace.windowY(i)); });
  columns.forEach([&](double middle, const Range& extent) {
    bars.push_back(barAround(middle, width, extent, style.base));
  });
  return bars;
}

std::vector<std::size_t> markersOf(const TraceInWindow& trace, const PixelGrid& grid) {
  MarkedPixels pixels({grid.left, grid.right}, {grid.bottom, grid.top});
  std::vector<std::size_t> chosen;
  PointWalk(
      trace.points, trace.boxes,
      [&](const Box3& box) {
        const PixelArea area = areaOfBox(box, trace.mapping);
        return pixels.areBeside(area) || pixels.areMarked(area);
      },
      [&](std::size_t i) {
        const double x = trace.windowX(i);
        const double y = trace.windowY(i);
        if (pixels.holds(x, y) && pixels.mark(x, y)) {
          chosen.push_back(i);
        }
      });
  return chosen;
}

}  // namespace zyn
