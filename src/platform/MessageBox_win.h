#pragma once

#include <string>

namespace zyn {

/// Resource number of the string that names the project, in every module.
inline constexpr unsigned kProjectNameString = 100;

/// The module's project name; the name of its file when it has no such string.
std::wstring projectName();

/// Shows the text in a message box titled with the project name, over the thread's active window,
/// and waits until the user has closed it.
void showMessage(const wchar_t* text);

}  // namespace zyn
