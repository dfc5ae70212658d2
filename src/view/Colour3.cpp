#include "view/Colour3.h"

#include <algorithm>

namespace zyn {

bool isColour(const Colour3& colour) {
  return std::all_of(colour.begin(), colour.end(),
                     [](float component) { return component >= 0.0F && component <= 1.0F; });
}

bool isDark(const Colour3& colour) {
  return 0.299F * colour[0] + 0.587F * colour[1] + 0.114F * colour[2] < 0.5F;
}

std::optional<Colour3> gradientColour(float r, float g, float b) {
  const Colour3 colour = {r, g, b};
  const auto allWithin = [&colour](float limit) {
    return std::all_of(colour.begin(), colour.end(),
                       [limit](float c) { return c >= 0.0F && c <= limit; });
  };
  if (allWithin(1.0F)) {
    return colour;
  }
  if (allWithin(255.0F)) {
    return Colour3{r / 255.0F, g / 255.0F, b / 255.0F};
  }
  return std::nullopt;
}

}  // namespace zyn
