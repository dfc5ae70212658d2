#pragma once

#include "view2d/CParamsVue2D.h"

namespace zyn {

/// A view of the plane and the scales from model units to its units.
struct ScaledView {
  CParamsVue2D view;
  double xScale = 1.0;
  double yScale = 1.0;
};

}  // namespace zyn
