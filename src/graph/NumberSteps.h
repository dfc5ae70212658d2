#pragma once

#include <span>
#include <vector>

#include "graph/AxisScale.h"
#include "graph/Decimal.h"

namespace zyn {

/// What misses an end of a range by no more than this part of the step between marks lies on it: an
/// end that was calculated misses the number that is meant by its rounding.
inline constexpr double kEndTolerance = 1e-6;

/// 1, 2 or 5 times a power of ten.
struct DecimalStep {
  int digit = 1;
  int exponent = 0;

  double value() const { return Decimal{digit, exponent}.value(); }
  DecimalStep next() const;

  /// The multiples of the step in a range; none of a step so small that neighbours would be the
  /// same double.
  std::vector<Decimal> within(const ValueRange& range) const;
};

/// Powers of ten, and some of their multiples.
struct DecadeStep {
  int every = 1;                  ///< of the powers: those that are divisible by it
  std::span<const int> tenths{};  ///< multiples of a power, in tenths: 10 to 99

  std::vector<Decimal> within(const ValueRange& range) const;
};

/// How far two ends lie apart, or the largest number.
double spanOf(const ValueRange& range);

/// How far neighbouring doubles lie apart in a range, where they do most.
double resolutionOf(const ValueRange& range);

}  // namespace zyn
