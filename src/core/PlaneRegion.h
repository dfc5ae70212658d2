#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// How much of something lies in a region.
enum class Coverage : std::uint8_t {
  kNothing,  ///< nothing is there that could
  kNone,
  kPart,
  kWhole
};

/// Of two things together.
inline Coverage joined(Coverage a, Coverage b) {
  if (a == Coverage::kNothing || a == b) {
    return b;
  }
  return b == Coverage::kNothing ? a : Coverage::kPart;
}

/// A rectangle parallel to the axes.
struct PlaneBox {
  double xMin = 0.0;
  double xMax = 0.0;
  double yMin = 0.0;
  double yMax = 0.0;
};

/// What lies inside of a closed line of straight edges, which may cross itself (even-odd: across
/// each edge inside becomes outside), and the line itself. Distances up to kTouch count as none.
class PlaneRegion {
 public:
  static constexpr double kTouch = 1e-3;

  /// At least one corner; their coordinates count up to a billion.
  explicit PlaneRegion(std::vector<PlanePoint> corners);

  const PlaneBox& bounds() const { return bounds_; }

  bool contains(const PlanePoint& point) const;

  Coverage ofLine(const PlanePoint& a, const PlanePoint& b) const;

  /// Of a convex polygon, turned either way; of a point or a line where it has fewer corners.
  Coverage ofPolygon(std::span<const PlanePoint> polygon) const;

 private:
  struct Edge {
    PlanePoint from;
    PlanePoint to;
    std::size_t firstBand;
  };
  struct Segment;

  std::size_t bandAt(double y) const;
  template <class Visit>
  bool anyEdge(double yLow, double yHigh, Visit visit) const;

  bool mayMeet(std::span<const PlanePoint> shape) const;
  bool touches(const Segment& segment) const;
  double nextBreak(const Segment& segment, double after) const;
  template <class Check>
  bool eachPiece(const Segment& segment, Check check) const;
  bool holds(const Segment& segment) const;
  bool hasHoleIn(std::span<const PlanePoint> polygon) const;

  std::vector<Edge> edges_;
  PlaneBox bounds_;
  double bandHeight_ = 0.0;
  std::vector<std::vector<std::uint32_t>> bands_;  ///< the edges that reach into each, by y
};

}  // namespace zyn
