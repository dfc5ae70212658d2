#pragma once

#include <array>
#include <cstddef>

namespace zyn::viewer {

/// The colour of a graph's trace (0 for the first), red, green and blue from 0 to 1, readable on
/// white. Neighbours differ clearly; from the eleventh on colours come again, darker.
std::array<double, 3> traceColour(std::size_t index);

}  // namespace zyn::viewer
