#pragma once

namespace zyn {

/// A client pixel: x from the left, y from the top.
struct PixelPoint {
  int x = 0;
  int y = 0;

  bool operator==(const PixelPoint& other) const = default;
};

}  // namespace zyn
