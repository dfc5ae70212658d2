#include "common/InputFile.h"

#include <cstdint>
#include <fstream>
#include <system_error>

namespace zyn::host {

std::string readInputFile(const std::filesystem::path& file, std::string_view wanted) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    throw InputError("no such file");
  }
  if (status.type() == std::filesystem::file_type::directory) {
    throw InputError("this is a folder, not " + std::string(wanted));
  }
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  std::ifstream stream(file, std::ios::binary);
  if (error || !stream) {
    throw InputError("cannot be opened");
  }
  std::string bytes(static_cast<std::size_t>(size), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (stream.gcount() != static_cast<std::streamsize>(bytes.size())) {
    throw InputError("cannot be read to its end");
  }
  return bytes;
}

std::string utf8Name(const std::filesystem::path& file) {
  const std::u8string name = file.u8string();
  return {name.begin(), name.end()};
}

std::string_view withoutUtf8Mark(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes;
}

bool isUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

}  // namespace zyn::host
