#pragma once

#include <cstddef>
#include <vector>

#include "trace/CellRun.h"

namespace zyn {

/// Appends to `chosen`, in order, the points of the run whose lines light the same pixels as the
/// lines through all of its points.
void outlineRun(const TraceInWindow& trace, const PixelGrid& grid, const CellRun& run,
                std::vector<std::size_t>& chosen);

}  // namespace zyn
