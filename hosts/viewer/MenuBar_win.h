#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <type_traits>

#include "viewer/Commands.h"

namespace zyn::viewer {

struct DestroyAccelerators {
  void operator()(HACCEL table) const { DestroyAcceleratorTable(table); }
};

/// The keys of commands.
using Accelerators = std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyAccelerators>;

Accelerators makeAccelerators(PaneKind pane);

/// A menu bar with the commands of a pane. The window that gets it owns it.
HMENU makeMenuBar(PaneKind pane);

/// Fills the menu of recent files, if it is that one.
void showRecentFiles(HMENU menu, std::span<const std::wstring> files);

/// Marks the commands for which `isOn` answers true.
void markCommands(HMENU menuBar, const std::function<bool(Command)>& isOn);

}  // namespace zyn::viewer
