#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zyn::viewer {

/// The files that were opened, the last one first, each once. UTF-16, as the system keeps them.
class RecentFiles {
 public:
  static constexpr std::size_t kMost = 9;

  RecentFiles() = default;
  explicit RecentFiles(std::vector<std::wstring> files);

  const std::vector<std::wstring>& files() const { return files_; }

  /// Puts a file before the others.
  void add(std::wstring file);

  /// Forgets a file.
  void remove(std::wstring_view file);

 private:
  std::vector<std::wstring> files_;
};

}  // namespace zyn::viewer
