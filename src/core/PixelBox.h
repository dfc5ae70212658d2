#pragma once

namespace zyn {

/// A rectangle in pixels, to the right and upwards.
struct PixelBox {
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;

  bool operator==(const PixelBox&) const = default;

  double width() const { return right - left; }
  double height() const { return top - bottom; }
  bool isEmpty() const { return !(left < right && bottom < top); }

  bool overlaps(const PixelBox& other) const {
    return left < other.right && other.left < right && bottom < other.top && other.bottom < top;
  }
  bool holds(const PixelBox& other) const {
    return left <= other.left && other.right <= right && bottom <= other.bottom && other.top <= top;
  }
  /// A point within or on an edge; nothing if it is empty.
  bool holds(double x, double y) const {
    return !isEmpty() && left <= x && x <= right && bottom <= y && y <= top;
  }
  PixelBox shrunk(double by) const { return {left + by, right - by, bottom + by, top - by}; }
};

}  // namespace zyn
