#pragma once

#include <cstdint>

namespace zyn {

/// Copies one row of pixels, dropping the fourth byte of each: blue, green, red, x becomes blue,
/// green, red. The rows must not overlap.
void packRow(const std::uint8_t* from, std::uint8_t* to, int pixels);

}  // namespace zyn
