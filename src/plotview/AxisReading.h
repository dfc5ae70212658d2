#pragma once

#include <optional>
#include <string>

#include "plot/PlotAxis.h"
#include "plot/PlotLayout.h"

namespace zyn {

/// How cursors read values of an axis: precise to a pixel, all with the same decimals, with its
/// unit.
class AxisReading {
 public:
  AxisReading(const PlotAxis& axis, const AxisLayout& layout);

  std::string text(const std::optional<double>& value) const;

  /// Between values; of dates a duration.
  std::string difference(const std::optional<double>& from, const std::optional<double>& to) const;

 private:
  std::string number(double value) const;

  AxisScale scale_;
  std::string unit_;
  std::string format_;
};

}  // namespace zyn
