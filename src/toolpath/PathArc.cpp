#include "toolpath/PathArc.h"

#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

/// The distance to the arc's axis.
double radiusAt(const PathPoint& place, const ArcMove& move) {
  const auto first = static_cast<std::size_t>((move.axis + 1) % 3);
  const auto second = static_cast<std::size_t>((move.axis + 2) % 3);
  return std::hypot(place[first] - move.centre[first], place[second] - move.centre[second]);
}

}  // namespace

/// With r the radius, which changes by k a radian, and h the rise a radian, the length is the
/// integral of sqrt(r² + c²) over the angle, c² = k² + h². Its closed form is written such that
/// nothing cancels where the radius changes little or not at all.
double arcLength(const PathPoint& start, const ArcMove& move) {
  const auto along = static_cast<std::size_t>(move.axis);
  const double r0 = radiusAt(start, move);
  const double r1 = radiusAt(move.end, move);
  const double c =
      std::hypot((r1 - r0) / move.sweep, (move.end[along] - start[along]) / move.sweep);
  if (r0 + r1 == 0) {
    return std::abs(move.sweep) * c;
  }
  const double s0 = std::hypot(r0, c);
  const double s1 = std::hypot(r1, c);
  const double slope = (r0 + r1) / (r1 * s0 + r0 * s1);
  const double turn = (r1 - r0) * slope;
  const double turned = turn == 0 ? 1 : std::asinh(turn) / turn;
  const double mean =
      (r0 + r1) * (r0 * r0 + r1 * r1 + c * c) / (r1 * s1 + r0 * s0) + c * c * slope * turned;
  return std::abs(move.sweep) * mean / 2;
}

}  // namespace zyn
