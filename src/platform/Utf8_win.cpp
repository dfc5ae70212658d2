#include "platform/Utf8_win.h"

#include <windows.h>

namespace zyn {

std::string utf8Of(std::wstring_view text) {
  const auto size = static_cast<int>(text.size());
  std::string utf8(text.size() * 3, '\0');  // at most, for a unit of UTF-16
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(),
                                         static_cast<int>(utf8.size()), nullptr, nullptr);
  utf8.resize(static_cast<std::size_t>(length));
  return utf8;
}

std::wstring wideOf(std::string_view utf8) {
  const auto size = static_cast<int>(utf8.size());
  std::wstring text(utf8.size(), L'\0');
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), size);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace zyn
