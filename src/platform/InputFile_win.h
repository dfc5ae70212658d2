#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/Progress.h"

namespace zyn {

/// The bytes of a file.
class FileBytes {
 public:
  FileBytes() = default;
  explicit FileBytes(std::size_t size)
      : bytes_(std::make_unique_for_overwrite<char[]>(size)), size_(size) {}

  char* data() { return bytes_.get(); }
  std::string_view view() const { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
};

/// Reads a file on a disk. Failures of the system are thrown as `Failure`, with its code and the
/// file's name; so are devices and pipes, which files must not lead to. Throws Aborted where it is
/// to stop.
FileBytes readFile(const std::wstring& name, const Progress& progress = {});

/// The bytes of a file that another one names, relative to its own folder, in UTF-8 or else in the
/// system's code page; nothing where it cannot be read.
std::optional<std::string> readSibling(const std::wstring& file, std::string_view name);

}  // namespace zyn
