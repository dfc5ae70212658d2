#pragma once

#include <cstdint>
#include <cstdlib>

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

/// A client pixel: x from the left, y from the top.
struct PixelPoint {
  int x = 0;
  int y = 0;

  bool operator==(const PixelPoint& other) const = default;
};

/// The rectangle that is being dragged: the pixels of two opposite corners.
struct RubberBand {
  PixelPoint press;
  PixelPoint current;

  bool operator==(const RubberBand& other) const = default;
};

/// The rectangle that a pick looks at, in client pixels (x from the left, y from the top).
struct PickRegion {
  double centreX = 0.0;
  double centreY = 0.0;
  double width = 1.0;
  double height = 1.0;

  bool operator==(const PickRegion& other) const = default;

  /// A square of `size` pixels about the point that the pixel's coordinates name.
  static PickRegion around(PixelPoint pixel, double size) {
    return {static_cast<double>(pixel.x), static_cast<double>(pixel.y), size, size};
  }

  /// The rectangle between two pixels.
  static PickRegion between(PixelPoint a, PixelPoint b) {
    return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0, static_cast<double>(std::abs(a.x - b.x)),
            static_cast<double>(std::abs(a.y - b.y))};
  }
};

}  // namespace zyn
