#include "viewer/PointUnderMouse_com.h"

#include <array>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"

namespace zyn::viewer {

using host::check;
using host::Vector;

namespace {

/// The plane through a point that the camera looks at squarely: four coefficients; none without a
/// camera.
std::vector<double> planeFacing(IZYNVue3D2& view, const Vector& point) {
  constexpr std::size_t kFrameSize = 16;
  _variant_t value;
  check(view.XFormView(&value), L"XFormView");
  const std::vector<double> frame = host::numbersOf(value);
  if (frame.size() != kFrameSize) {
    return {};
  }
  const Vector sight{frame[6], frame[7], frame[8]};
  return {sight.x, sight.y, sight.z, -dot(sight, point)};
}

}  // namespace

std::optional<ModelPoint> pointUnderMouse(IZYNVue3D2& view, const Vector& centre, int x, int y) {
  _variant_t value;
  host::checkTold(view.getPointSurface(x, y, &value), L"getPointSurface");
  const std::vector<double> surface = host::numbersOf(value);
  if (surface.size() == 6) {
    return ModelPoint{{surface[0], surface[1], surface[2]},
                      Vector{surface[3], surface[4], surface[5]}};
  }
  const std::vector<double> plane = planeFacing(view, centre);
  if (plane.empty()) {
    return std::nullopt;
  }
  check(view.getPixelPlanIntersection(x, y, host::numberArray(plane), &value),
        L"getPixelPlanIntersection");
  const std::vector<double> point = host::numbersOf(value);
  return point.size() == 3 ? std::optional(ModelPoint{{point[0], point[1], point[2]}, std::nullopt})
                           : std::nullopt;
}

}  // namespace zyn::viewer
