#pragma once

#include <optional>
#include <string_view>

namespace zyn::table {

/// The number in a cell without surrounding blanks; NaN for a gap. None for anything else, numbers
/// too large for a double included. `decimalSign` is '.' or ','.
std::optional<double> cellNumber(std::string_view cell, char decimalSign);

}  // namespace zyn::table
