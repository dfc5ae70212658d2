#include "common/Utf8_win.h"

#include <windows.h>

namespace zyn::host {

std::string toUtf8(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int needed =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), needed, nullptr, nullptr);
  return utf8;
}

std::wstring toWide(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(utf8.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), size)));
  return wide;
}

}  // namespace zyn::host
