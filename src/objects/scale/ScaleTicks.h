#pragma once

#include <string>
#include <vector>

#include "objects/scale/ColourScale.h"

namespace zyn {

/// A mark beside a scale.
struct ScaleTick {
  double place = 0.0;  ///< of the scale, 0 to 1
  std::string label;
};

/// At most that many marks, from the low end up: multiples of 1, 2 or 5 times a power of ten with
/// equal decimals; on a logarithmic scale powers of ten, and their multiples where there is room.
/// No two labels are alike. None where the scale shows nothing, or ends too near to each other.
std::vector<ScaleTick> ticksOf(const ColourScale& scale, int most);

}  // namespace zyn
