#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "objects/scale/ColourScale.h"
#include "plot/PlotSeries.h"

namespace zyn {

/// A heat map: values in cells, coloured by a scale.
struct PlotMap {
  std::vector<double> values;  ///< row by row, `columns` each; the first row lies at y0
  std::size_t rows = 0;
  std::size_t columns = 0;
  double x0 = 0.0;  ///< outer edges, in units of the axes
  double x1 = 1.0;
  double y0 = 0.0;
  double y1 = 1.0;
  bool isInterpolated = false;  ///< between the middles of cells, in the value
  bool isVisible = true;
  std::uint64_t revision = 0;  ///< to be counted up with each change of the above

  /// The picture that was drawn last, and for what.
  struct Cache;
  std::shared_ptr<Cache> cache;
};

/// Draws what can be seen of a map into a layer that is clipped to the plot area. `scaleRevision`:
/// another number for each other scale.
void drawMap(PlotMap& map, const ColourScale& scale, std::uint64_t scaleRevision,
             const PlotPlace& place, DrawnLayer& layer);

/// What the axes have to show of it, in their coordinates; none without a cell that they can.
std::optional<Box3> extentOf(const PlotMap& map, const AxisLogs& logs);

/// What its scale has to span.
ValueExtent valuesOf(const PlotMap& map);

}  // namespace zyn
