#pragma once

#include <array>
#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// A closed line, joined from its last point to its first.
using Contour = std::vector<PlanePoint>;

/// A plane figure as triangles: three corners each, counterclockwise.
using Triangles = std::vector<PlanePoint>;

/// The shape of a glyph, in em heights from the start of the baseline.
struct GlyphShape {
  std::vector<Contour> contours;
  Triangles filled;
};

/// The shapes of a font's characters, by the byte that stands for them.
using GlyphShapes = std::array<GlyphShape, 256>;

}  // namespace zyn
