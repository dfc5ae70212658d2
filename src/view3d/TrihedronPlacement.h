#pragma once

#include <optional>

#include "core/Point.h"
#include "core/Vecteur.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// Where the coordinate axes are drawn: near the lower left corner of the view, in the plane
/// through the target that faces the viewer.
struct TrihedronPlacement {
  Point origin;
  double length = 0.0;  ///< of an axis, in scene units

  // The directions of the screen, of length 1.
  Vecteur right;
  Vecteur up;
  Vecteur towardsViewer;

  /// `scale` times as large as a view has it by itself; none for a camera that shows nothing.
  static std::optional<TrihedronPlacement> in(const CParamsVue3D& camera, double scale = 1.0);
};

}  // namespace zyn
