#pragma once

#include <array>
#include <optional>
#include <vector>

namespace zyn {

/// Red, green, blue, alpha.
using Colour4 = std::array<float, 4>;

/// Background colour as hosts give it: red, green, blue and, if given, alpha, which is 0 otherwise.
/// None for any other count.
std::optional<Colour4> backgroundColour(const std::vector<double>& numbers);

}  // namespace zyn
