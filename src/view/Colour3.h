#pragma once

#include <algorithm>
#include <array>

namespace zyn {

/// Red, green, blue.
using Colour3 = std::array<float, 3>;

/// Whether every component lies in 0..1.
inline bool isColour(const Colour3& colour) {
  return std::all_of(colour.begin(), colour.end(),
                     [](float component) { return component >= 0.0F && component <= 1.0F; });
}

}  // namespace zyn
