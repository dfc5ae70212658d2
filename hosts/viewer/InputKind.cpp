#include "viewer/InputKind.h"

#include <fstream>
#include <string>

#include "common/InputFile.h"
#include "common/Words.h"
#include "table/CsvReader.h"

namespace zyn::viewer {

namespace {

/// The whole lines at the begin of a file; empty for one that cannot be read.
std::string firstLines(const std::filesystem::path& file) {
  constexpr std::size_t kLength = 8192;
  std::string text(kLength, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(text.data(), kLength);
  text.resize(static_cast<std::size_t>(stream.gcount()));
  if (text.size() == kLength) {
    text.erase(text.find_last_of("\r\n") + 1);
  }
  return text;
}

bool isTable(std::string_view text) {
  try {
    table::parseCsv(text);
    return true;
  } catch (const table::TableError&) {
    return false;
  }
}

}  // namespace

host::FileKind inputKind(const std::filesystem::path& file) {
  const bool isText = host::equalsIgnoringCase(host::utf8Name(file.extension()), ".txt");
  return isText && isTable(firstLines(file)) ? host::FileKind::kTable
                                             : host::kindOf(host::utf8Name(file));
}

}  // namespace zyn::viewer
