#include "trace/PathCache.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace zyn {

namespace {

/// While a view is moved, what lies so many pixels around it is prepared too.
constexpr double kReach = 256;

/// How far from whole pixels a movement may be: together with the rounding of vertices less than
/// what the reduction stays away from edges.
constexpr double kWhole = kRounding / 8;

bool isParallel(const AffineForm& a, const AffineForm& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool isWhole(double pixels) { return std::fabs(pixels - std::round(pixels)) <= kWhole; }

/// By how many whole pixels the view has moved, along the axis along which it did most. None where
/// the path was not chosen for the like of it.
std::optional<double> movement(const PathCache::Entry& entry, const WindowMapping& mapping,
                               const PixelGrid& grid) {
  const WindowMapping& before = entry.mapping;
  const double x = mapping.x.constant - before.x.constant;
  const double y = mapping.y.constant - before.y.constant;
  const bool isAlike = entry.reach >= 0 && entry.grid == grid && isParallel(before.x, mapping.x) &&
                       isParallel(before.y, mapping.y) && before.depth == mapping.depth &&
                       isWhole(x) && isWhole(y);
  return isAlike ? std::optional(std::max(std::fabs(x), std::fabs(y))) : std::nullopt;
}

PixelGrid widened(PixelGrid grid, double reach) {
  grid.left -= reach;
  grid.right += reach;
  grid.bottom -= reach;
  grid.top += reach;
  return grid;
}

}  // namespace

const PathCache::Entry& PathCache::reduced(const TraceInWindow& trace, const PixelGrid& grid) {
  ++turn_;
  bool isMoving = false;
  for (Entry& entry : entries_) {
    const std::optional<double> moved = movement(entry, trace.mapping, grid);
    if (moved && *moved <= entry.reach + kWhole) {
      entry.turn = turn_;
      return entry;
    }
    isMoving = isMoving || moved;
  }
  Entry& entry = *std::min_element(entries_.begin(), entries_.end(),
                                   [](const auto& a, const auto& b) { return a.turn < b.turn; });
  entry.reach = -1;  // until the path is whole
  entry.path = reducePath(trace, widened(grid, isMoving ? kReach : 0));
  entry.mapping = trace.mapping;
  entry.grid = grid;
  entry.reach = isMoving ? kReach : 0;
  entry.turn = turn_;
  return entry;
}

void PathCache::clear() { entries_ = {}; }

}  // namespace zyn
