#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/BmpFile.h"
#include "support/HostSession_win.h"

namespace zyn::test {

/// A folder of its own that is deleted with everything in it.
class TempFolder {
 public:
  TempFolder() {
    static int made = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("zyn-test-" + std::to_string(GetCurrentProcessId()) + "-" +
             std::to_string(GetCurrentThreadId()) + "-" + std::to_string(++made));
    std::filesystem::create_directories(path_);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::filesystem::path file(const std::wstring& name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }
  bool empty() const { return std::filesystem::is_empty(path_); }

 private:
  std::filesystem::path path_;
};

inline _bstr_t bstr(const std::filesystem::path& path) { return _bstr_t(path.wstring().c_str()); }

/// The whole content of a file; throws when there is none.
inline Bytes readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("no file " + path.string());
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace zyn::test
