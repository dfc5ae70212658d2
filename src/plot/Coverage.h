#pragma once

#include <cstdint>
#include <vector>

#include "objects/text/GlyphShape.h"
#include "plot/Drawing.h"

namespace zyn {

/// By how much a figure covers each pixel, 0 to 255; rows from the bottom up.
struct Coverage {
  int left = 0;  ///< of the lower left pixel, in pixels of the figure
  int bottom = 0;
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  bool isEmpty() const { return pixels.empty(); }
};

/// A figure of pixels, exact to the last part of each. Holes are contours that turn the other way.
Coverage coverageOf(const std::vector<Contour>& figure);

/// The marker around the origin, in pixels.
std::vector<Contour> outlineOf(const DrawnMarkers& marker);

}  // namespace zyn
