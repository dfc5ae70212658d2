#pragma once

namespace zyn {

/// Which of two axes are logarithmic. A coordinate on such an axis is the logarithm to base 10;
/// values that are not above 0 have none.
struct AxisLogs {
  bool x = false;
  bool y = false;

  bool any() const { return x || y; }
  bool operator==(const AxisLogs&) const = default;
};

}  // namespace zyn
