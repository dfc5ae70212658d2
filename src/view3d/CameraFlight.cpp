#include "view3d/CameraFlight.h"

#include <algorithm>

namespace zyn {

CParamsVue3D CameraFlight::cameraAt(double now) const {
  if (isOver(now)) {
    return aim_;
  }
  const double t = std::clamp((now - start_) / duration_, 0.0, 1.0);
  const double eased = t * t * (3 - 2 * t);
  CParamsVue3D camera(aim_);
  camera.take(between(from_.value(), aim_.value(), eased));
  return camera;
}

}  // namespace zyn
