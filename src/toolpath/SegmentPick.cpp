#include "toolpath/SegmentPick.h"

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace zyn {

namespace {

using Homogeneous = std::array<double, 4>;

Homogeneous movedBy(const GlMatrix& m, double x, double y, double z) {
  Homogeneous place{};
  for (std::size_t row = 0; row < 4; ++row) {
    place[row] = m[row] * x + m[4 + row] * y + m[8 + row] * z + m[12 + row];
  }
  return place;
}

/// How far a place lies within one of the six sides: negative outside.
double withinSide(const Homogeneous& place, std::size_t side) {
  return place[3] + (side % 2 == 0 ? place[side / 2] : -place[side / 2]);
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
  Search(const ToolPath& path, const SegmentQuery& query) : path_(path), query_(query) {}

  bool mayMeet(const Box3& box) const {
    std::array<Homogeneous, 8> corners;
    for (std::size_t i = 0; i < corners.size(); ++i) {
      corners[i] = movedBy(query_.clip, i & 1U ? box.xMax : box.xMin, i & 2U ? box.yMax : box.yMin,
                           query_.isFlat ? 0
                           : i & 4U      ? box.zMax
                                         : box.zMin);
    }
    for (std::size_t side = 0; side < 6; ++side) {
      const bool isOutside = std::ranges::all_of(
          corners, [&](const Homogeneous& corner) { return withinSide(corner, side) < 0; });
      if (isOutside) {
        return false;
      }
    }
    return true;
  }

  void visit(std::size_t segment) {
    if (!query_.isVisible(path_.typeOf(segment))) {
      return;
    }
    const Homogeneous a = placeOf(segment);
    const Homogeneous b = placeOf(segment + 1);
    double from = 0;
    double to = 1;
    for (std::size_t side = 0; side < 6; ++side) {
      const double atStart = withinSide(a, side);
      const double atEnd = withinSide(b, side);
      if (atStart < 0 && atEnd < 0) {
        return;
      }
      if (atStart < 0) {
        from = std::max(from, atStart / (atStart - atEnd));
      } else if (atEnd < 0) {
        to = std::min(to, atStart / (atStart - atEnd));
      }
    }
    if (from <= to) {
      found(segment, between(a, b, from), between(a, b, to));
    }
  }

  std::optional<std::size_t> result() const {
    std::optional<std::size_t> nearest;
    double distance = std::numeric_limits<double>::infinity();
    for (const Candidate& one : candidates_) {
      if (one.depth <= leastDepth_ + kEqualDepth && (!nearest || one.distance < distance)) {
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

  Homogeneous placeOf(std::size_t point) const {
    const PathPoint place = path_.pointAt(point);
    return movedBy(query_.clip, place[0], place[1], query_.isFlat ? 0 : place[2]);
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
    candidates_.push_back(
        {segment, depth, distanceFromMiddle(a[0] / a[3], a[1] / a[3], b[0] / b[3], b[1] / b[3])});
  }

  const ToolPath& path_;
  const SegmentQuery& query_;
  double leastDepth_ = std::numeric_limits<double>::infinity();
  std::vector<Candidate> candidates_;
};

}  // namespace

std::optional<std::size_t> nearestSegment(const ToolPath& path, const SegmentTree& tree,
                                          const SegmentQuery& query) {
  Search search(path, query);
  tree.forEachSegment([&](const Box3& box) { return search.mayMeet(box); },
                      [&](std::size_t segment) { search.visit(segment); });
  return search.result();
}

}  // namespace zyn
