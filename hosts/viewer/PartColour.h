#pragma once

#include <array>

namespace zyn::viewer {

/// Red, green and blue, 0 to 1.
using Colour = std::array<double, 3>;

/// The colour of a part (1, 2, …): soft tones that follow each other, or the signal colour of what
/// is selected.
Colour partColour(int part, bool selected);

}  // namespace zyn::viewer
