#include "core/PlaneRegion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace zyn {

namespace {

constexpr double kLargest = 1e9;

/// Bounds on what the bands take: how many, and entries in all of them.
constexpr std::size_t kMostBands = 1024;
constexpr std::size_t kMostEntries = std::size_t{1} << 22U;

/// How far beside an edge both sides of it are looked at.
constexpr double kBeside = 4 * PlaneRegion::kTouch;

double dot(const PlanePoint& a, const PlanePoint& b) { return a.x * b.x + a.y * b.y; }
double cross(const PlanePoint& a, const PlanePoint& b) { return a.x * b.y - a.y * b.x; }

PlaneBox boxAround(std::span<const PlanePoint> points) {
  PlaneBox box{points[0].x, points[0].x, points[0].y, points[0].y};
  for (const PlanePoint& point : points) {
    box.xMin = std::min(box.xMin, point.x);
    box.xMax = std::max(box.xMax, point.x);
    box.yMin = std::min(box.yMin, point.y);
    box.yMax = std::max(box.yMax, point.y);
  }
  return box;
}

/// 1 for a convex polygon that turns counterclockwise where y points upwards, -1 for one that turns
/// clockwise, 0 for one without an area.
double turnOf(std::span<const PlanePoint> polygon) {
  double area = 0.0;
  for (std::size_t i = 1; i + 1 < polygon.size(); ++i) {
    area += cross(polygon[i] - polygon[0], polygon[i + 1] - polygon[0]);
  }
  return area > 0 ? 1.0 : area < 0 ? -1.0 : 0.0;
}

bool isInside(const PlanePoint& point, std::span<const PlanePoint> polygon) {
  const double turn = turnOf(polygon);
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const PlanePoint& from = polygon[i];
    if (turn * cross(polygon[(i + 1) % polygon.size()] - from, point - from) < 0) {
      return false;
    }
  }
  return turn != 0;
}

}  // namespace

/// A piece of a straight line, by a parameter from 0 to 1.
struct PlaneRegion::Segment {
  PlanePoint from;
  PlanePoint to;
  PlanePoint step;

  Segment(const PlanePoint& a, const PlanePoint& b) : from(a), to(b), step(b - a) {}

  PlanePoint at(double t) const { return from + t * step; }
  double length() const { return lengthOf(step); }
  double yLow() const { return std::min(from.y, to.y) - kTouch; }
  double yHigh() const { return std::max(from.y, to.y) + kTouch; }

  /// The parameter of the point nearest to another.
  double nearestTo(const PlanePoint& point) const {
    const double square = dot(step, step);
    return square > 0 ? std::clamp(dot(point - from, step) / square, 0.0, 1.0) : 0.0;
  }
  bool isNear(const PlanePoint& point) const {
    const PlanePoint away = point - at(nearestTo(point));
    return dot(away, away) <= kTouch * kTouch;
  }

  /// The parameter where it crosses another; none for parallels.
  std::optional<double> crossing(const Segment& other) const {
    const double across = cross(step, other.step);
    const double t = cross(other.from - from, other.step) / across;
    const double u = cross(other.from - from, step) / across;
    const bool crosses = t >= 0 && t <= 1 && u >= 0 && u <= 1;
    return crosses ? std::optional(t) : std::nullopt;
  }

  /// What lies deeper than `margin` in a convex polygon; none where nothing does.
  std::optional<Segment> within(std::span<const PlanePoint> polygon, double turn,
                                double margin) const {
    double begin = 0.0;
    double end = 1.0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      const Segment side(polygon[i], polygon[(i + 1) % polygon.size()]);
      const double length = side.length();
      if (length == 0) {
        continue;
      }
      const double depth = turn * cross(side.step, from - side.from) / length - margin;
      const double change = turn * cross(side.step, step) / length;
      if (change > 0) {
        begin = std::max(begin, -depth / change);
      } else if (change < 0) {
        end = std::min(end, -depth / change);
      } else if (depth < 0) {
        return std::nullopt;
      }
    }
    return begin < end ? std::optional(Segment(at(begin), at(end))) : std::nullopt;
  }
};

PlaneRegion::PlaneRegion(std::vector<PlanePoint> corners) {
  for (PlanePoint& corner : corners) {
    corner = {std::clamp(corner.x, -kLargest, kLargest), std::clamp(corner.y, -kLargest, kLargest)};
  }
  bounds_ = boxAround(corners);
  const std::size_t bands = std::clamp(kMostEntries / corners.size(), std::size_t{1},
                                       std::min(corners.size(), kMostBands));
  bands_.resize(bands);
  bandHeight_ = (bounds_.yMax - bounds_.yMin) / static_cast<double>(bands);
  edges_.reserve(corners.size());
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const PlanePoint& from = corners[i];
    const PlanePoint& to = corners[(i + 1) % corners.size()];
    const std::size_t first = bandAt(std::min(from.y, to.y));
    const std::size_t last = bandAt(std::max(from.y, to.y));
    for (std::size_t band = first; band <= last; ++band) {
      bands_[band].push_back(static_cast<std::uint32_t>(i));
    }
    edges_.push_back({from, to, first});
  }
}

std::size_t PlaneRegion::bandAt(double y) const {
  const double band = bandHeight_ > 0 ? (y - bounds_.yMin) / bandHeight_ : 0.0;
  return static_cast<std::size_t>(std::clamp(band, 0.0, static_cast<double>(bands_.size() - 1)));
}

