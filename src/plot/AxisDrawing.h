#pragma once

#include <vector>

#include "objects/scale/ColourScale.h"
#include "plot/PlacedAxis.h"

namespace zyn {

/// A box beside the plot area: along its side from one pixel to another, and outwards from its edge
/// (below 0 within).
struct BesideArea {
  double from = 0.0;
  double to = 0.0;
  double inner = 0.0;
  double outer = 0.0;

  PixelBox on(AxisSide side, const PixelBox& area) const;
};

/// Lines at ticks, those of all fine grids below those of others.
void drawGrids(const std::vector<PlacedAxis>& axes, const PixelBox& area,
               const AxisContext& context, DrawnLayer& layer);

/// The edges of the plot area, within it, in the colours of the axes that lie there.
void drawFrame(const std::vector<PlacedAxis>& axes, const PixelBox& area,
               const AxisContext& context, DrawnLayer& layer);

/// Ticks, and the line of an axis that does not lie at the plot area.
void drawAxis(const PlacedAxis& axis, const PixelBox& area, const PlotMeasures& measures,
              DrawnLayer& layer);

/// The bar of an axis, from its first colour to its last one.
void drawBar(const PlacedAxis& axis, const ColourScale& scale, const PixelBox& area,
             const PlotMeasures& measures, DrawnLayer& layer);

/// As many as have room.
void putLabels(const PlacedAxis& axis, const PixelBox& area, const PlotMeasures& measures,
               TextPlacer& placer);
/// Along the middle of its axis, further where it is longer.
void putAxisTitle(const PlacedAxis& axis, const PixelBox& area, const AxisContext& context,
                  TextPlacer& placer);

}  // namespace zyn
