#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace zyn::test {

/// A small random number generator: the same sequence everywhere for the same seed, and cheap to
/// copy where two parties are to draw the same numbers.
class Rng {
 public:
  explicit Rng(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return z ^ (z >> 31);
  }
  /// 0 to count - 1.
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }
  /// True once in `times` times.
  bool onceIn(std::size_t times) { return below(times) == 0; }
  double between(double least, double greatest) {
    return least + (greatest - least) * static_cast<double>(next() >> 11) * 0x1p-53;
  }
  template <class Values>
  auto oneOf(const Values& values) {
    return values[below(std::size(values))];
  }
  /// A generator of its own.
  Rng fork() { return Rng(next()); }

 private:
  std::uint64_t state_;
};

}  // namespace zyn::test
