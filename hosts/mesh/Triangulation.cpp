#include "mesh/Triangulation.h"

#include <algorithm>
#include <numeric>

namespace zyn::mesh {

namespace {

using Indices = std::array<std::size_t, 3>;

struct Flat {
  double u;
  double v;

  bool operator==(const Flat&) const = default;
};

/// Twice the signed area of a triangle, positive where it turns counter-clockwise.
double turn(const Flat& a, const Flat& b, const Flat& c) {
  return (b.u - a.u) * (c.v - a.v) - (b.v - a.v) * (c.u - a.u);
}

/// Normal of the best plane through the corners (Newell's method; not normalised).
Vector polygonNormal(std::span<const Vector> corners) {
  Vector sum;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Vector a = corners[i] - corners[0];
    const Vector b = corners[(i + 1) % corners.size()] - corners[0];
    sum = sum + cross(a, b);
  }
  return sum;
}

/// The corners without the coordinate along which the polygon extends least, turning
/// counter-clockwise as the polygon does.
std::vector<Flat> flatten(std::span<const Vector> corners) {
  const Vector normal = polygonNormal(corners);
  const double x = std::abs(normal.x);
  const double y = std::abs(normal.y);
  const double z = std::abs(normal.z);
  std::vector<Flat> flat;
  flat.reserve(corners.size());
  for (const Vector& corner : corners) {
    const Vector p = corner - corners[0];
    if (x > y && x > z) {
      flat.push_back(normal.x > 0 ? Flat{p.y, p.z} : Flat{p.z, p.y});
    } else if (y > z) {
      flat.push_back(normal.y > 0 ? Flat{p.z, p.x} : Flat{p.x, p.z});
    } else {
      flat.push_back(normal.z > 0 ? Flat{p.x, p.y} : Flat{p.y, p.x});
    }
  }
  return flat;
}

/// Whether a fan from corner 0 covers the polygon: no triangle of it turns the wrong way.
bool isFan(const std::vector<Flat>& flat) {
  for (std::size_t i = 1; i + 1 < flat.size(); ++i) {
    if (turn(flat[0], flat[i], flat[i + 1]) < 0.0) {
      return false;
    }
  }
  return true;
}

std::vector<Indices> fan(std::size_t corners) {
  std::vector<Indices> triangles;
  triangles.reserve(corners - 2);
  for (std::size_t i = 1; i + 1 < corners; ++i) {
    triangles.push_back({0, i, i + 1});
  }
  return triangles;
}

/// What is left of a polygon while its ears are cut off.
class EarClipper {
 public:
  explicit EarClipper(const std::vector<Flat>& flat) : flat_(flat), left_(flat.size()) {
    std::iota(left_.begin(), left_.end(), std::size_t{0});
  }

  std::vector<Indices> clip() {
    std::vector<Indices> triangles;
    for (std::size_t at = 0; left_.size() > 3;) {
      at = nextEar(at % left_.size());
      if (at == left_.size()) {
        break;
      }
      triangles.push_back(corner(at));
      left_.erase(left_.begin() + static_cast<std::ptrdiff_t>(at));
    }
    // What has no ear crosses itself (or is the last triangle): any cut of it will do.
    for (const Indices& rest : fan(left_.size())) {
      triangles.push_back({left_[rest[0]], left_[rest[1]], left_[rest[2]]});
    }
    return triangles;
  }

 private:
  Indices corner(std::size_t at) const {
    const std::size_t count = left_.size();
    return {left_[(at + count - 1) % count], left_[at], left_[(at + 1) % count]};
  }

  /// The first ear from `from` on, or the number of corners left where there is none.
  std::size_t nextEar(std::size_t from) const {
    for (std::size_t step = 0; step < left_.size(); ++step) {
      const std::size_t at = (from + step) % left_.size();
      if (isEar(corner(at))) {
        return at;
      }
    }
    return left_.size();
  }

  bool isEar(const Indices& ear) const {
    const auto& [a, b, c] = ear;
    if (turn(flat_[a], flat_[b], flat_[c]) <= 0.0) {
      return false;
    }
    return std::none_of(left_.begin(), left_.end(),
                        [&](std::size_t i) { return covers(ear, flat_[i]); });
  }

  bool covers(const Indices& ear, const Flat& p) const {
    const Flat& a = flat_[ear[0]];
    const Flat& b = flat_[ear[1]];
    const Flat& c = flat_[ear[2]];
    const bool isCorner = p == a || p == b || p == c;
    return !isCorner && turn(a, b, p) >= 0.0 && turn(b, c, p) >= 0.0 && turn(c, a, p) >= 0.0;
  }

  const std::vector<Flat>& flat_;
  std::vector<std::size_t> left_;
};

}  // namespace

std::vector<Indices> triangulate(std::span<const Vector> corners) {
  if (corners.size() == 3) {
    return fan(3);
  }
  const std::vector<Flat> flat = flatten(corners);
  if (isFan(flat)) {
    return fan(corners.size());
  }
  if (corners.size() > kMostConcaveCorners) {
    return {};
  }
  return EarClipper(flat).clip();
}

}  // namespace zyn::mesh
