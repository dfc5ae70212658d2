#pragma once

#include <functional>
#include <string>
#include <vector>

#include "graph/AxisScale.h"
#include "plot/Drawing.h"
#include "plot/PlotLayout.h"

namespace zyn {

/// What is read of one thing at the cursors.
struct CursorReading {
  std::string name;                                                          ///< UTF-8
  std::function<void(const PixelBox& box, DrawnLayer& layer)> drawSample{};  ///< none without
  std::vector<std::string> values;  ///< one for each cursor, UTF-8
  std::string difference;           ///< between the first two
};

/// Lines across the plot area that the user moves along the bottom axis, with what they read.
struct PlotCursors {
  std::vector<double> places;           ///< values of the bottom axis
  std::vector<CursorReading> readings;  ///< of that axis first, then of what is plotted
};

/// Draws cursors over all else, with one table of the readings beside them where it hides least: as
/// many rows as have room, the last one tells how many have not. `axis` is the bottom one of the
/// layout. Nothing is drawn of a cursor outside of the plot area.
Drawing drawCursors(const PlotCursors& cursors, const PlotLayout& layout, const AxisScale& axis,
                    const PlotInput& input);

}  // namespace zyn
