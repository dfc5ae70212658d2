#include "view3d/CameraValue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>

#include "core/VectorMath.h"

namespace zyn {

namespace {

/// Sine of the angle below which two directions count as parallel.
constexpr double kParallel = 1e-9;

bool areFinite(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

bool isSize(double value) { return std::isfinite(value) && value > 0.0; }

}  // namespace

bool hasDirection(const Vecteur& v) { return isSize(v.norm()); }

namespace {

std::optional<std::string> faultOfDirections(const CameraValue& camera) {
  const Vecteur sight = camera.target - camera.eye;
  if (!hasDirection(sight)) {
    return "Oeil: it lies at Cible, or too far from it";
  }
  if (!hasDirection(camera.up)) {
    return "Haut: it has no direction";
  }
  if (!(cross(normalised(sight), normalised(camera.up)).norm() > kParallel)) {
    return "Haut: it is parallel to the line from Oeil to Cible";
  }
  return std::nullopt;
}

/// A turn in space, of length 1: w, x, y, z.
using Quaternion = std::array<double, 4>;

double dot(const Quaternion& a, const Quaternion& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

/// The turn of a camera, from one that looks along -Z with +Y upwards. Of the four ways to find it
/// the one without a small divisor.
Quaternion turnOf(const CameraValue& camera) {
  const Vecteur back = normalised(camera.eye - camera.target);
  const Vecteur right = normalised(cross(camera.up, back));
  const Vecteur up = cross(back, right);
  const std::array<double, 4> squares = {1 + right.x + up.y + back.z, 1 + right.x - up.y - back.z,
                                         1 - right.x + up.y - back.z, 1 - right.x - up.y + back.z};
  const auto largest = std::max_element(squares.begin(), squares.end()) - squares.begin();
  const double twice = std::sqrt(squares[static_cast<std::size_t>(largest)]);
  const double wx = (up.z - back.y) / twice / 2;
  const double wy = (back.x - right.z) / twice / 2;
  const double wz = (right.y - up.x) / twice / 2;
  const double xy = (right.y + up.x) / twice / 2;
  const double xz = (back.x + right.z) / twice / 2;
  const double yz = (up.z + back.y) / twice / 2;
  switch (largest) {
    case 0:
      return {twice / 2, wx, wy, wz};
    case 1:
      return {wx, twice / 2, xy, xz};
    case 2:
      return {wy, xy, twice / 2, yz};
    default:
      return {wz, xz, yz, twice / 2};
  }
}

/// Where a turn brings a vector.
Vecteur turned(const Quaternion& turn, const Vecteur& v) {
  const Vecteur axis(turn[1], turn[2], turn[3]);
  const Vecteur half = cross(axis, v);
  return v + (2 * turn[0]) * half + 2.0 * cross(axis, half);
}

/// Along the great circle from one turn to another.
Quaternion between(const Quaternion& a, Quaternion b, double t) {
  double cosine = dot(a, b);
  if (cosine < 0) {
    std::transform(b.begin(), b.end(), b.begin(), [](double v) { return -v; });
    cosine = -cosine;
  }
  const double angle = std::acos(std::min(cosine, 1.0));
  const double sine = std::sin(angle);
  const double partA = sine > kParallel ? std::sin((1 - t) * angle) / sine : 1 - t;
  const double partB = sine > kParallel ? std::sin(t * angle) / sine : t;
  Quaternion result{};
  for (std::size_t i = 0; i < result.size(); ++i) {
    result[i] = partA * a[i] + partB * b[i];
  }
  const double length = std::sqrt(dot(result, result));
  std::transform(result.begin(), result.end(), result.begin(),
                 [length](double v) { return v / length; });
  return result;
}

/// Geometrically, but for what has no size.
double sizeBetween(double a, double b, double t) {
  return a > 0 && b > 0 ? a * std::pow(b / a, t) : a + t * (b - a);
}

}  // namespace

std::optional<std::string> faultOf(const CameraValue& camera) {
  const auto& [eye, target, up, width, height, perspective, angle, depth] = camera;
  if (!areFinite({eye.x, eye.y, eye.z})) {
    return "Oeil: it has numbers that are not finite";
  }
  if (!areFinite({target.x, target.y, target.z})) {
    return "Cible: it has numbers that are not finite";
  }
  if (!areFinite({up.x, up.y, up.z})) {
    return "Haut: it has numbers that are not finite";
  }
  if (!isSize(width)) {
    return "Largeur: it has to be above 0";
  }
  if (!isSize(height)) {
    return "Hauteur: it has to be above 0";
  }
  if (!(angle >= CameraValue::kSmallestAngle && angle <= CameraValue::kLargestAngle)) {
    return "AngleOuverture: it has to be from 1 to 170";
  }
  if (!(std::isfinite(depth) && depth >= 0)) {
    return "Profondeur: it has to be 0 or above";
  }
  return faultOfDirections(camera);
}

CameraValue between(const CameraValue& a, const CameraValue& b, double t) {
  if (t <= 0 || t >= 1) {
    return t <= 0 ? a : b;
  }
  CameraValue result = t < 0.5 ? a : b;
  const Quaternion turn = between(turnOf(a), turnOf(b), t);
  const double distance = sizeBetween((a.eye - a.target).norm(), (b.eye - b.target).norm(), t);
  result.target = a.target + t * (b.target - a.target);
  result.eye = result.target + distance * turned(turn, {0.0, 0.0, 1.0});
  result.up = turned(turn, {0.0, 1.0, 0.0});
  result.width = sizeBetween(a.width, b.width, t);
  result.height = sizeBetween(a.height, b.height, t);
  result.openingAngle = a.openingAngle + t * (b.openingAngle - a.openingAngle);
  result.depth = sizeBetween(a.depth, b.depth, t);
  return result;
}

}  // namespace zyn
