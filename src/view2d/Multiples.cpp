#include "view2d/Multiples.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {

namespace {

/// By how much a multiple may miss a bound: in steps, and as a part of what lies between the
/// bounds.
constexpr double kRounding = 1e-9;
constexpr double kRoundingInRange = 1e-6;

/// Below it, a factor and the next one give different multiples.
constexpr double kLargestFactor = 1e15;

/// The smallest whole number not below `quotient`; never -0, which would be written so.
double firstFactor(double quotient, double rounding) {
  return std::ceil(quotient - rounding) + 0.0;
}

}  // namespace

Multiples Multiples::between(double min, double max, double step, double most) {
  const double lower = min / step;
  const double upper = max / step;
  const bool canAdvance = std::isfinite(step) && step > 0 && std::abs(lower) < kLargestFactor &&
                          std::abs(upper) < kLargestFactor;
  if (!canAdvance) {
    return {};
  }
  const double rounding = std::min(kRounding, kRoundingInRange * (upper - lower));
  const double first = firstFactor(lower, rounding);
  const double count = firstFactor(upper, rounding) - first;
  const bool canCount = count > 0 && count <= most && count <= std::numeric_limits<int>::max();
  if (!canCount) {
    return {};
  }
  Multiples multiples;
  multiples.step_ = step;
  multiples.first_ = first;
  multiples.count_ = static_cast<int>(count);
  return multiples;
}

}  // namespace zyn
