#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "objects/scale/ColourScale.h"
#include "plot/PlotSeries.h"

namespace zyn {

/// The picture of a map that was drawn last, and for what.
struct MapPicture {
  std::shared_ptr<const PixelImage> image;
  PixelBox box{};           ///< where it was
  WindowMapping mapping{};  ///< when it was made
  std::uint64_t mapRevision = 0;
  std::uint64_t scaleRevision = 0;
};

/// A heat map: values in cells, coloured by a scale.
struct PlotMap {
  std::vector<double> values;  ///< row by row, the first at y0
  std::size_t rows = 0;
  std::size_t columns = 0;
  double x0 = 0.0;  ///< outer edges, in units of the axes; the second may be below the first
  double x1 = 1.0;
  double y0 = 0.0;
  double y1 = 1.0;
  bool isInterpolated = false;  ///< in the value, between the middles of cells
  bool isVisible = true;
  std::uint64_t revision = 0;  ///< to be counted up with each change of the above

  MapPicture picture{};
};

/// Draws what can be seen of a map into a layer that is clipped to the plot area. `scaleRevision`:
/// another number for each other scale. While the view is moved by whole pixels nothing is made
/// anew.
void drawMap(PlotMap& map, const ColourScale& scale, std::uint64_t scaleRevision,
             const PlotPlace& place, DrawnLayer& layer);

/// What the axes have to show of it, in their coordinates; none where they can show nothing.
std::optional<Box3> extentOf(const PlotMap& map, const AxisLogs& logs);

/// The value at a place in units of the axes, as it is drawn on linear ones: that of the cell, or
/// between the middles of cells. None outside.
std::optional<double> valueAt(const PlotMap& map, const PlanePoint& at);

/// What its scale has to span.
ValueExtent valuesOf(const PlotMap& map);

}  // namespace zyn
