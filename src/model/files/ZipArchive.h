#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zyn {

/// Whether the bytes begin as a zip file with something in it does.
bool isZip(std::string_view bytes);

/// Reads the files of a zip file that lies in memory, stored or deflated.
class ZipArchive {
 public:
  /// Throws MeshFileError where there is no directory of files.
  explicit ZipArchive(std::string_view bytes);
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  /// Upper and lower case are alike in the name.
  bool contains(const std::string& name) const;

  /// The bytes of a file. Throws MeshFileError, with the name, where it is not there, damaged,
  /// encrypted, or unpacks to what no model does.
  std::string read(const std::string& name) const;

 private:
  struct Source;
  std::unique_ptr<Source> source_;
};

}  // namespace zyn