/// Whether `visit` returns true for one of the edges that reach between two heights; each is
/// visited once, perhaps with others.
template <class Visit>
bool PlaneRegion::anyEdge(double yLow, double yHigh, Visit visit) const {
  const std::size_t first = bandAt(yLow);
  const std::size_t last = bandAt(yHigh);
  for (std::size_t band = first; band <= last; ++band) {
    for (const std::uint32_t index : bands_[band]) {
      const Edge& edge = edges_[index];
      const bool isSeen = band > first && edge.firstBand < band;
      if (!isSeen && visit(Segment(edge.from, edge.to))) {
        return true;
      }
    }
  }
  return false;
}

bool PlaneRegion::contains(const PlanePoint& point) const {
  if (!mayMeet({&point, 1})) {
    return false;
  }
  bool isInside = false;
  const bool isOnEdge = anyEdge(point.y - kTouch, point.y + kTouch, [&](const Segment& edge) {
    if ((edge.from.y > point.y) != (edge.to.y > point.y) &&
        point.x < edge.from.x + (point.y - edge.from.y) / edge.step.y * edge.step.x) {
      isInside = !isInside;
    }
    return edge.isNear(point);
  });
  return isOnEdge || isInside;
}

/// False for what lies beside the region, and where numbers are not finite.
bool PlaneRegion::mayMeet(std::span<const PlanePoint> shape) const {
  const bool isFinite = std::all_of(shape.begin(), shape.end(), [](const PlanePoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
  });
  if (!isFinite) {
    return false;
  }
  const PlaneBox box = boxAround(shape);
  return box.xMin <= bounds_.xMax + kTouch && box.xMax >= bounds_.xMin - kTouch &&
         box.yMin <= bounds_.yMax + kTouch && box.yMax >= bounds_.yMin - kTouch;
}

bool PlaneRegion::touches(const Segment& segment) const {
  return anyEdge(segment.yLow(), segment.yHigh(), [&](const Segment& edge) {
    return segment.crossing(edge) || segment.isNear(edge.from) || edge.isNear(segment.from) ||
           edge.isNear(segment.to);
  });
}

/// The first place behind `after` where the segment may change sides; 1 at the latest.
double PlaneRegion::nextBreak(const Segment& segment, double after) const {
  double next = 1.0;
  const auto consider = [&](double t) { next = t > after ? std::min(next, t) : next; };
  anyEdge(segment.yLow(), segment.yHigh(), [&](const Segment& edge) {
    if (const auto t = segment.crossing(edge)) {
      consider(*t);
    }
    if (segment.isNear(edge.from)) {
      consider(segment.nearestTo(edge.from));
    }
    return false;
  });
  return next;
}

/// Whether `check` holds for the middle of each piece into which edges part the segment.
template <class Check>
bool PlaneRegion::eachPiece(const Segment& segment, Check check) const {
  const double least = kTouch / segment.length();
  double begin = 0.0;
  while (begin < 1.0) {
    const double end = nextBreak(segment, begin + least);
    if (!check(segment.at((begin + end) / 2))) {
      return false;
    }
    begin = end;
  }
  return true;
}

/// Whether a segment whose ends are inside is so between them.
bool PlaneRegion::holds(const Segment& segment) const {
  return eachPiece(segment, [&](const PlanePoint& middle) { return contains(middle); });
}

/// Whether there is an outside within a convex polygon whose sides are inside.
bool PlaneRegion::hasHoleIn(std::span<const PlanePoint> polygon) const {
  const PlaneBox box = boxAround(polygon);
  const double turn = turnOf(polygon);
  return turn != 0 && anyEdge(box.yMin, box.yMax, [&](const Segment& edge) {
           const auto part = edge.within(polygon, turn, kBeside);
           if (!part || part->length() <= kTouch) {
             return false;
           }
           const double length = part->length();
           const PlanePoint aside{-part->step.y * kBeside / length,
                                  part->step.x * kBeside / length};
           return !eachPiece(*part, [&](const PlanePoint& middle) {
             return contains(middle + aside) && contains(middle - aside);
           });
         });
}

Coverage PlaneRegion::ofLine(const PlanePoint& a, const PlanePoint& b) const {
  const PlanePoint ends[] = {a, b};
  return ofPolygon(ends);
}

Coverage PlaneRegion::ofPolygon(std::span<const PlanePoint> polygon) const {
  if (polygon.empty()) {
    return Coverage::kNothing;
  }
  if (!mayMeet(polygon)) {
    return Coverage::kNone;
  }
  const auto inside = std::count_if(polygon.begin(), polygon.end(),
                                    [&](const PlanePoint& corner) { return contains(corner); });
  const auto isAnySide = [&](auto test) {
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      if (test(Segment(polygon[i], polygon[(i + 1) % polygon.size()]))) {
        return true;
      }
    }
    return false;
  };
  if (inside == 0) {
    const bool meets = isAnySide([&](const Segment& side) { return touches(side); }) ||
                       isInside(edges_[0].from, polygon);
    return meets ? Coverage::kPart : Coverage::kNone;
  }
  const bool isWhole = inside == static_cast<std::ptrdiff_t>(polygon.size()) &&
                       !isAnySide([&](const Segment& side) { return !holds(side); }) &&
                       !hasHoleIn(polygon);
  return isWhole ? Coverage::kWhole : Coverage::kPart;
}

}  // namespace zyn
