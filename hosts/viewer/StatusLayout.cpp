#include "viewer/StatusLayout.h"

#include <algorithm>
#include <numeric>

namespace zyn::viewer {

std::vector<int> statusWidths(std::span<const PaneWidth> panes, int total) {
  std::vector<int> widths(panes.size());
  const auto excess = [&] { return std::accumulate(widths.begin(), widths.end(), -total); };
  std::ranges::transform(panes, widths.begin(), &PaneWidth::widest);
  widths.front() = panes.front().text;
  if (excess() > 0) {
    std::ranges::transform(panes, widths.begin(), &PaneWidth::text);
  }
  for (int& width : widths) {
    width -= std::clamp(excess(), 0, width);
  }
  widths.front() -= std::min(excess(), 0);
  return widths;
}

}  // namespace zyn::viewer
