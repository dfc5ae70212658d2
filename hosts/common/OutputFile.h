#pragma once

#include <filesystem>

namespace zyn::host {

/// Throws std::runtime_error with one line when no picture can be written there: to be known before
/// it is drawn.
void probeOutputFile(const std::filesystem::path& file);

}  // namespace zyn::host
