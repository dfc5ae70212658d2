#include "model/PolygonCutter.h"

#include <algorithm>
#include <cmath>

namespace zyn {

std::span<const PolygonCutter::Triangle> PolygonCutter::cut(std::span<const Vector> corners,
                                                            const Vector& normal) {
  triangles_.clear();
  looks_ = 0;
  flatten(corners, normal);
  if (isFan()) {
    for (std::uint32_t i = 1; i + 1 < flat_.size(); ++i) {
      triangles_.push_back({0, i, i + 1});
    }
  } else {
    clipEars();
  }
  return triangles_;
}

/// Twice the signed area of a triangle, positive where it turns counterclockwise.
double PolygonCutter::turn(const Flat& a, const Flat& b, const Flat& c) {
  return (b.u - a.u) * (c.v - a.v) - (b.v - a.v) * (c.u - a.u);
}

/// Leaves the coordinate out along which the polygon extends least. What is left turns
/// counterclockwise.
void PolygonCutter::flatten(std::span<const Vector> corners, const Vector& normal) {
  const double x = std::abs(normal.x);
  const double y = std::abs(normal.y);
  const double z = std::abs(normal.z);
  flat_.clear();
  for (const Vector& corner : corners) {
    const Vector p = corner - corners[0];
    if (x > y && x > z) {
      flat_.push_back(normal.x > 0 ? Flat{p.y, p.z} : Flat{p.z, p.y});
    } else if (y > z) {
      flat_.push_back(normal.y > 0 ? Flat{p.z, p.x} : Flat{p.x, p.z});
    } else {
      flat_.push_back(normal.z > 0 ? Flat{p.x, p.y} : Flat{p.y, p.x});
    }
  }
}

/// Whether a fan from the first corner covers the polygon: no triangle of it turns the wrong way.
bool PolygonCutter::isFan() const {
  for (std::size_t i = 1; i + 1 < flat_.size(); ++i) {
    if (turn(flat_[0], flat_[i], flat_[i + 1]) < 0.0) {
      return false;
    }
  }
  return true;
}

void PolygonCutter::clipEars() {
  const auto count = static_cast<std::uint32_t>(flat_.size());
  next_.resize(count);
  previous_.resize(count);
  isReflex_.assign(count, false);
  layCells();
  for (std::uint32_t i = 0; i < count; ++i) {
    next_[i] = i + 1 < count ? i + 1 : 0;
    previous_[i] = i > 0 ? i - 1 : count - 1;
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    tellWhetherReflex(i);
  }
  std::uint32_t corner = 0;
  std::uint32_t missed = 0;
  for (std::uint32_t left = count; left > 3;) {
    // What has no ear crosses itself: any cut of it will do.
    if (missed < left && !isEar(corner)) {
      corner = next_[corner];
      ++missed;
      continue;
    }
    triangles_.push_back({previous_[corner], corner, next_[corner]});
    next_[previous_[corner]] = next_[corner];
    previous_[next_[corner]] = previous_[corner];
    isReflex_[corner] = false;
    tellWhetherReflex(previous_[corner]);
    tellWhetherReflex(next_[corner]);
    // Going on at the second next keeps many triangles from meeting in one corner.
    corner = next_[next_[corner]];
    missed = missed < left ? 0 : missed;
    --left;
  }
  triangles_.push_back({previous_[corner], corner, next_[corner]});
}

/// About one for every four corners.
void PolygonCutter::layCells() {
  least_ = flat_[0];
  Flat most = flat_[0];
  for (const Flat& p : flat_) {
    least_ = {std::min(least_.u, p.u), std::min(least_.v, p.v)};
    most = {std::max(most.u, p.u), std::max(most.v, p.v)};
  }
  side_ = std::max<std::size_t>(
      1, static_cast<std::size_t>(std::sqrt(static_cast<double>(flat_.size()) / 4)));
  const auto side = static_cast<double>(side_);
  perUnit_ = {side / (most.u - least_.u), side / (most.v - least_.v)};
  cells_.resize(std::max(cells_.size(), side_ * side_));
  std::for_each_n(cells_.begin(), side_ * side_, [](auto& cell) { cell.clear(); });
}

/// Never falls with the value, so that what lies between two values lies between their cells.
std::size_t PolygonCutter::placeOf(double value, double least, double perUnit) const {
  const double place = (value - least) * perUnit;
  return place > 0 ? std::min(side_ - 1,
                              static_cast<std::size_t>(std::min(place, static_cast<double>(side_))))
                   : 0;
}

bool PolygonCutter::isEar(std::uint32_t corner) {
  if (isReflex_[corner]) {
    return false;
  }
  const Flat& a = flat_[previous_[corner]];
  const Flat& b = flat_[corner];
  const Flat& c = flat_[next_[corner]];
  // Where anything lies within, a corner does at which the polygon turns the other way.
  const auto liesWithin = [&](std::uint32_t other) {
    const Flat& p = flat_[other];
    ++looks_;
    return p != a && p != b && p != c && turn(a, b, p) >= 0.0 && turn(b, c, p) >= 0.0 &&
           turn(c, a, p) >= 0.0;
  };
  const auto [uMin, uMax] = std::minmax({a.u, b.u, c.u});
  const auto [vMin, vMax] = std::minmax({a.v, b.v, c.v});
  const std::size_t lastColumn = placeOf(uMax, least_.u, perUnit_.u);
  const std::size_t lastRow = placeOf(vMax, least_.v, perUnit_.v);
  for (std::size_t row = placeOf(vMin, least_.v, perUnit_.v); row <= lastRow; ++row) {
    for (std::size_t column = placeOf(uMin, least_.u, perUnit_.u); column <= lastColumn; ++column) {
      std::vector<std::uint32_t>& cell = cellAt(column, row);
      ++looks_;
      std::erase_if(cell, [&](std::uint32_t other) { return !isReflex_[other]; });
      if (std::any_of(cell.begin(), cell.end(), liesWithin)) {
        return false;
      }
    }
  }
  return true;
}

/// A corner on a straight line counts as one.
void PolygonCutter::tellWhetherReflex(std::uint32_t corner) {
  const bool wasReflex = isReflex_[corner];
  isReflex_[corner] = turn(flat_[previous_[corner]], flat_[corner], flat_[next_[corner]]) <= 0.0;
  if (isReflex_[corner] && !wasReflex) {
    const Flat& p = flat_[corner];
    cellAt(placeOf(p.u, least_.u, perUnit_.u), placeOf(p.v, least_.v, perUnit_.v))
        .push_back(corner);
  }
}

}  // namespace zyn
