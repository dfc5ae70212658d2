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

}  // namespace zyn::viewer
