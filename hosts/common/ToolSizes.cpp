#include "common/ToolSizes.h"

#include <algorithm>
#include <iterator>

namespace zyn::host {

namespace {

constexpr double kDiameters[] = {0.1, 0.2, 0.4, 0.6, 1,  1.5, 2,  3,  4,  5,  6,
                                 8,   10,  12,  16,  20, 25,  32, 40, 50, 63, 80};

}  // namespace

double usualDiameter(double diagonal) {
  constexpr double kPart = 1.0 / 18;
  const auto* const above = std::ranges::upper_bound(kDiameters, diagonal * kPart);
  return above == std::begin(kDiameters) ? *above : *(above - 1);
}

double largerDiameter(double diameter) {
  const auto* const above = std::ranges::upper_bound(kDiameters, diameter);
  return above == std::end(kDiameters) ? diameter : *above;
}

double smallerDiameter(double diameter) {
  const auto* const from = std::ranges::lower_bound(kDiameters, diameter);
  return from == std::begin(kDiameters) ? diameter : *(from - 1);
}

}  // namespace zyn::host
