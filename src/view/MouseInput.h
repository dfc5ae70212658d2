#pragma once

#include <cstdint>

#include "core/saturate.h"

namespace zyn {

/// Numbers of the buttons in events.
enum class MouseButton { kLeft = 0, kRight = 1, kMiddle = 2 };

/// The keys and buttons held with a mouse message, as its first parameter carries them.
class MouseKeys {
 public:
  static constexpr std::uint32_t kLeft = 0x01;
  static constexpr std::uint32_t kRight = 0x02;
  static constexpr std::uint32_t kShift = 0x04;
  static constexpr std::uint32_t kControl = 0x08;
  static constexpr std::uint32_t kMiddle = 0x10;
  static constexpr std::uint32_t kExtra = 0x60;  ///< the fourth and the fifth button

  constexpr explicit MouseKeys(std::uint32_t flags = 0) : flags_(flags) {}

  constexpr bool control() const { return holds(kControl); }
  constexpr bool shift() const { return holds(kShift); }
  constexpr bool left() const { return holds(kLeft); }
  constexpr bool middle() const { return holds(kMiddle); }
  constexpr bool anyButton() const { return holds(kLeft | kRight | kMiddle | kExtra); }
  constexpr bool onlyLeftButton() const { return left() && !holds(kRight | kMiddle | kExtra); }

  /// The Key of events about presses and releases: 1 with Control, else 2 with Shift, else 0.
  constexpr int key() const { return control() ? 1 : shift() ? 2 : 0; }

  /// The Key of events about moves: as key(), but 3 when the left button alone is held.
  constexpr int moveKey() const { return key() == 0 && onlyLeftButton() ? 3 : key(); }

 private:
  constexpr bool holds(std::uint32_t flags) const { return (flags_ & flags) != 0; }

  std::uint32_t flags_;
};

/// How the wheel is taken: the other way round, and multiplied by a gain.
struct Wheel {
  bool inverse = false;
  double acceleration = 1.0;

  /// The amount, 120 for one notch, without its fraction.
  int turned(int delta) const {
    return saturatedInteger((inverse ? -1.0 : 1.0) * delta * acceleration);
  }
};

}  // namespace zyn
