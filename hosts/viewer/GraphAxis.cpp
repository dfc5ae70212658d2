#include "viewer/GraphAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace zyn::viewer {

namespace {

/// Big graduations that an axis has, about.
constexpr double kBigSteps = 6;

/// 1, 2 or 5 times a power of ten, no less than `step`; and how many small steps it holds.
struct RoundStep {
  double size;
  int parts;
};

RoundStep roundStep(double step) {
  const double decade = std::pow(10.0, std::floor(std::log10(step)));
  for (const RoundStep& candidate : {RoundStep{1, 5}, RoundStep{2, 4}, RoundStep{5, 5}}) {
    if (candidate.size * decade >= step) {
      return {candidate.size * decade, candidate.parts};
    }
  }
  return {10 * decade, 5};
}

/// The range, widened where it holds a single value.
std::pair<double, double> widened(double low, double high) {
  if (low < high) {
    return {low, high};
  }
  const double half = low == 0 ? 0.5 : std::fabs(low) / 20;
  return {low - half, high + half};
}

}  // namespace

AxisRange linearRange(double low, double high) {
  const auto [from, to] = widened(low, high);
  const double size = std::min(to - from, std::numeric_limits<double>::max() / 4);
  const RoundStep step = roundStep(size / kBigSteps);
  const double small = step.size / step.parts;
  AxisRange range{std::floor(from / small) * small, std::ceil(to / small) * small, step.size,
                  small};
  if (!(range.low <= from && range.high >= to && range.low < range.high)) {
    range.low = from;  // the steps are too small beside the values
    range.high = to;
  }
  return range;
}

AxisRange decadeRange(double low, double high) {
  const double from = std::floor(low);
  return {from, std::max(std::ceil(high), from + 1), 1, 1};
}

AxisTitle axisTitle(std::string_view columnName) {
  const auto withoutBlanks = [](std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == text.npos ? 0 : last + 1));
  };
  for (const std::string_view brackets : {"[]", "()"}) {
    const std::size_t open = columnName.find(brackets[0]);
    if (open != columnName.npos && open > 0 && columnName.ends_with(brackets[1])) {
      return {withoutBlanks(columnName.substr(0, open)),
              std::string(columnName.substr(open + 1, columnName.size() - open - 2))};
    }
  }
  return {std::string(columnName), {}};
}

}  // namespace zyn::viewer
