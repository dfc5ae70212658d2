#include "zynshot/Suggestion.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace zyn::shot {

namespace {

/// How many letters have to be changed, added or left out to make one word of the other.
std::size_t distanceOf(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (const char letter : from) {
    std::size_t diagonal = row[0]++;
    for (std::size_t i = 0; i < to.size(); ++i) {
      const std::size_t replaced = diagonal + (letter == to[i] ? 0 : 1);
      diagonal = row[i + 1];
      row[i + 1] = std::min({row[i] + 1, row[i + 1] + 1, replaced});
    }
  }
  return row.back();
}

}  // namespace

std::string suggestionFor(std::string_view misspelt, std::span<const std::string_view> names) {
  constexpr std::size_t kFar = 3;
  const auto distance = [misspelt](std::string_view name) { return distanceOf(misspelt, name); };
  const auto nearest = std::ranges::min_element(names, {}, distance);
  if (nearest == names.end() || distance(*nearest) >= kFar) {
    return {};
  }
  return ", did you mean " + std::string(*nearest) + "?";
}

}  // namespace zyn::shot
