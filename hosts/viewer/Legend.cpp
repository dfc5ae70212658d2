#include "viewer/Legend.h"

#include <algorithm>

namespace zyn::viewer {

std::vector<LegendEntry> legendOf(const Plot& plot, const PlotScale& scale) {
  constexpr std::size_t kRows = 3;
  constexpr std::size_t kMostColumns = 6;
  constexpr std::size_t kLettersOfAll = 60;  // that fit beside one another
  constexpr double kFirstColumn = 0.2;       // of the width
  constexpr double kFirstRow = 0.16;         // of the height, above the graph
  constexpr double kRowHeight = 0.05;
  constexpr int kTextHeight = 13;
  std::size_t longest = 1;
  for (const PlotTrace& trace : plot.traces) {
    longest = std::max(longest, trace.title.name.size());
  }
  const std::size_t columns =
      std::clamp<std::size_t>(kLettersOfAll / (longest + 3), 1, kMostColumns);
  const std::size_t count = std::min(plot.traces.size(), kRows * columns);
  const double width = plot.xRange.size() * scale.x;
  const double height = plot.yRange.size() * scale.y;
  std::vector<LegendEntry> entries;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t row = i / columns;
    const double along = static_cast<double>(i % columns) / static_cast<double>(columns);
    const double x =
        plot.xRange.low * scale.x + width * (kFirstColumn + (1 - kFirstColumn) * along);
    const double y =
        plot.yRange.high * scale.y + height * (kFirstRow - kRowHeight * static_cast<double>(row));
    entries.push_back(
        {{x, y, x + 0.025 * width, y, 3},
         {x + 0.033 * width, y, TextAnchor::kLeftMiddle, plot.traces[i].title.name, kTextHeight}});
  }
  return entries;
}

}  // namespace zyn::viewer
