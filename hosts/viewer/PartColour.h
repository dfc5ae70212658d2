#pragma once

#include <array>

namespace zyn::viewer {

/// Red, green and blue, 0 to 1.
using Colour = std::array<double, 3>;

/// The colour of a part (1, 2, …): soft tones that follow each other.
Colour partColour(int part);

/// The signal colours of what is selected.
inline constexpr Colour kSelectedColour = {1.0, 0.45, 0.1};
inline constexpr Colour kSelectedEdgeColour = {0.8, 0.27, 0.0};

}  // namespace zyn::viewer
