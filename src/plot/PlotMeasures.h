#pragma once

#include <algorithm>
#include <cmath>

namespace zyn {

/// Lengths around a plot area, in pixels of the picture.
struct PlotMeasures {
  PlotMeasures(double pixelScale, double points)
      : scale(pixelScale), emHeight(std::max(1.0, std::round(points * 96 / 72 * pixelScale))) {}

  double scale;
  double emHeight;  ///< of labels
  double titleEm = std::round(1.4 * emHeight);
  double subtitleEm = std::round(1.1 * emHeight);
  double axisTitleEm = std::round(1.1 * emHeight);

  double line = std::max(1.0, std::round(scale));
  double tick = std::round(5 * scale);
  double minorTick = std::round(3 * scale);
  double gap = std::round(5 * scale);       ///< between a tick and its label, and between rows
  double axisGap = std::round(10 * scale);  ///< between axes on one side
  double pad = std::round(8 * scale);       ///< around everything
  double edge = std::ceil(2 * scale);       ///< that texts leave free at least
};

}  // namespace zyn
