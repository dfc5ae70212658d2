#include "toolpath/PathArc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zyn {

namespace {

/// However small the tolerance and however large the arc.
constexpr double kMostChords = 65536;
/// However large the tolerance.
constexpr double kLargestStep = std::numbers::pi / 4;

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

PathPoint PathArc::pointAt(double part) const {
  if (part <= 0 || part >= 1) {
    return part <= 0 ? start : move.end;
  }
  const auto along = static_cast<std::size_t>(move.axis);
  const auto first = (along + 1) % 3;
  const auto second = (along + 2) % 3;
  const auto angleOf = [&](const PathPoint& place) {
    return std::atan2(place[second] - move.centre[second], place[first] - move.centre[first]);
  };
  const double r0 = radiusAt(start, move);
  const double r1 = radiusAt(move.end, move);
  const double angle =
      r0 > 0 ? angleOf(start) + part * move.sweep : angleOf(move.end) - (1 - part) * move.sweep;
  const double radius = r0 + part * (r1 - r0);
  PathPoint place{};
  place[first] = move.centre[first] + radius * std::cos(angle);
  place[second] = move.centre[second] + radius * std::sin(angle);
  place[along] = start[along] + part * (move.end[along] - start[along]);
  return place;
}

double PathArc::lengthTo(double part) const {
  if (part <= 0) {
    return 0;
  }
  ArcMove begun = move;
  begun.sweep *= std::min(part, 1.0);
  begun.end = pointAt(part);
  return arcLength(start, begun);
}

/// The length grows steadily with the part: the secant's guess, held by bisection.
double PathArc::partAt(double length, double from, double to) const {
  constexpr int kMostSteps = 100;
  constexpr double kExact = 1e-15;
  double low = lengthTo(from);
  double high = lengthTo(to);
  for (int step = 0; step < kMostSteps && high > low; ++step) {
    const double share = std::clamp((length - low) / (high - low), 0.0, 1.0);
    const double guess = from + (step % 3 == 2 ? 0.5 : share) * (to - from);
    const double reached = lengthTo(guess);
    if (guess <= from || guess >= to || std::abs(reached - length) <= kExact * high) {
      return guess;
    }
    (reached < length ? from : to) = guess;
    (reached < length ? low : high) = reached;
  }
  return from;
}

std::size_t PathArc::chordCount(double tolerance) const {
  const double radius = std::max(radiusAt(start, move), radiusAt(move.end, move));
  // A chord's height is r (1 - cos(step / 2)), written such that nothing cancels.
  const double step =
      tolerance < radius ? 4 * std::asin(std::sqrt(tolerance / radius / 2)) : kLargestStep;
  const double count = std::ceil(std::abs(move.sweep) / std::min(step, kLargestStep));
  return static_cast<std::size_t>(std::clamp(count, 1.0, kMostChords));
}

}  // namespace zyn
