#pragma once

#include <span>
#include <string>
#include <vector>

#include "common/Vector.h"
#include "zynshot/Frame.h"

namespace zyn::shot {

/// One overall size of a model, as a dimension along an edge of its box.
struct Dimension {
  host::Vector first;  ///< ends of the edge
  host::Vector second;
  host::Vector normal;  ///< of the dimension's plane; normal x edge leads away from the model
  double length = 0.0;  ///< model units
};

/// The sizes of a box that can be read off a picture, each at an edge on the outline of the box, at
/// the lower or right side of the picture. A size that is 0, or that the viewer looks along, is
/// left out.
std::vector<Dimension> overallDimensions(const host::Bounds& bounds, const Frame& frame);

/// The margin around a model, as a fraction of its size, that leaves room for its dimensions in a
/// picture of so many pixels. `pixelScale`: of these for a pixel of a screen.
double roomForDimensions(int width, int height, double pixelScale);

/// Lengths as one picture states them, all with as many decimals: the largest has four digits, the
/// smallest two, and zeros at the end that all have are left out.
std::vector<std::string> lengthTexts(std::span<const double> lengths);

}  // namespace zyn::shot
