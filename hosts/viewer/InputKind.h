#pragma once

#include <filesystem>

#include "common/FileKind.h"

namespace zyn::viewer {

/// What a file is, by its name's extension; `.txt` by its content, which is a table or a program.
host::FileKind inputKind(const std::filesystem::path& file);

}  // namespace zyn::viewer
