#pragma once

#include <cstdint>
#include <optional>

namespace zyn {

/// What dragging the mouse does. While the middle button navigates, a mode that follows the keys
/// stands in for the one that the host has set.
class MouseMode {
 public:
  /// Any other value does nothing.
  enum Value : std::int32_t {
    kSelectAlso = -2,
    kSelect = -1,
    kPan = 1,
    kRotate = 2,
    kZoom = 3,
    kSelectOnce = 4,  ///< a rubber band, then the mode before comes back
  };

  /// The mode in effect.
  std::int32_t value() const { return standIn_.value_or(set_); }

  void set(std::int32_t value);

  void standIn(Value value) { standIn_ = value; }
  void endStandIn() { standIn_.reset(); }

  /// Whether a mode is set that lasts for one rubber band.
  bool isOnce() const { return set_ == kSelectOnce; }

  /// Sets such a mode back to the one before; does nothing to any other.
  void endOnce();

  bool isSelection() const { return value() == kSelect || value() == kSelectAlso; }

 private:
  std::int32_t set_ = kRotate;
  std::int32_t previous_ = kRotate;  ///< never kSelectOnce
  std::optional<std::int32_t> standIn_;
};

}  // namespace zyn
