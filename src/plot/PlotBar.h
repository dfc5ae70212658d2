#pragma once

#include <string>

#include "objects/scale/ColourScale.h"

namespace zyn {

/// A colour scale that stands beside the plot area as a bar of its colours with an axis.
struct PlotBar {
  ColourScale scale;
  std::string title;  ///< UTF-8

  bool operator==(const PlotBar&) const = default;
};

}  // namespace zyn
