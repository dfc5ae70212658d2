#pragma once

#include <string>
#include <vector>

#include "graph/AxisScale.h"
#include "plot/Drawing.h"
#include "plot/PlotLayout.h"

namespace zyn {

/// A line across the plot area that the user moves along the bottom axis, with what it reads.
struct PlotCursor {
  double value = 0.0;                 ///< of the bottom axis
  std::vector<std::string> readings;  ///< lines of text, UTF-8
};

/// Draws cursors over all else, each with its readings beside it where they hide no others. `axis`
/// is the bottom one of the layout. Nothing is drawn of a cursor outside of the plot area.
Drawing drawCursors(const std::vector<PlotCursor>& cursors, const PlotLayout& layout,
                    const AxisScale& axis, const PlotInput& input);

}  // namespace zyn
