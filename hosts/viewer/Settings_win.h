#pragma once

#include <string>

#include "viewer/RecentFiles.h"

namespace zyn::viewer {

/// What the program keeps for the person from one start to the next: in the registry, below the
/// person's own key.
class Settings {
 public:
  /// `key` below HKEY_CURRENT_USER\Software; empty to keep nothing.
  explicit Settings(std::wstring key) : key_(std::move(key)) {}

  RecentFiles recentFiles() const;

  /// What cannot be kept is forgotten: it is no reason to disturb anybody.
  void keep(const RecentFiles& files) const;

 private:
  std::wstring path() const { return L"Software\\" + key_; }

  std::wstring key_;
};

}  // namespace zyn::viewer
