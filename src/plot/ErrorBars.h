#pragma once

#include <vector>

#include "plot/PlotSeries.h"

namespace zyn {

/// The error bars of a series, as far as they reach into the plot area, between pixels; `trace` are
/// its points in the picture. Where there are more than a few for each column of pixels (or row),
/// one for each column that covers what those in it cover.
std::vector<PixelBox> errorBars(const SeriesData& data, const TraceInWindow& trace,
                                const PlotPlace& place);

}  // namespace zyn
