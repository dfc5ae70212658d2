#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>

namespace zyn::test {

/// Numbers that look random and are the same for the same seed on every system (splitmix64), cheap
/// to copy where two parties are to draw the same numbers.
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
  template <std::integral Count>
  Count below(Count count) {
    return static_cast<Count>(next() % static_cast<std::uint64_t>(count));
  }
  /// True once in `times` times.
  bool oneIn(std::integral auto times) { return below(times) == 0; }
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(next() >> 11U) * 0x1p-53);
  }

  /// One of the values: in its place, or a copy of what is in a list for once.
  template <class List>
  decltype(auto) pick(List&& list) {
    auto& value = list[below(std::size(list))];
    if constexpr (std::is_lvalue_reference_v<List>) {
      return (value);
    } else {
      return std::remove_cvref_t<decltype(value)>(value);
    }
  }

  /// A generator of its own.
  Random fork() { return Random(next()); }

 private:
  std::uint64_t state_;
};

}  // namespace zyn::test
