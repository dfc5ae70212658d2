#include "graph/AutoRange.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {

namespace {

constexpr double kMargin = 0.05;
constexpr double kGreatest = std::numeric_limits<double>::max();
constexpr double kLeast = std::numeric_limits<double>::min();
/// Rounding errors by which values may differ that are meant to be one.
constexpr double kSameWithin = 8 * std::numeric_limits<double>::epsilon();
/// Half of the decades, and of the days, around a single value.
constexpr double kDecadesAround = 0.5;
constexpr double kDaysAround = 0.5;

ValueRange linearRange(AxisKind kind, const ValueRange& values) {
  const double size = std::max(std::abs(values.min), std::abs(values.max));
  const double differ = values.max / 2 - values.min / 2;
  double margin = kMargin * 2 * differ;
  if (differ <= kSameWithin / 2 * size || differ < kLeast) {
    margin = std::max(kMargin * size, kLeast);
    if (kind == AxisKind::kDate) {
      // Days that are no date are numbers like others.
      margin = std::max(kDaysAround, 2 * kSameWithin * size);
    } else if (size == 0) {
      margin = 1;
    }
  }
  return {std::max(values.min - margin, -kGreatest), std::min(values.max + margin, kGreatest)};
}

ValueRange logarithmicRange(const ValueRange& values) {
  const double decades = std::log10(values.max) - std::log10(values.min);
  const bool isSingle = values.max - values.min <= kSameWithin * values.max;
  const double factor = std::pow(10.0, isSingle ? kDecadesAround : kMargin * decades);
  return {std::max(values.min / factor, std::min(values.min, kLeast)),
          std::min(values.max * factor, kGreatest)};
}

}  // namespace

ValueRange autoRange(AxisKind kind, const std::optional<ValueRange>& values) {
  const bool isLogarithmic = kind == AxisKind::kLog10;
  if (!values) {
    return isLogarithmic ? ValueRange{1, 10} : ValueRange{0, 1};
  }
  return isLogarithmic ? logarithmicRange(*values) : linearRange(kind, *values);
}

}  // namespace zyn
