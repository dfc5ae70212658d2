#include "objects/dimension/CoteShape.h"

#include <cmath>
#include <optional>

#include "core/VectorMath.h"

namespace zyn {

namespace {

/// Sines of angles below this are rounding.
constexpr double kParallel = 1e-9;

std::optional<Vecteur> unit(const Vecteur& v) {
  const double length = v.norm();
  if (!(length > 0) || !std::isfinite(length)) {
    return std::nullopt;
  }
  return 1 / length * v;
}

/// The direction of `v` in the plane; none where it is the normal's.
std::optional<Vecteur> inPlane(const Vecteur& v, const Vecteur& normal) {
  const auto direction = unit(v);
  if (!direction) {
    return std::nullopt;
  }
  const Vecteur part = *direction + -dot(*direction, normal) * normal;
  return part.norm() > kParallel ? unit(part) : std::nullopt;
}

/// Upwards in the plane: z, or y where the plane is that of x and y.
Vecteur upright(const Vecteur& normal) {
  return inPlane({0, 0, 1}, normal).value_or(Vecteur{0, 1, 0});
}

std::optional<Vecteur> directionOf(const CoteShape& shape, const Vecteur& normal) {
  if (const auto given = inPlane(shape.direction, normal)) {
    return given;
  }
  return shape.type == CoteShape::kAligned ? inPlane(shape.second - shape.first, normal)
                                           : std::nullopt;
}

}  // namespace

CotePlane::CotePlane(const CoteShape& shape)
    : normal(unit(shape.normal).value_or(Vecteur{0, 0, 1})) {
  const Vecteur up = upright(normal);
  const Vecteur right = cross(up, normal);
  const auto direction = directionOf(shape, normal);
  along = direction.value_or(shape.type == CoteShape::kVertical ? -up : right);
  across = cross(normal, along);
  if (!shape.isLine()) {
    reading = along;
    return;
  }
  // Text along a line reads from below or from the right.
  const double rightwards = dot(along, right);
  const bool forward = std::abs(rightwards) > kParallel ? rightwards > 0 : dot(along, up) > 0;
  reading = forward ? along : -along;
}

}  // namespace zyn
