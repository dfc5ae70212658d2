#pragma once

#include <optional>
#include <string>

#include "core/Box3.h"
#include "graph/SeriesData.h"
#include "plot/PlotSeries.h"

namespace zyn {

/// What a graph shows by two of its axes. Nothing here calls foreign code.
class PlotItem {
 public:
  PlotItem() = default;
  virtual ~PlotItem() = default;
  PlotItem(const PlotItem&) = delete;
  PlotItem& operator=(const PlotItem&) = delete;

  /// What the axes have to show of it, in their coordinates; none without anything that they can.
  virtual std::optional<Box3> extent(const AxisLogs& logs) = 0;

  /// Its values, if it is a series.
  virtual std::shared_ptr<PlotSeries> series() { return nullptr; }

  virtual bool isVisible() const { return true; }
  virtual void show(bool /*isVisible*/) {}

  /// Draws it into a layer that is clipped to the plot area.
  virtual void draw(const PlotPlace& place, const BarPlace& bars, const DrawColour& colour,
                    DrawnLayer& layer) = 0;
};

}  // namespace zyn
