#include "com/RegistryKey_com.h"

#include "com/errors_com.h"

namespace zyn {

void checkRegistry(LSTATUS status) {
  throwIfFailed(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

void checkRegistryUnlessMissing(LSTATUS status) {
  if (status != ERROR_FILE_NOT_FOUND) {
    checkRegistry(status);
  }
}

UniqueRegistryKey createKey(HKEY parent, const std::wstring& name) {
  HKEY key = nullptr;
  checkRegistry(RegCreateKeyExW(parent, name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                KEY_READ | KEY_WRITE, nullptr, &key, nullptr));
  return UniqueRegistryKey(key);
}

std::optional<std::wstring> readText(HKEY parent, const std::wstring& path) {
  std::wstring text(MAX_PATH, L'\0');
  for (;;) {
    auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS status =
        RegGetValueW(parent, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &size);
    if (status == ERROR_MORE_DATA) {
      text.resize(text.size() * 2);
      continue;
    }
    checkRegistryUnlessMissing(status);
    return status == ERROR_SUCCESS ? std::optional<std::wstring>(text.c_str()) : std::nullopt;
  }
}

bool isSameText(const std::wstring& a, const std::wstring& b) noexcept {
  return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

UniqueRegistryKey openKey(HKEY parent, const std::wstring& name) {
  HKEY key = nullptr;
  checkRegistryUnlessMissing(RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ | KEY_WRITE, &key));
  return UniqueRegistryKey(key);
}

}  // namespace zyn
