#pragma once

#include "core/PixelBox.h"
#include "view2d/LabelFont.h"

namespace zyn {

/// Where a graph's frame has room, in pixels from the origin of the graph, in which its axes start.
struct FrameArea {
  /// An axis line goes on beyond its range by this part of it; there is the arrow's tip.
  static constexpr double kOverhang = 0.025;

  double lengthX = 0.0;  ///< of the axes' ranges; below 0 where an axis is mirrored
  double lengthY = 0.0;
  PixelBox visible;
  bool isRuled = false;  ///< lines cross the area at the graduations
  LabelFont font{};

  double tipX() const { return lengthX * (1 + kOverhang); }
  double tipY() const { return lengthY * (1 + kOverhang); }
};

}  // namespace zyn
