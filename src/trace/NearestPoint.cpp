#include "trace/NearestPoint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zyn {

namespace {

/// Coordinates are multiplied by a power of two that brings the largest near 1, so that squares
/// neither overflow nor vanish.
double scaleFor(const Box3& box, const Point& target) {
  double largest = 0.0;
  for (const double value :
       {box.xMin, box.xMax, box.yMin, box.yMax, box.zMin, box.zMax, target.x, target.y, target.z}) {
    largest = std::max(largest, std::fabs(value));
  }
  constexpr int kLargestExponent = 1000;
  return largest == 0.0 ? 1.0 : std::ldexp(1.0, std::min(-std::ilogb(largest), kLargestExponent));
}

struct Triple {
  double x;
  double y;
  double z;
};

Triple operator-(const Triple& a, const Triple& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

double dot(const Triple& a, const Triple& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// The point of a segment at `fraction`; never outside the segment's box, whatever rounding does.
double between(double from, double to, double fraction) {
  const auto [low, high] = std::minmax(from, to);
  return std::clamp(from + fraction * (to - from), low, high);
}

double outside(double value, double low, double high) {
  return std::max({low - value, value - high, 0.0});
}

class Search {
 public:
  Search(const PointSequence& points, const RunBoxes& boxes, const Point& target)
      : points_(points),
        boxes_(boxes),
        scale_(scaleFor(boxes.all().box, target)),
        target_{target.x * scale_, target.y * scale_, target.z * scale_} {}

  TracePoint run() {
    const std::size_t top = boxes_.levels() - 1;
    visit(top, boxes_.firstRun(top));
    return {segment_, fraction_, position(), direction()};
  }

 private:
  struct Child {
    double distance;
    std::size_t index;
    bool operator<(const Child& other) const {
      return distance < other.distance || (distance == other.distance && index < other.index);
    }
  };

  Triple scaled(std::size_t i) const {
    return {points_.x(i) * scale_, points_.y(i) * scale_, points_.z(i) * scale_};
  }

  bool isPoint(std::size_t i) const {
    return i >= points_.first() && i < points_.end() && !points_.isGap(i);
  }
  bool isSegment(std::size_t i) const { return isPoint(i) && isPoint(i + 1); }
  bool isAlone(std::size_t i) const {
    return isPoint(i) && !isPoint(i + 1) && (i == 0 || !isPoint(i - 1));
  }

  /// Never above the distance, as it is computed, to anything in the box: rounding keeps the order.
  double distanceTo(const Box3& box) const {
    const Triple away{outside(target_.x, box.xMin * scale_, box.xMax * scale_),
                      outside(target_.y, box.yMin * scale_, box.yMax * scale_),
                      outside(target_.z, box.zMin * scale_, box.zMax * scale_)};
    return dot(away, away);
  }

  bool isBetter(double distance, std::size_t segment) const {
    return distance < distance_ || (distance == distance_ && segment < segment_);
  }

  void visit(std::size_t level, std::size_t index) {
    if (level == 0) {
      visitSegments(index);
      return;
    }
    const std::size_t first = std::max(index * RunBoxes::kFan, boxes_.firstRun(level - 1));
    const std::size_t end = std::min((index + 1) * RunBoxes::kFan, boxes_.endRun(level - 1));
    std::array<Child, RunBoxes::kFan> children;
    std::size_t count = 0;
    for (std::size_t i = first; i < end; ++i) {
      if (const RunBox& run = boxes_.run(level - 1, i); !run.isEmpty()) {
        children[count++] = {distanceTo(run.box), i};
      }
    }
    std::sort(children.begin(), children.begin() + count);
    for (std::size_t i = 0; i < count; ++i) {
      if (isBetter(children[i].distance, children[i].index * RunBoxes::length(level - 1))) {
        visit(level - 1, children[i].index);
      }
    }
  }

  void visitSegments(std::size_t run) {
    // The run's last point begins a segment of the next run; a point on its own may be met twice.
    const std::size_t first = std::max(run * RunBoxes::kFan, points_.first());
    const std::size_t last = std::min((run + 1) * RunBoxes::kFan, points_.end() - 1);
    for (std::size_t i = first; i <= last; ++i) {
      if (isSegment(i)) {
        measureSegment(i);
      } else if (isAlone(i)) {
        take(i, 0.0, scaled(i));
      }
    }
  }

  void measureSegment(std::size_t i) {
    const Triple a = scaled(i);
    const Triple b = scaled(i + 1);
    const Triple along = b - a;
    const double squaredLength = dot(along, along);
    const double fraction =
        squaredLength > 0 ? std::clamp(dot(target_ - a, along) / squaredLength, 0.0, 1.0) : 0.0;
    take(i, fraction,
         fraction == 1.0 ? b
                         : Triple{between(a.x, b.x, fraction), between(a.y, b.y, fraction),
                                  between(a.z, b.z, fraction)});
  }

  void take(std::size_t segment, double fraction, const Triple& candidate) {
    const Triple away = candidate - target_;
    const double distance = dot(away, away);
    if (isBetter(distance, segment)) {
      distance_ = distance;
      segment_ = segment;
      fraction_ = fraction;
      nearest_ = candidate;
    }
  }

  Point position() const {
    if (fraction_ == 0.0 || fraction_ == 1.0) {
      return points_.at(fraction_ == 0.0 ? segment_ : segment_ + 1);
    }
    return {nearest_.x / scale_, nearest_.y / scale_, nearest_.z / scale_};
  }

  Vecteur directionOf(std::size_t segment) const {
    const Triple along = scaled(segment + 1) - scaled(segment);
    const double length = std::hypot(along.x, along.y, along.z);
    return length > 0 ? Vecteur(along.x / length, along.y / length, along.z / length)
                      : Vecteur(0, 0, 0);
  }

  /// Of the nearest segment; where that has no length, of the next that has one, or the last.
  Vecteur direction() const {
    Vecteur found{0, 0, 0};
    for (std::size_t i = segment_; found.norm() == 0 && isSegment(i); ++i) {
      found = directionOf(i);
    }
    for (std::size_t i = segment_; found.norm() == 0 && i > 0 && isSegment(i - 1); --i) {
      found = directionOf(i - 1);
    }
    return found;
  }

  const PointSequence& points_;
  const RunBoxes& boxes_;
  double scale_;
  Triple target_;
  double distance_ = std::numeric_limits<double>::infinity();  ///< squared
  std::size_t segment_ = 0;
  double fraction_ = 0.0;
  Triple nearest_{};
};

}  // namespace

std::optional<TracePoint> nearestPoint(const PointSequence& points, const RunBoxes& boxes,
                                       const Point& target) {
  const bool isFinite =
      std::isfinite(target.x) && std::isfinite(target.y) && std::isfinite(target.z);
  if (!isFinite || boxes.all().isEmpty()) {
    return std::nullopt;
  }
  return Search(points, boxes, target).run();
}

}  // namespace zyn
