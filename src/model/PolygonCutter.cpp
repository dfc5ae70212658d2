#include "model/PolygonCutter.h"

#include <algorithm>
#include <cmath>

namespace zyn {

std::span<const PolygonCutter::Triangle> PolygonCutter::cut(std::span<const Vector> corners,
                                                            const Vector& normal) {
  triangles_.clear();
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
  reflex_.clear();
  isReflex_.assign(count, false);
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

bool PolygonCutter::isEar(std::uint32_t corner) const {
  if (isReflex_[corner]) {
    return false;
  }
  const Flat& a = flat_[previous_[corner]];
  const Flat& b = flat_[corner];
  const Flat& c = flat_[next_[corner]];
  // Where anything lies within, a corner does at which the polygon turns the other way.
  return std::none_of(reflex_.begin(), reflex_.end(), [&](std::uint32_t other) {
    const Flat& p = flat_[other];
    return isReflex_[other] && p != a && p != b && p != c && turn(a, b, p) >= 0.0 &&
           turn(b, c, p) >= 0.0 && turn(c, a, p) >= 0.0;
  });
}

/// A corner on a straight line counts as one.
void PolygonCutter::tellWhetherReflex(std::uint32_t corner) {
  const bool wasReflex = isReflex_[corner];
  isReflex_[corner] = turn(flat_[previous_[corner]], flat_[corner], flat_[next_[corner]]) <= 0.0;
  if (isReflex_[corner] && !wasReflex) {
    reflex_.push_back(corner);
  }
}

}  // namespace zyn
