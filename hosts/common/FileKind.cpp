#include "common/FileKind.h"

#include <algorithm>

#include "common/Words.h"

namespace zyn::host {

namespace {

constexpr std::string_view kTables[] = {".csv", ".tsv"};
constexpr std::string_view kOfPrinters[] = {".gcode", ".gco", ".g"};
constexpr std::string_view kOfMills[] = {".nc", ".ngc", ".tap", ".cnc", ".ncc", ".eia"};

template <std::size_t kCount>
bool endsInOneOf(std::string_view name, const std::string_view (&extensions)[kCount]) {
  const std::size_t dot = name.rfind('.');
  return dot != name.npos && std::ranges::any_of(extensions, [&](std::string_view extension) {
           return equalsIgnoringCase(name.substr(dot), extension);
         });
}

}  // namespace

FileKind kindOf(std::string_view name) {
  if (endsInOneOf(name, kTables)) {
    return FileKind::kTable;
  }
  return endsInOneOf(name, kOfMills) || isPrinterProgram(name) ? FileKind::kProgram
                                                               : FileKind::kModel;
}

bool isPrinterProgram(std::string_view name) { return endsInOneOf(name, kOfPrinters); }

}  // namespace zyn::host
