#include "viewer/PointUnderMouse_com.h"

#include <algorithm>
#include <vector>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"

namespace zyn::viewer {

using host::check;
using host::Vector;

namespace {

/// The direction in which the camera looks; none without a camera.
std::optional<Vector> sightOf(IZYNVue3D2& view) {
  constexpr std::size_t kFrameSize = 16;
  _variant_t value;
  check(view.XFormView(&value), L"XFormView");
  const std::vector<double> frame = host::numbersOf(value);
  return frame.size() == kFrameSize ? std::optional(Vector{frame[6], frame[7], frame[8]})
                                    : std::nullopt;
}

/// What a pixel shows of the plane through a point with a normal.
std::optional<Vector> pointOnPlane(IZYNVue3D2& view, const Vector& through, const Vector& normal,
                                   int x, int y) {
  const std::vector<double> plane = {normal.x, normal.y, normal.z, -dot(normal, through)};
  _variant_t value;
  check(view.getPixelPlanIntersection(x, y, host::numberArray(plane), &value),
        L"getPixelPlanIntersection");
  const std::vector<double> point = host::numbersOf(value);
  return point.size() == 3 ? std::optional(Vector{point[0], point[1], point[2]}) : std::nullopt;
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
  const auto sight = sightOf(view);
  const auto point = sight ? pointOnPlane(view, centre, *sight, x, y) : std::nullopt;
  return point ? std::optional(ModelPoint{*point, std::nullopt}) : std::nullopt;
}

std::optional<double> partUnderMouse(IZYNVue3D2& view, const Vector& a, const Vector& b, int x,
                                     int y) {
  constexpr double kAlongSight = 1e-3;  // sine of the angle between both
  const Vector way = b - a;
  const Vector direction = normalised(way, {});
  const auto sight = sightOf(view);
  if (!sight || length(way) == 0) {
    return std::nullopt;
  }
  // Of the planes that hold the way, the one that faces the viewer most.
  const Vector normal = *sight - direction * dot(*sight, direction);
  if (length(normal) < kAlongSight) {
    return std::nullopt;
  }
  const auto point = pointOnPlane(view, a, normalised(normal, {}), x, y);
  return point ? std::optional(std::clamp(dot(*point - a, way) / dot(way, way), 0.0, 1.0))
               : std::nullopt;
}

}  // namespace zyn::viewer
