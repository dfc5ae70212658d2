#pragma once

namespace zyn {

/// The numbers from `low` to `high`, ends included.
struct Range {
  double low = 0.0;
  double high = 0.0;

  double size() const { return high - low; }
  bool holds(double value) const { return value >= low && value <= high; }
  bool holds(const Range& other) const { return other.low >= low && other.high <= high; }
};

}  // namespace zyn
