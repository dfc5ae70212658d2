#include "gcode/ArcWords.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace zyn {

namespace {

/// Millimetres by which rounding may move what is programmed to be the same.
constexpr double kRounding = 1e-9;

/// A direction in the plane of an arc, the axis towards the eye.
struct InPlane {
  double u;
  double v;

  double length() const { return std::hypot(u, v); }
};

InPlane difference(const ArcWords& words, const PathPoint& to, const PathPoint& from) {
  const auto u = static_cast<std::size_t>((words.axis + 1) % 3);
  const auto v = static_cast<std::size_t>((words.axis + 2) % 3);
  return {to[u] - from[u], to[v] - from[v]};
}

/// How far the radii of one arc may be apart.
double tolerance(double radius) { return std::max(0.01, 0.001 * radius) + kRounding; }

double signedSweep(const ArcWords& words, double turn) { return words.clockwise ? -turn : turn; }

std::string text(double number) {
  char digits[32];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 9).ptr;
  return {digits, end};
}

}  // namespace

/// The angle comes from the chord, which is exact where directions from the centre hardly differ.
std::optional<ArcMove> arcAround(const ArcWords& words, const PathPoint& centre,
                                 std::string& cause) {
  const InPlane start = difference(words, words.start, centre);
  const InPlane end = difference(words, words.end, centre);
  const InPlane chord = difference(words, words.end, words.start);
  const double radius = start.length();
  if (radius <= kRounding || end.length() <= kRounding) {
    cause = "the radius of the arc is 0";
    return {};
  }
  if (std::abs(end.length() - radius) > tolerance(radius)) {
    cause = "the radius of the arc is " + text(radius) + " at its start and " + text(end.length()) +
            " at its end";
    return {};
  }
  double turn = 2 * std::numbers::pi;
  if (chord.length() > kRounding) {
    const double turned =
        std::atan2(start.u * chord.v - start.v * chord.u, start.u * end.u + start.v * end.v);
    const double ahead = words.clockwise ? -turned : turned;
    turn = ahead > 0 ? ahead : ahead + turn;
  }
  return ArcMove{centre, words.end, words.axis, signedSweep(words, turn)};
}

std::optional<ArcMove> arcOfRadius(const ArcWords& words, double radius, std::string& cause) {
  const InPlane chord = difference(words, words.end, words.start);
  const double half = chord.length() / 2;
  const double size = std::abs(radius);
  if (half <= kRounding) {
    cause = "an arc with R ends where it starts";
    return {};
  }
  if (half - size > tolerance(size)) {
    cause = "the radius of the arc is " + text(size) + ", half the way to its end is " + text(half);
    return {};
  }
  const double least = 2 * std::asin(std::min(1.0, half / size));
  const double turn = radius > 0 ? least : 2 * std::numbers::pi - least;
  // The centre of less than half a turn lies to the left of the chord, seen along it.
  const double left = std::sqrt(std::max(0.0, (size - half) * (size + half)));
  const double aside = (words.clockwise == (radius > 0) ? -left : left) / (2 * half);
  const auto u = static_cast<std::size_t>((words.axis + 1) % 3);
  const auto v = static_cast<std::size_t>((words.axis + 2) % 3);
  PathPoint centre = words.start;
  centre[u] += chord.u / 2 - chord.v * aside;
  centre[v] += chord.v / 2 + chord.u * aside;
  return ArcMove{centre, words.end, words.axis, signedSweep(words, turn)};
}

}  // namespace zyn
