#pragma once

#include <string>
#include <string_view>

namespace zyn::viewer {

/// What an axis of a graph shows: a range, and the steps of its graduations. All above 0.
struct AxisRange {
  double low = 0.0;
  double high = 1.0;
  double bigStep = 0.2;
  double smallStep = 0.1;

  double size() const { return high - low; }
};

/// A range around the values from `low` to `high`, both finite, that ends at graduations.
AxisRange linearRange(double low, double high);

/// The same for values that are decimal logarithms: ends at decades and has a graduation at each.
AxisRange decadeRange(double low, double high);

/// What a column's name says: "Temperature [°C]" and "Temperature (°C)" have a unit.
struct AxisTitle {
  std::string name;
  std::string unit;  ///< without the brackets; empty for none
};

AxisTitle axisTitle(std::string_view columnName);

}  // namespace zyn::viewer
