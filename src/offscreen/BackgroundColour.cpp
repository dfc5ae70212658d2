#include "offscreen/BackgroundColour.h"

#include <algorithm>

namespace zyn {

std::optional<Colour4> backgroundColour(const std::vector<double>& numbers) {
  if (numbers.size() != 3 && numbers.size() != 4) {
    return std::nullopt;
  }
  Colour4 colour = {};
  std::transform(numbers.begin(), numbers.end(), colour.begin(),
                 [](double component) { return static_cast<float>(component); });
  return colour;
}

}  // namespace zyn
