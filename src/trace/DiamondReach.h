#pragma once

#include <algorithm>
#include <cmath>

#include "trace/WindowMapping.h"

namespace zyn {

/// How far a point reaches along a column into the diamond in the middle of its pixel: OpenGL draws
/// the pixels whose diamond a line leaves, so that the corners of a pixel do not count.
struct DiamondReach {
  AffineForm along;
  AffineForm across;
  double middle;    ///< of the column
  bool isAtMiddle;  ///< the middles of pixels lie there, not at the column's edges

  double at(double x, double y, double z) const {
    const double away = std::fabs(across.at(x, y, z) - middle);
    return isAtMiddle ? along.at(x, y, z) - away : along.at(x, y, z) + away;
  }
  double highest(const Box3& box) const {
    const double low = across.lowest(box) - middle;
    const double high = across.highest(box) - middle;
    return isAtMiddle ? along.highest(box) - std::max({low, -high, 0.0})
                      : along.highest(box) + std::max(-low, high);
  }
};

}  // namespace zyn
