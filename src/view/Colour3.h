#pragma once

#include <array>
#include <optional>

namespace zyn {

/// Red, green, blue.
using Colour3 = std::array<float, 3>;

/// Whether every component lies in 0..1.
bool isColour(const Colour3& colour);

/// Whether a colour is nearer to black than to white.
bool isDark(const Colour3& colour);

/// Colour of the background gradient as hosts give it: all components in 0..1, or all in 0..255 as
/// soon as one exceeds 1. None for a negative component, one above 255, or one that is not a
/// number.
std::optional<Colour3> gradientColour(float r, float g, float b);

}  // namespace zyn
