#pragma once

#include <optional>

#include "ZYNVUE.h"
#include "viewer/Model_com.h"

namespace zyn::viewer {

struct ModelPoint {
  mesh::Vector position;
  bool onSurface;  ///< else on the plane through the model's centre that faces the viewer
};

/// The point of the model that the person sees at a pixel of the view, where part `hovered` (0 for
/// none) lies; none before the view has a camera.
std::optional<ModelPoint> pointUnderMouse(IZYNVue3D& view, const Model& model, int hovered, int x,
                                          int y);

}  // namespace zyn::viewer
