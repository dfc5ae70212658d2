#pragma once

#include <windows.h>

#include <string>

namespace zyn::viewer {

/// Tells a person of a problem: in a box, or as a line on standard error where nobody watches.
void tellProblem(HWND owner, const std::string& message, bool batch) noexcept;

/// Writes a text where whoever started the program reads it: on standard output, else on their
/// console; in a box where there is neither and somebody watches.
void tellUsage(const std::string& text, bool batch);

/// The box that says what program this is.
void tellAbout(HWND owner);

}  // namespace zyn::viewer
