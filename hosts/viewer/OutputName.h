#pragma once

#include <filesystem>

namespace zyn::viewer {

/// The name that a file made of `shown` gets unless another is chosen: that file's own with the
/// extension, "untitled" without one. No folder.
std::filesystem::path outputName(const std::filesystem::path& shown, const char* extension);

}  // namespace zyn::viewer
