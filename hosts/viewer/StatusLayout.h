#pragma once

#include <span>
#include <vector>

namespace zyn::viewer {

/// How wide the text of a pane of a status bar is, and the widest that it has had, in pixels.
struct PaneWidth {
  int text = 0;
  int widest = 0;
};

/// How wide the panes of a status bar are, from left to right. The first takes what the others
/// leave. These are as wide as the widest text that they have had, so that they stay where they
/// are; where there is no room for all that, as wide as their text; where there is none for that
/// either, the leftmost give way.
std::vector<int> statusWidths(std::span<const PaneWidth> panes, int total);

}  // namespace zyn::viewer
