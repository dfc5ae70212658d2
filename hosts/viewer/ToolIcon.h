#pragma once

#include <cstdint>
#include <vector>

#include "viewer/Commands.h"

namespace zyn::viewer {

/// The commands of a pane's tool bar from left to right; a null pointer stands for a gap.
std::vector<const CommandEntry*> toolsOf(PaneKind pane);

/// Those of the bar that leads along a path.
std::vector<const CommandEntry*> pathTools();

/// The picture of a command on a tool bar, drawn for any size: `side` rows of as many pixels from
/// the top down, 0xAARRGGBB, not premultiplied. Transparent for a command that has none.
std::vector<std::uint32_t> drawToolIcon(Command command, int side);

/// Whether a command has another picture while it is on, in place of a pressed button; and that
/// one.
bool hasToolIconWhileOn(Command command);
std::vector<std::uint32_t> drawToolIconWhileOn(Command command, int side);

}  // namespace zyn::viewer
