#pragma once

#include <windows.h>

#include <string>

namespace zyn::viewer {

/// Tells a person of a problem: in a box, or as a line on standard error where nobody watches.
void tellProblem(HWND owner, const std::string& message, bool batch) noexcept;

}  // namespace zyn::viewer
