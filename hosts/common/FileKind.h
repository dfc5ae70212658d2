#pragma once

#include <cstdint>
#include <string_view>

namespace zyn::host {

enum class FileKind : std::uint8_t { kModel, kTable, kProgram };

/// What a file is, by its name's extension; what is neither table nor program is taken for a model.
FileKind kindOf(std::string_view name);

/// Whether the program is one of a printer, which has words that no mill knows.
bool isPrinterProgram(std::string_view name);

}  // namespace zyn::host
