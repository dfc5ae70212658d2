#pragma once

#include <cstdint>

namespace zyn {

/// What the left button of a 2D view does, and what it does again after a mode that lasts only for
/// a while.
class MouseMode2D {
 public:
  /// Any other value drags and does nothing else.
  enum Value : std::int32_t {
    kSelectAlso = -2,
    kSelect = -1,
    kPan = 1,
    kNearest = 3,
    kZoomRectangle = 4,
  };

  std::int32_t value() const { return value_; }
  std::int32_t previous() const { return previous_; }

  /// Takes any value; remembers the mode being left, except for the zoom to a rectangle.
  void set(std::int32_t value);

  /// A rectangle has been zoomed to: back to the mode before, unless `maintain`.
  void endZoom(bool maintain);

  /// Pans until endPan, which goes back to the mode before, whatever that was, or until the host
  /// sets another. Each does nothing when it comes out of turn.
  void beginPan();
  void endPan();

  bool isPanning() const { return panning_; }

  bool isSelection() const { return value_ == kSelect || value_ == kSelectAlso; }

 private:
  std::int32_t value_ = kNearest;
  std::int32_t previous_ = 2;
  bool panning_ = false;
};

}  // namespace zyn
