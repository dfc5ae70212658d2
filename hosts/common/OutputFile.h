#pragma once

#include <filesystem>

namespace zyn::host {

/// A picture that appears under its name only when it is whole: it is written beside its place and
/// moved there at the end. Whatever is left of a failed attempt is deleted.
class OutputFile {
 public:
  explicit OutputFile(std::filesystem::path file);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Where to write.
  const std::filesystem::path& partial() const { return partial_; }

  /// Throws std::runtime_error with one line when nothing can be written there.
  void probe() const;

  /// Gives the picture its name. Throws std::runtime_error with one line when nothing was written
  /// or the name cannot be had.
  void finish() const;

 private:
  std::filesystem::path file_;
  std::filesystem::path partial_;
};

}  // namespace zyn::host
