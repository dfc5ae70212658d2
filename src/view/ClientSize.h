#pragma once

#include <cstdint>

namespace zyn {

/// Size in pixels of what a camera is fitted to: a window's client area or a bitmap.
struct ClientSize {
  std::int32_t width = 0;
  std::int32_t height = 0;

  bool operator==(const ClientSize& other) const = default;

  bool isEmpty() const { return width < 1 || height < 1; }

  /// Width over height, in single precision. An empty area counts as square, so that a fit made
  /// while a window is minimised stays finite.
  float aspect() const {
    return isEmpty() ? 1.0F : static_cast<float>(width) / static_cast<float>(height);
  }
};

}  // namespace zyn
