#include "core/Transform.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/VectorMath.h"

namespace zyn {

namespace {

/// Of what rounding leaves of a volume, an angle or a length that is 0 or 1.
constexpr double kRounding = 1e-12;

/// Scales that single precision, in which OpenGL calculates, does not tell from 1.
constexpr double kSingleRounding = 1e-6;

double lengthOf(const Vecteur& v) { return std::hypot(v.x, v.y, v.z); }

/// In steps that are finite for any length.
Vecteur unit(const Vecteur& v) {
  const double largest = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
  const Vecteur scaled(v.x / largest, v.y / largest, v.z / largest);
  const double length = lengthOf(scaled);
  return {scaled.x / length, scaled.y / length, scaled.z / length};
}

/// The moved axes: their directions and lengths.
struct Axes {
  std::array<Vecteur, 3> units;
  std::array<double, 3> lengths;

  explicit Axes(const GlMatrix& m) {
    for (std::size_t i = 0; i < 3; ++i) {
      const Vecteur axis(m[4 * i], m[4 * i + 1], m[4 * i + 2]);
      lengths[i] = lengthOf(axis);
      units[i] = lengths[i] > 0 ? unit(axis) : Vecteur(0, 0, 0);
    }
  }

  /// Of the body that the directions span, from -1 to 1.
  double volume() const { return dot(units[0], cross(units[1], units[2])); }

  /// The rows of the inverse of the directions, times the volume.
  Vecteur opposite(std::size_t i) const { return cross(units[(i + 1) % 3], units[(i + 2) % 3]); }
};

}  // namespace

bool keepsAxes(const GlMatrix& matrix) {
  for (std::size_t row = 0; row < 3; ++row) {
    const int terms = (matrix[row] != 0 ? 1 : 0) + (matrix[4 + row] != 0 ? 1 : 0) +
                      (matrix[8 + row] != 0 ? 1 : 0);
    if (terms > 1) {
      return false;
    }
  }
  return true;
}

bool isMirror(const GlMatrix& matrix) { return Axes(matrix).volume() < 0; }

bool isSingular(const GlMatrix& matrix) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  const Axes axes(matrix);
  if (!(std::abs(axes.volume()) > kRounding) ||
      !std::all_of(axes.lengths.begin(), axes.lengths.end(), isFinite)) {
    return true;
  }
  const GlMatrix back = inverse(matrix);
  return !std::all_of(back.begin(), back.end(), isFinite);
}

GlMatrix inverse(const GlMatrix& matrix) {
  const Axes axes(matrix);
  const double volume = axes.volume();
  GlMatrix result{};
  result[15] = 1;
  for (std::size_t row = 0; row < 3; ++row) {
    const Vecteur opposite = axes.opposite(row);
    const double scale = volume * axes.lengths[row];
    result[row] = opposite.x / scale;
    result[4 + row] = opposite.y / scale;
    result[8 + row] = opposite.z / scale;
    result[12 + row] =
        -(result[row] * matrix[12] + result[4 + row] * matrix[13] + result[8 + row] * matrix[14]);
  }
  return result;
}

GlMatrix flattened(const GlMatrix& matrix) {
  return {matrix[0], matrix[1], 0, 0, matrix[4],  matrix[5],  0, 0,
          0,         0,         1, 0, matrix[12], matrix[13], 0, 1};
}

Vecteur movedNormal(const GlMatrix& matrix, const Vecteur& normal) {
  const Axes axes(matrix);
  const double sign = axes.volume() < 0 ? -1 : 1;
  const std::array<double, 3> part = {normal.x, normal.y, normal.z};
  // In proportion to the shortest axis, which takes the largest part.
  const double least = std::min({axes.lengths[0], axes.lengths[1], axes.lengths[2]});
  Vecteur sum(0, 0, 0);
  for (std::size_t i = 0; i < 3; ++i) {
    sum = sum + sign * part[i] * (least / axes.lengths[i]) * axes.opposite(i);
  }
  return unit(sum);
}

Stretch stretchOf(const GlMatrix& matrix) {
  const Axes axes(matrix);
  const auto& [x, y, z] = axes.units;
  const auto [least, most] = std::minmax({axes.lengths[0], axes.lengths[1], axes.lengths[2]});
  const double slant = std::max({std::abs(dot(x, y)), std::abs(dot(y, z)), std::abs(dot(z, x))});
  if (slant > kSingleRounding || most - least > kSingleRounding * most) {
    return Stretch::kUneven;
  }
  return std::abs(most - 1) > kSingleRounding ? Stretch::kEven : Stretch::kNone;
}

GlMatrix frame(const Point& origin, const Vecteur& x, const Vecteur& y) {
  const Vecteur first = unit(x);
  const Vecteur third = unit(cross(first, unit(y)));
  const Vecteur second = cross(third, first);
  return {first.x, first.y, first.z, 0, second.x, second.y, second.z, 0,
          third.x, third.y, third.z, 0, origin.x, origin.y, origin.z, 1};
}

bool areParallel(const Vecteur& a, const Vecteur& b) {
  const auto isNone = [](const Vecteur& v) { return v.x == 0 && v.y == 0 && v.z == 0; };
  return isNone(a) || isNone(b) || !(lengthOf(cross(unit(a), unit(b))) > kRounding);
}

}  // namespace zyn
