#pragma once

#include <cstdint>
#include <string>

namespace zyn {

/// A number as people write it: whole digits times a power of ten. What is written is exact, which
/// binary fractions are not: 3 times 0.1 is 0.3.
struct Decimal {
  std::int64_t digits = 0;
  int exponent = 0;

  bool operator==(const Decimal&) const = default;

  /// The nearest double, never -0; infinite beyond the largest.
  double value() const;

  /// The power of ten of its first digit; 0 for none.
  int magnitude() const;

  /// Decimals without which it cannot be written.
  int decimals() const { return exponent < 0 ? -exponent : 0; }

  /// Written out with all its decimals, or with more; 0 has no sign.
  std::string text(int decimals) const;
  std::string text() const { return text(decimals()); }

  /// Without zeros at the end of its digits.
  Decimal stripped() const;
};

/// "⁻³⁰⁰", in UTF-8.
std::string superscript(int number);

}  // namespace zyn
