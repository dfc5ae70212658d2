#pragma once

#include <string>

namespace zyn::shot {

/// Writes UTF-8 text to standard output or standard error: as characters on a console, as it stands
/// into a file or a pipe.
void writeOutput(const std::string& utf8);
void writeError(const std::string& utf8);

/// Whether somebody watches standard error.
bool isErrorConsole();

}  // namespace zyn::shot
