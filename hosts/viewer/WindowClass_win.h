#pragma once

#include <windows.h>

namespace zyn::viewer {

/// Registers a class of windows of the program; once more does no harm.
void registerWindowClass(const wchar_t* name, WNDPROC procedure);

}  // namespace zyn::viewer
