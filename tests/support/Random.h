#pragma once

#include <cstddef>
#include <cstdint>

namespace zyn::test {

/// Numbers that look random and are the same for the same seed on every system (splitmix64).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
  }

  /// 0 to count - 1.
  int below(int count) { return static_cast<int>(next() % static_cast<std::uint64_t>(count)); }
  bool oneIn(int count) { return below(count) == 0; }
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(next() >> 11U) * 0x1p-53);
  }

  template <class List>
  auto& pick(List& list) {
    return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace zyn::test
