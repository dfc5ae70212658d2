#include "objects/scale/ScaleTicks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <span>

namespace zyn {

namespace {

/// Ends nearer to each other, as a part of their size or at all, have no steps between them.
constexpr double kNearest = 1e-13;
constexpr double kLeastLength = 1e-290;
/// By which an end may miss a mark, in steps.
constexpr double kTolerance = 1e-9;

/// From these powers of ten on, and up to those, numbers are written out.
constexpr int kLeastWritten = -6;
constexpr int kMostWritten = 6;

/// `digit` times ten to the power of `exponent`.
struct RoundNumber {
  int digit = 1;
  int exponent = 0;

  double value() const {
    return exponent < 0 ? digit / std::pow(10.0, -exponent) : digit * std::pow(10.0, exponent);
  }

  RoundNumber next() const {
    return digit == 1   ? RoundNumber{2, exponent}
           : digit == 2 ? RoundNumber{5, exponent}
                        : RoundNumber{1, exponent + 1};
  }
};

int exponentOf(double value) { return static_cast<int>(std::floor(std::log10(value))); }

std::string fixedText(double value, int decimals) {
  char text[400];  // a double has 309 digits before the point
  const auto end = std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed,
                                 std::clamp(decimals, 0, 60));
  return {std::begin(text), end.ptr};
}

/// The multiples of a round number within a range.
class Steps {
 public:
  Steps(RoundNumber step, double low, double high)
      : step_(step),
        first_(std::ceil(low / step.value() - kTolerance)),
        last_(std::floor(high / step.value() + kTolerance)) {}

  double count() const { return last_ - first_ + 1; }

  std::vector<double> values() const {
    std::vector<double> all;
    for (double factor = first_; factor <= last_; ++factor) {
      // A quotient by a whole power of ten is the nearest number to what is written.
      const double power = std::pow(10.0, std::abs(step_.exponent));
      const double digits = factor * step_.digit;
      all.push_back((step_.exponent < 0 ? digits / power : digits * power) + 0.0);
    }
    return all;
  }

  /// All with the decimals of the step, or with one power of ten behind them.
  std::vector<std::string> labels() const {
    const std::vector<double> marks = values();
    double greatest = 0;
    for (const double mark : marks) {
      greatest = std::max(greatest, std::abs(mark));
    }
    const int power = greatest > 0 ? exponentOf(greatest * (1 + kTolerance)) : 0;
    const bool isWritten = power <= kMostWritten && step_.exponent >= kLeastWritten;
    std::vector<std::string> texts;
    for (const double mark : marks) {
      if (isWritten) {
        texts.push_back(fixedText(mark, -step_.exponent));
      } else if (mark == 0) {
        texts.emplace_back("0");
      } else {
        texts.push_back(fixedText(mark / std::pow(10.0, power), power - step_.exponent) + "e" +
                        std::to_string(power));
      }
    }
    return texts;
  }

 private:
  RoundNumber step_;
  double first_;
  double last_;
};

/// The finest that gives at most `most` marks; none where that has no sense.
std::vector<ScaleTick> linearTicks(const ColourScale& scale, double low, double high, int most) {
  const double size = std::max(std::abs(low), std::abs(high));
  const double length = high / most - low / most;
  if (!(length > std::max(kNearest * size, kLeastLength))) {
    return {};
  }
  RoundNumber step{1, exponentOf(length)};
  while (Steps(step, low, high).count() > most) {
    step = step.next();
  }
  const Steps steps(step, low, high);
  const std::vector<std::string> labels = steps.labels();
  std::vector<ScaleTick> ticks;
  for (const double value : steps.values()) {
    const double place = std::clamp(scale.placeOf(value).value_or(0.0), 0.0, 1.0);
    ticks.push_back({place, labels[ticks.size()]});
  }
  return ticks;
}

/// As short as possible: "0.002", "500", and where powers of ten are far from 1, "2e-9".
std::string logarithmicLabel(RoundNumber number, bool isWritten) {
  return isWritten ? fixedText(number.value(), -number.exponent)
                   : std::to_string(number.digit) + "e" + std::to_string(number.exponent);
}

/// Multiples of every so many powers of ten within a range.
std::vector<RoundNumber> logarithmicMarks(double low, double high, std::span<const int> digits,
                                          int every) {
  std::vector<RoundNumber> marks;
  const int last = exponentOf(high * (1 + kTolerance));
  for (int exponent = exponentOf(low); exponent <= last; ++exponent) {
    for (const int digit : digits) {
      const RoundNumber mark{digit, exponent};
      if (exponent % every == 0 && mark.value() >= low * (1 - kTolerance) &&
          mark.value() <= high * (1 + kTolerance)) {
        marks.push_back(mark);
      }
    }
  }
  return marks;
}

/// The most of them that are not too many.
std::vector<RoundNumber> chooseMarks(double low, double high, int most) {
  constexpr int kAll[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  constexpr int kSome[] = {1, 2, 5};
  constexpr int kPowers[] = {1};
  const auto limit = static_cast<std::size_t>(most);
  for (const std::span<const int> digits :
       {std::span<const int>(kAll), std::span<const int>(kSome)}) {
    auto marks = logarithmicMarks(low, high, digits, 1);
    if (marks.size() <= limit) {
      return marks;
    }
  }
  int every = 1;
  auto marks = logarithmicMarks(low, high, kPowers, every);
  while (marks.size() > limit) {
    marks = logarithmicMarks(low, high, kPowers, ++every);
  }
  return marks;
}

std::vector<ScaleTick> logarithmicTicks(const ColourScale& scale, double low, double high,
                                        int most) {
  const std::vector<RoundNumber> marks = chooseMarks(low, high, most);
  if (marks.size() < 3) {
    return linearTicks(scale, low, high, most);
  }
  const bool isWritten =
      marks.front().exponent >= kLeastWritten && marks.back().exponent <= kMostWritten;
  std::vector<ScaleTick> ticks;
  for (const RoundNumber& mark : marks) {
    const double place = std::clamp(scale.placeOf(mark.value()).value_or(0.0), 0.0, 1.0);
    ticks.push_back({place, logarithmicLabel(mark, isWritten)});
  }
  return ticks;
}

}  // namespace

std::vector<ScaleTick> ticksOf(const ColourScale& scale, int most) {
  const auto [low, high] = std::minmax({scale.range.first, scale.range.last});
  if (most < 1 || !(low < high)) {
    return {};
  }
  if (!scale.isLogarithmic) {
    return linearTicks(scale, low, high, most);
  }
  return low > 0 ? logarithmicTicks(scale, low, high, most) : std::vector<ScaleTick>();
}

}  // namespace zyn
