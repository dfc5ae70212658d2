#include "objects/text/NarrowText_win.h"

#include <windows.h>

namespace zyn {

std::string narrowText(std::wstring_view text) {
  const std::wstring_view shown = text.substr(0, text.find(L'\0'));
  if (shown.empty()) {
    return {};
  }
  const auto convert = [&](char* place, int size) {
    return WideCharToMultiByte(CP_ACP, 0, shown.data(), static_cast<int>(shown.size()), place, size,
                               nullptr, nullptr);
  };
  std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(narrow.data(), static_cast<int>(narrow.size()));
  return narrow;
}

}  // namespace zyn
