#include "view3d/TrihedronPlacement.h"

#include <algorithm>
#include <cmath>

#include "core/VectorMath.h"

namespace zyn {

namespace {

/// An axis takes this part of the view's shorter side, more where it is scaled.
constexpr double kLengthsPerSide = 12.0;

bool isFinite(const Point& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

}  // namespace

std::optional<TrihedronPlacement> TrihedronPlacement::in(const CParamsVue3D& camera, double scale) {
  TrihedronPlacement placement;
  const Vecteur direction = camera.direction();
  placement.length = scale * std::min(camera.width(), camera.height()) / kLengthsPerSide;
  placement.right = normalised(cross(direction, camera.up()));
  placement.up = cross(placement.right, direction);
  placement.towardsViewer = -direction;
  placement.origin = camera.target() - (camera.width() / 2 - placement.length) * placement.right -
                     (camera.height() / 2 - placement.length) * placement.up;
  if (!(placement.length > 0) || !isFinite(placement.origin)) {
    return std::nullopt;
  }
  return placement;
}

}  // namespace zyn
