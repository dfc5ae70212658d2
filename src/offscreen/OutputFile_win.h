#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

namespace zyn {

/// A file being written.
class OutputFile {
 public:
  /// Creates the file, replacing one of that name.
  explicit OutputFile(const wchar_t* name);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  bool isOpen() const { return file_ != INVALID_HANDLE_VALUE; }

  /// Appends all of the bytes, or fails.
  bool write(std::span<const std::uint8_t> bytes);

  /// False if what was written may not have reached the file.
  bool close();

 private:
  HANDLE file_;
};

}  // namespace zyn
