#pragma once

#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// A closed line, joined from its last point to its first.
using Contour = std::vector<PlanePoint>;

/// A plane figure as triangles.
struct Tessellation {
  std::vector<PlanePoint> corners;  ///< three a triangle, counterclockwise
  bool hasCrossings = false;        ///< contours cross: there are corners of none of them
};

/// Fills what the contours wind around, however they cross: holes are contours that turn the other
/// way. Needs no rendering context. Throws std::bad_alloc.
Tessellation tessellate(const std::vector<Contour>& contours);

}  // namespace zyn
