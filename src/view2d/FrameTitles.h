#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/PlanePoint.h"
#include "objects/text/FontMetrics.h"
#include "view2d/FrameArea.h"
#include "view2d/Graph.h"

namespace zyn {

/// An axis's title in its place, in pixels from the origin of the graph.
struct PlacedTitle {
  struct Text {
    std::string text;
    PlanePoint start;    ///< of the baseline
    double scale = 1.0;  ///< pixels of an em height
  };

  std::vector<Text> texts;
  std::optional<PlanePoint> picture;  ///< lower left corner
  PixelBox box;                       ///< around all of it; empty without a title
};

/// Places the title of the horizontal axis below its right end: the name with the unit below it,
/// or, where there is not the height for that, beside it. A title that would leave the visible area
/// is pulled into it, texts that are too large for it are made smaller.
PlacedTitle placeTitleX(const AxisTitle& title, const FrameArea& area, const FontMetrics& metrics);

/// Places the title of the vertical axis in the same way above its upper end.
PlacedTitle placeTitleY(const AxisTitle& title, const FrameArea& area, const FontMetrics& metrics);

}  // namespace zyn
