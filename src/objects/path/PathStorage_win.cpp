#include "objects/path/PathStorage_win.h"

#include <windows.h>

#include "core/Utf8.h"
#include "gcode/GCodeError.h"
#include "platform/Failure_win.h"
#include "platform/InputFile_win.h"
#include "toolpath/PathBuilder.h"

namespace zyn {

namespace {

constexpr double kReading = 0.1;  ///< the part of a load that reads the file

}  // namespace

LoadedPath loadGCode(const std::wstring& file, const PathLoading& loading,
                     const Progress& progress) {
  PathBuilder builder(loading.tolerance);
  try {
    const FileBytes bytes = readFile(file, stageOf(progress, 0, kReading));
    const std::size_t skipped =
        readGCode(bytes.view(), loading.options, builder, stageOf(progress, kReading, 1));
    return {builder.take(), skipped};
  } catch (const GCodeError& error) {
    throw Failure(E_FAIL, file + L", line " + std::to_wstring(error.line()) + L", column " +
                              std::to_wstring(error.column()) + L": " + wideOf(error.what()));
  } catch (const Aborted&) {
    throw Failure(E_ABORT, file + L": stopped by an event");
  }
}

}  // namespace zyn
