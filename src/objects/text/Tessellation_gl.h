#pragma once

#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// A closed line, joined from its last point to its first.
using Contour = std::vector<PlanePoint>;

/// A plane figure as triangles: three corners each, counterclockwise.
using Triangles = std::vector<PlanePoint>;

/// Fills what the contours wind around, however they cross: holes are contours that turn the other
/// way. Needs no rendering context. Throws std::bad_alloc.
Triangles tessellate(const std::vector<Contour>& contours);

}  // namespace zyn
