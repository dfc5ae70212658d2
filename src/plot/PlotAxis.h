#pragma once

#include <optional>
#include <string>

#include "graph/AxisScale.h"
#include "graph/TickLabels.h"
#include "plot/Drawing.h"

namespace zyn {

/// As hosts number them.
enum class AxisSide { kBottom, kLeft, kTop, kRight };

constexpr bool isHorizontal(AxisSide side) {
  return side == AxisSide::kBottom || side == AxisSide::kTop;
}

/// An axis of a graph, as it was set.
struct PlotAxis {
  AxisSide side = AxisSide::kBottom;
  AxisKind kind = AxisKind::kLinear;
  ValueRange range{};    ///< that is shown where it is not chosen by itself
  bool isAuto = true;    ///< the range is that of what is shown by the axis
  bool hasWidth = true;  ///< false where following began with nothing to show: it widens then
  bool isInverted = false;

  std::string title;                   ///< UTF-8
  std::string unit;                    ///< UTF-8
  std::string format;                  ///< as it was set, UTF-8
  TickFormat tickFormat{};             ///< of `format`
  std::optional<DrawColour> colour{};  ///< none: that of the theme
  std::optional<bool> isVisible{};     ///< none: at the bottom, on the left, and where it is used
  bool hasGrid = false;
  bool hasFineGrid = false;
};

}  // namespace zyn
