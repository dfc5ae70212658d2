#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zyn::host {

enum class FileKind : std::uint8_t { kModel, kTable, kProgram };

/// What a file is, by its name's extension; what is neither table nor program is taken for a model.
FileKind kindOf(std::string_view name);

/// How names of programs end: ".nc .ngc ...".
std::string programEndings();

}  // namespace zyn::host
