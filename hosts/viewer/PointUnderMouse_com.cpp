#include "viewer/PointUnderMouse_com.h"

#include <array>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"
#include "viewer/Ray.h"

namespace zyn::viewer {

using host::check;

namespace {

/// The direction in which the camera looks.
std::optional<mesh::Vector> sightOf(IZYNVue3D& view) {
  constexpr std::size_t kFrameSize = 16;
  _variant_t value;
  check(view.XFormView(&value), L"XFormView");
  const std::vector<double> frame = host::numbersOf(value);
  if (frame.size() != kFrameSize) {
    return std::nullopt;
  }
  return mesh::Vector{frame[6], frame[7], frame[8]};
}

}  // namespace

std::optional<ModelPoint> pointUnderMouse(IZYNVue3D& view, const Model& model, int hovered, int x,
                                          int y) {
  const std::optional<mesh::Vector> sight = sightOf(view);
  if (!sight) {
    return std::nullopt;
  }
  const std::array plane = {sight->x, sight->y, sight->z, -dot(*sight, model.bounds().centre())};
  _variant_t value;
  check(view.getPixelPlanIntersection(x, y, host::numberArray(plane), &value),
        L"getPixelPlanIntersection");
  const std::vector<double> numbers = host::numbersOf(value);
  if (numbers.size() != 3) {
    return std::nullopt;
  }
  const mesh::Vector point{numbers[0], numbers[1], numbers[2]};
  if (const auto surface = firstHit({point, *sight}, model.facetsOf(hovered))) {
    return ModelPoint{*surface, true};
  }
  return ModelPoint{point, false};
}

}  // namespace zyn::viewer
