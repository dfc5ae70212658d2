#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace zyn {

/// The extension of a file's name in small letters, without the dot; empty where the last part of
/// the path has none.
inline std::wstring fileExtension(std::wstring_view fileName) {
  const auto end = fileName.find_last_of(L".\\/:");
  const bool isDot = end != std::wstring_view::npos && fileName[end] == L'.';
  std::wstring extension(isDot ? fileName.substr(end + 1) : std::wstring_view());
  // The letters of known extensions have no others of the same look.
  std::ranges::transform(extension, extension.begin(), [](wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
  });
  return extension;
}

}  // namespace zyn
