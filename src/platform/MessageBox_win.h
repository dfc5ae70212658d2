#pragma once

#include <string>

namespace zyn {

/// Resource number of the string that names the project, in every module.
inline constexpr unsigned kProjectNameString = 100;

/// The module's project name; the name of its file when it has no such string.
std::wstring projectName();

/// Whether message boxes would wait in vain, or are not wanted: in session 0 and on window stations
/// without a screen, where services run, and where the process's environment has
/// ZYNVUE_SILENCIEUX, neither empty nor "0", at the moment.
bool staysSilent();

/// Shows the text in a message box titled with the project name, over the thread's active window,
/// and waits until the user has closed it. Where the process stays silent, or `isSilent`, the
/// debugger gets it.
void tellUser(const std::wstring& text, bool isSilent = false);

}  // namespace zyn
