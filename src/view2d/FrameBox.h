#pragma once

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

}  // namespace zyn
