#pragma once

#include <string>
#include <vector>

#include "core/PlanePoint.h"
#include "view2d/FrameArea.h"
#include "view2d/Graduations.h"

namespace zyn {

/// A graduation's label in its place, in pixels from the origin of the graph.
struct PlacedLabel {
  std::string label;
  std::string exponent;
  PixelBox box;              ///< the label starts in its lower left corner
  PlanePoint exponentStart;  ///< lower left corner
};

/// Places the labels of both axes: those of the horizontal one below it, centred under their
/// graduations, those of the vertical one to its left, or to its right where there is no room.
/// Labels that would touch one another, an axis or one of the boxes are left out, and all stay
/// within the visible area.
std::vector<PlacedLabel> placeLabels(const Graduations& x, const Graduations& y,
                                     const FrameArea& area, const std::vector<PixelBox>& boxes);

}  // namespace zyn
