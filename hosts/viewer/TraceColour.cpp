#include "viewer/TraceColour.h"

#include <cmath>

namespace zyn::viewer {

std::array<double, 3> traceColour(std::size_t index) {
  constexpr std::array<std::array<double, 3>, 10> kColours = {{{0.05, 0.33, 0.67},
                                                               {0.84, 0.27, 0.05},
                                                               {0.10, 0.55, 0.25},
                                                               {0.56, 0.23, 0.62},
                                                               {0.85, 0.60, 0.00},
                                                               {0.00, 0.62, 0.68},
                                                               {0.80, 0.12, 0.42},
                                                               {0.42, 0.50, 0.10},
                                                               {0.45, 0.30, 0.20},
                                                               {0.35, 0.40, 0.47}}};
  const std::size_t round = index / kColours.size();
  const double shade = std::pow(0.6, static_cast<double>(round));
  std::array<double, 3> colour = kColours[index % kColours.size()];
  for (double& component : colour) {
    component *= shade;
  }
  return colour;
}

}  // namespace zyn::viewer
