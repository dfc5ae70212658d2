#pragma once

#include <vector>

#include "core/PlanePoint.h"

namespace zyn {

/// A glyph whose contours cross, as triangles in em heights: three corners each,
/// counterclockwise.
struct CrossedGlyph {
  unsigned char character;
  std::vector<PlanePoint> corners;
};

/// The crossed glyphs of the text font: letters with a cedilla or a ring, mostly. As polygons,
/// wglUseFontOutlines of some systems (Wine) leaves them out. Found once per process.
const std::vector<CrossedGlyph>& crossedGlyphs();

}  // namespace zyn
