#include "common/FileKind.h"

#include <algorithm>

#include "common/Words.h"

namespace zyn::host {

namespace {

constexpr std::string_view kTables[] = {".csv", ".tsv"};
constexpr std::string_view kPrograms[] = {".nc",  ".ngc", ".gcode", ".gco", ".g",   ".tap",
                                          ".cnc", ".ncc", ".eia",   ".min", ".mpf", ".spf",
                                          ".txt", ".ptp", ".iso",   ".din", ".fnc", ".mp"};

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
  return endsInOneOf(name, kPrograms) ? FileKind::kProgram : FileKind::kModel;
}

std::string programEndings() {
  std::string text;
  for (const std::string_view ending : kPrograms) {
    text += text.empty() ? "" : " ";
    text += ending;
  }
  return text;
}

}  // namespace zyn::host
