#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

#include "viewer/PictureFormat.h"

namespace zyn::viewer {

/// Asks which model or table to open; none when the person thinks better of it.
std::optional<std::filesystem::path> askForInput(HWND owner);

/// Asks where to write a picture, `proposal` first; an extension is added where none is typed.
std::optional<std::filesystem::path> askForPicture(HWND owner,
                                                   const std::filesystem::path& proposal,
                                                   PictureFormat format);

}  // namespace zyn::viewer
