#pragma once

#include "view2d/LabelFont.h"

namespace zyn {

/// A box in pixels from the origin of a graph, to the right and upwards.
struct FrameBox {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;

  bool operator==(const FrameBox& other) const = default;

  double width() const { return right - left; }
  double height() const { return top - bottom; }

  bool overlaps(const FrameBox& other) const {
    return left < other.right && other.left < right && bottom < other.top && other.bottom < top;
  }

  bool holds(const FrameBox& other) const {
    return left <= other.left && other.right <= right && bottom <= other.bottom && other.top <= top;
  }

  FrameBox shrunk(double by) const { return {left + by, right - by, bottom + by, top - by}; }
};

/// Where a graph's frame has room, in pixels from the origin of the graph, in which its axes start.
struct FrameArea {
  /// An axis line goes on beyond its range by this part of it; there is the arrow's tip.
  static constexpr double kOverhang = 0.025;

  double lengthX = 0.0;  ///< of the axes' ranges; below 0 where an axis is mirrored
  double lengthY = 0.0;
  FrameBox visible;
  bool isRuled = false;  ///< lines cross the area at the graduations
  LabelFont font{};

  double tipX() const { return lengthX * (1 + kOverhang); }
  double tipY() const { return lengthY * (1 + kOverhang); }
};

}  // namespace zyn
