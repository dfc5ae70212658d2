#pragma once

#include <optional>

#include "core/PlanePoint.h"
#include "graph/NearestOnScreen.h"
#include "plot/PlotSeries.h"

namespace zyn {

/// The point of a series nearest to a place in units of the axes, as it looks where the series is
/// plotted; null: where a pixel is a unit. None without points, or for a place that the axes cannot
/// show.
std::optional<NearestOnScreen> nearestTo(PlotSeries& series, const PlanePoint& target,
                                         const PlotPlace* place);

/// How far a place of the picture is from what is drawn of a series: its points, lines, the middles
/// of its bars, in pixels. None where that is more than `reach`.
std::optional<double> distanceTo(PlotSeries& series, const PlanePoint& at, const PlotPlace& place,
                                 double reach);

/// The value of a series at a place of the x axis: interpolated as lines are drawn on these axes,
/// held by steps; none outside of its points and in gaps.
std::optional<double> valueAt(PlotSeries& series, double x, const AxisLogs& logs);

}  // namespace zyn
