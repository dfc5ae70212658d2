#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/PlanePoint.h"
#include "core/Point.h"
#include "objects/text/FontMetrics.h"
#include "view2d/FrameLabels.h"
#include "view2d/FrameTitles.h"
#include "view2d/Graph.h"

namespace zyn {

/// The frame of a graph, ready to be drawn: everything in pixels of a screen from the graph's
/// origin, to the right and upwards. The font metrics it was laid out with are to outlive it.
struct FrameLayout {
  struct Line {
    PlanePoint from;
    PlanePoint to;
  };

  /// Drawn together, in the order of the groups.
  struct LineGroup {
    GraphColour colour;
    double alpha = 1.0;
    double width = 1.0;  ///< pixels
    std::vector<Line> lines;
  };

  using Arrow = std::array<PlanePoint, 3>;

  GraphColour colour{};  ///< of all but the lines
  LabelFont labelFont{};
  std::vector<LineGroup> lines;
  std::vector<Arrow> arrows;
  std::vector<PlacedLabel> labels;
  PlacedTitle titleX;
  PlacedTitle titleY;
};

/// Lays a frame out in its window; empty for a range or a placement that is not finite.
FrameLayout layOutFrame(const LinearGraph& graph, const GraphPlacement& placement,
                        const FontMetrics& metrics);
FrameLayout layOutFrame(const LogLogGraph& graph, const GraphPlacement& placement,
                        const FontMetrics& metrics);

}  // namespace zyn
