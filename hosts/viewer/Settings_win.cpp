#include "viewer/Settings_win.h"

#include <windows.h>

#include <vector>

namespace zyn::viewer {

namespace {

constexpr wchar_t kRecentFiles[] = L"RecentFiles";

}  // namespace

RecentFiles Settings::recentFiles() const {
  DWORD bytes = 0;
  if (key_.empty() ||
      RegGetValueW(HKEY_CURRENT_USER, path().c_str(), kRecentFiles, RRF_RT_REG_MULTI_SZ, nullptr,
                   nullptr, &bytes) != ERROR_SUCCESS) {
    return {};
  }
  std::wstring all(bytes / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_CURRENT_USER, path().c_str(), kRecentFiles, RRF_RT_REG_MULTI_SZ, nullptr,
                   all.data(), &bytes) != ERROR_SUCCESS) {
    return {};
  }
  std::vector<std::wstring> files;
  for (const wchar_t* name = all.c_str(); *name != L'\0'; name += files.back().size() + 1) {
    files.emplace_back(name);
  }
  return RecentFiles(std::move(files));
}

void Settings::keep(const RecentFiles& files) const {
  if (key_.empty()) {
    return;
  }
  std::wstring all;
  for (const std::wstring& file : files.files()) {
    all.append(file.c_str(), file.size() + 1);
  }
  RegSetKeyValueW(HKEY_CURRENT_USER, path().c_str(), kRecentFiles, REG_MULTI_SZ, all.c_str(),
                  static_cast<DWORD>((all.size() + 1) * sizeof(wchar_t)));
}

}  // namespace zyn::viewer
