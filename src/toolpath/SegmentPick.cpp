#include "toolpath/SegmentPick.h"

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace zyn {

namespace {

using Homogeneous = std::array<double, 4>;

/// A number of each point, which is linear in it.
struct Linear {
  double x = 0;
  double y = 0;
  double z = 0;
  double constant = 0;

  double at(const PathPoint& place) const {
    return constant + x * place[0] + y * place[1] + z * place[2];
  }
  double leastIn(const Box3& box) const {
    return constant + x * (x > 0 ? box.xMin : box.xMax) + y * (y > 0 ? box.yMin : box.yMax) +
           z * (z > 0 ? box.zMin : box.zMax);
  }
  double greatestIn(const Box3& box) const {
    return constant + x * (x > 0 ? box.xMax : box.xMin) + y * (y > 0 ? box.yMax : box.yMin) +
           z * (z > 0 ? box.zMax : box.zMin);
  }
  Linear plus(const Linear& other, double factor) const {
    return {x + factor * other.x, y + factor * other.y, z + factor * other.z,
            constant + factor * other.constant};
  }
};

/// What gives one of the four coordinates in clip space.
Linear rowOf(const SegmentQuery& query, std::size_t row) {
  const GlMatrix& m = query.clip;
  return {m[row], m[4 + row], query.isFlat ? 0 : m[8 + row], m[12 + row]};
}

/// Distance of the middle, 0, from a segment of the screen.
double distanceFromMiddle(double x0, double y0, double x1, double y1) {
  const double dx = x1 - x0;
  const double dy = y1 - y0;
  const double square = dx * dx + dy * dy;
  const double share = square > 0 ? std::clamp(-(x0 * dx + y0 * dy) / square, 0.0, 1.0) : 0;
  return std::hypot(x0 + share * dx, y0 + share * dy);
}

/// Depths of -1 to 1 that count as equal: what single precision tells apart, and somewhat more.
constexpr double kEqualDepth = 1e-6;

class Search {
 public:
  Search(const ToolPath& path, const SegmentQuery& query) : path_(path), query_(query) {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
      rows_[row] = rowOf(query, row);
    }
    for (std::size_t side = 0; side < sides_.size(); ++side) {
      sides_[side] = rows_[3].plus(rows_[side / 2], side % 2 == 0 ? 1 : -1);
    }
  }

  /// False for what is beside the clip space, or behind all that has been found.
  bool mayMeet(const Box3& box) const {
    return std::ranges::all_of(sides_,
                               [&](const Linear& side) { return side.greatestIn(box) >= 0; }) &&
           !(isAnyFound() && behind_.leastIn(box) > 0);
  }

  double nearestIn(const Box3& box) const { return rows_[2].leastIn(box); }

  void visit(std::size_t segment) {
    const PathPoint& start = path_.pointAt(segment);
    const PathPoint& end = path_.pointAt(segment + 1);
    double from = 0;
    double to = 1;
    for (const Linear& side : sides_) {
      const double atStart = side.at(start);
      const double atEnd = side.at(end);
      if (atStart < 0 && atEnd < 0) {
        return;
      }
      if (atStart < 0) {
        from = std::max(from, atStart / (atStart - atEnd));
      } else if (atEnd < 0) {
        to = std::min(to, atStart / (atStart - atEnd));
      }
    }
    if (from <= to && query_.isVisible(path_.typeOf(segment))) {
      const Homogeneous a = inClipSpace(start);
      const Homogeneous b = inClipSpace(end);
      found(segment, between(a, b, from), between(a, b, to));
    }
  }

  std::optional<std::size_t> result() const {
    std::optional<std::size_t> nearest;
    double distance = std::numeric_limits<double>::infinity();
    for (const Candidate& one : candidates_) {
      const bool isNearer = one.distance < distance ||
                            (nearest && one.distance == distance && one.segment < *nearest);
      if (one.depth <= leastDepth_ + kEqualDepth && isNearer) {
        nearest = one.segment;
        distance = one.distance;
      }
    }
    return nearest;
  }

 private:
  struct Candidate {
    std::size_t segment;
    double depth;
    double distance;
  };

  bool isAnyFound() const { return !candidates_.empty(); }

  Homogeneous inClipSpace(const PathPoint& place) const {
    return {rows_[0].at(place), rows_[1].at(place), rows_[2].at(place), rows_[3].at(place)};
  }

  static Homogeneous between(const Homogeneous& a, const Homogeneous& b, double share) {
    Homogeneous place{};
    for (std::size_t i = 0; i < 4; ++i) {
      place[i] = a[i] + share * (b[i] - a[i]);
    }
    return place;
  }

  void found(std::size_t segment, const Homogeneous& a, const Homogeneous& b) {
    if (!(a[3] > 0 && b[3] > 0)) {
      return;
    }
    const double depth = std::min(a[2] / a[3], b[2] / b[3]);
    if (depth > leastDepth_ + kEqualDepth) {
      return;
    }
    if (depth < leastDepth_ - kEqualDepth) {
      candidates_.clear();
    }
    leastDepth_ = std::min(leastDepth_, depth);
    behind_ = rows_[2].plus(rows_[3], -(leastDepth_ + kEqualDepth));
    candidates_.push_back(
        {segment, depth, distanceFromMiddle(a[0] / a[3], a[1] / a[3], b[0] / b[3], b[1] / b[3])});
  }

  const ToolPath& path_;
  const SegmentQuery& query_;
  std::array<Linear, 4> rows_;
  std::array<Linear, 6> sides_;  ///< negative outside
  Linear behind_;                ///< positive for what is farther than the nearest found
  double leastDepth_ = std::numeric_limits<double>::infinity();
  std::vector<Candidate> candidates_;
};

}  // namespace

std::optional<std::size_t> nearestSegment(const ToolPath& path, const SegmentTree& tree,
                                          const SegmentQuery& query) {
  Search search(path, query);
  tree.forEachSegment([&](const Box3& box) { return search.mayMeet(box); },
                      [&](const Box3& box) { return search.nearestIn(box); },
                      [&](std::size_t segment) { search.visit(segment); });
  return search.result();
}

}  // namespace zyn
