#pragma once

#include <array>
#include <cstdint>

namespace zyn {

/// 256 colours from the low end of a scale to its high end: red, green, blue in millionths, as
/// their authors published them.
using PaletteTable = std::array<std::array<std::uint32_t, 3>, 256>;

extern const PaletteTable kViridisTable;
extern const PaletteTable kPlasmaTable;
extern const PaletteTable kTurboTable;
extern const PaletteTable kCoolWarmTable;

}  // namespace zyn
