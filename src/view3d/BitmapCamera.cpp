#include "view3d/BitmapCamera.h"

#include <cmath>

#include "core/VectorMath.h"

namespace zyn {

namespace {

/// Sine of the angle below which two directions count as parallel.
constexpr double kParallel = 1e-9;

/// The unit vector along three values of a frame; none when they are null or not finite.
std::optional<Vecteur> directionAt(const CParamsVue3D::Frame& frame, std::size_t place) {
  const double length = std::hypot(frame[place], frame[place + 1], frame[place + 2]);
  if (!(length > 0.0) || std::isinf(length)) {
    return std::nullopt;
  }
  return Vecteur(frame[place] / length, frame[place + 1] / length, frame[place + 2] / length);
}

std::optional<Orientation> orientationOf(const CParamsVue3D::Frame& frame) {
  const auto up = directionAt(frame, 3);
  const auto direction = directionAt(frame, 6);
  if (!up || !direction) {
    return std::nullopt;
  }
  const Vecteur left = cross(*up, *direction);
  if (left.norm() < kParallel) {
    return std::nullopt;
  }
  return Orientation{-*direction, cross(*direction, normalised(left))};
}

}  // namespace

CParamsVue3D makeBitmapCamera(const std::optional<Box3>& box, ClientSize pixels, double surplus,
                              const std::optional<CParamsVue3D::Frame>& frame) {
  const auto orientation = frame ? orientationOf(*frame) : std::nullopt;
  CParamsVue3D camera;
  if (orientation) {
    camera.fitTurned(*orientation, box, pixels, surplus, 0.0);
  } else {
    camera.fitAxis(AxisView::kXYp, box, pixels, surplus, 0.0);
  }
  return camera;
}

}  // namespace zyn
