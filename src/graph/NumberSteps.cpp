#include "graph/NumberSteps.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zyn {

namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();

/// Which multiple of a step a value is. Steps near the smallest numbers are not exact enough to
/// divide by.
double quotient(double value, const DecimalStep& step) {
  constexpr int kSmall = -290;
  constexpr int kShift = 100;
  return step.exponent < kSmall
             ? value * 1e100 / DecimalStep{step.digit, step.exponent + kShift}.value()
             : value / step.value();
}

int exponentOf(double value) { return static_cast<int>(std::floor(std::log10(value))); }

}  // namespace

double spanOf(const ValueRange& range) { return std::min(range.max - range.min, kGreatest); }

double resolutionOf(const ValueRange& range) {
  const double size = std::max(std::abs(range.min), std::abs(range.max));
  return size - std::nextafter(size, 0.0);
}

DecimalStep DecimalStep::next() const {
  return digit == 1   ? DecimalStep{2, exponent}
         : digit == 2 ? DecimalStep{5, exponent}
                      : DecimalStep{1, exponent + 1};
}

std::vector<Decimal> DecimalStep::within(const ValueRange& range) const {
  constexpr std::int64_t kRounding = 4;  // of a quotient
  const double step = value();
  std::vector<Decimal> marks;
  if (step < resolutionOf(range) || !std::isfinite(step)) {
    return marks;
  }
  const double tolerance = kEndTolerance * step;
  const auto first = static_cast<std::int64_t>(std::floor(quotient(range.min, *this)));
  for (std::int64_t factor = first - kRounding;; ++factor) {
    const Decimal mark{factor * digit, exponent};
    const double place = mark.value();
    if (place > range.max + tolerance || place > kGreatest) {
      return marks;
    }
    if (place >= range.min - tolerance && std::isfinite(place)) {
      marks.push_back(mark);
    }
  }
}

std::vector<Decimal> DecadeStep::within(const ValueRange& range) const {
  constexpr double kTolerance = 1e-9;
  const double low = range.min - kTolerance * std::min(range.min, spanOf(range));
  const double high = range.max + kTolerance * std::min(range.max, spanOf(range));
  std::vector<Decimal> marks;
  double last = 0;
  for (int power = exponentOf(range.min) - 1; power <= exponentOf(range.max) + 1; ++power) {
    if (power % every != 0) {
      continue;
    }
    for (const int tenth : tenths) {
      const Decimal mark{tenth, power - 1};
      const double place = mark.value();
      // The smallest numbers are so few that several multiples are the same one.
      if (place >= low && place <= high && place > last && std::isfinite(place)) {
        marks.push_back(mark.stripped());
        last = place;
      }
    }
  }
  return marks;
}

}  // namespace zyn
