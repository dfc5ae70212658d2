#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

namespace zyn::viewer {

/// Asks which model or table to open; none when the person thinks better of it.
std::optional<std::filesystem::path> askForInput(HWND owner);

/// Asks which camera to look with.
std::optional<std::filesystem::path> askForCamera(HWND owner);

/// Asks where to write `what`, `proposal` first; its extension is added where none is typed.
std::optional<std::filesystem::path> askForOutput(HWND owner, const std::filesystem::path& proposal,
                                                  const wchar_t* what);

}  // namespace zyn::viewer
