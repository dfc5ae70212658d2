#pragma once

#include <cstddef>
#include <string>

#include "core/Progress.h"
#include "gcode/GCodeReader.h"
#include "toolpath/ToolPath.h"

namespace zyn {

/// How programs are loaded.
struct PathLoading {
  double tolerance = 0.01;  ///< how far chords may be from their arcs
  GCodeOptions options{};
};

struct LoadedPath {
  ToolPath path;
  std::size_t skippedCodes = 0;
};

/// Reads a program. Failures of the system have its code, what is wrong in the file E_FAIL with
/// line, column and cause.
LoadedPath loadGCode(const std::wstring& file, const PathLoading& loading,
                     const Progress& progress);

}  // namespace zyn
