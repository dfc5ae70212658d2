#include "viewer/RecentFiles.h"

#include <algorithm>
#include <cwctype>
#include <utility>

namespace zyn::viewer {

namespace {

bool isSameName(std::wstring_view a, std::wstring_view b) {
  return std::ranges::equal(a, b, {}, std::towlower, std::towlower);
}

}  // namespace

RecentFiles::RecentFiles(std::vector<std::wstring> files) : files_(std::move(files)) {
  files_.resize(std::min(files_.size(), kMost));
}

void RecentFiles::add(std::wstring file) {
  remove(file);
  files_.insert(files_.begin(), std::move(file));
  files_.resize(std::min(files_.size(), kMost));
}

void RecentFiles::remove(std::wstring_view file) {
  std::erase_if(files_, [file](const std::wstring& other) { return isSameName(file, other); });
}

}  // namespace zyn::viewer
