#pragma once

#include <optional>

#include "ZYNVUE.h"
#include "common/Vector.h"

namespace zyn::viewer {

struct ModelPoint {
  host::Vector position;
  std::optional<host::Vector> normal;  ///< of the surface; none: on a plane that faces the viewer
};

/// The point that the person sees at a pixel of the view: on a surface, else on the plane through
/// `centre` that faces the viewer; none before the view has a camera.
std::optional<ModelPoint> pointUnderMouse(IZYNVue3D2& view, const host::Vector& centre, int x,
                                          int y);

/// Which part of the way from `a` to `b`, 0 to 1, is seen at a pixel or next to it; none where the
/// way leads along the line of sight.
std::optional<double> partUnderMouse(IZYNVue3D2& view, const host::Vector& a, const host::Vector& b,
                                     int x, int y);

}  // namespace zyn::viewer
