#include "common/OutputFile.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "common/InputFile.h"

namespace zyn::host {

void probeOutputFile(const std::filesystem::path& file) {
  const auto fail = [&file](const char* reason) {
    throw std::runtime_error(utf8Name(file) + ": cannot be written" + reason);
  };
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) {
    fail(": this is a folder");
  }
  if (file.has_parent_path() && !std::filesystem::is_directory(file.parent_path(), error)) {
    fail(": there is no such folder");
  }
  // Pictures are written beside their place first.
  std::filesystem::path beside = file;
  beside += ".partial";
  if (!std::ofstream(beside, std::ios::binary)) {
    fail("");
  }
  std::filesystem::remove(beside, error);
}

}  // namespace zyn::host
