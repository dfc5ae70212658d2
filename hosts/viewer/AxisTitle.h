#pragma once

#include <string>
#include <string_view>

namespace zyn::viewer {

/// What a column's name says: "Temperature [°C]" and "Temperature (°C)" have a unit.
struct AxisTitle {
  std::string name;
  std::string unit;  ///< without the brackets; empty for none

  /// "Temperature (°C)".
  std::string text() const { return unit.empty() ? name : name + " (" + unit + ')'; }
};

AxisTitle axisTitle(std::string_view columnName);

}  // namespace zyn::viewer
