#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zyn::host {

/// A file that cannot be read; the message is one line without the file's name.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// All bytes of a file. Throws InputError; `wanted` says there what the file should have been.
std::string readInputFile(const std::filesystem::path& file, std::string_view wanted);

/// A file's name as it appears in messages.
std::string utf8Name(const std::filesystem::path& file);

/// Bytes without the mark that some programs put before UTF-8.
std::string_view withoutUtf8Mark(std::string_view bytes);

/// Whether the bytes begin as a text in UTF-16 does.
bool isUtf16(std::string_view bytes);

}  // namespace zyn::host
