#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "objects/FontMetrics.h"
#include "objects/Tessellation_gl.h"

namespace zyn {

/// The shape of a character, in em heights from the start of the baseline.
struct GlyphShape {
  std::vector<Contour> contours;
  Tessellation filled;
};

/// The shapes of a font's characters, by the byte that stands for them.
using GlyphShapes = std::array<GlyphShape, 256>;

/// Draws a text from the origin along x, an em a unit, in the current colour, without display
/// lists: for rendering contexts that have no fonts of ours. Filled glyphs, and over them their
/// outlines as fine smooth lines, which stay set.
void drawShapes(const GlyphShapes& shapes, const FontMetrics& metrics, std::string_view text);

}  // namespace zyn
