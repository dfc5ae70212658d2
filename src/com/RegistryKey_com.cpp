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

UniqueRegistryKey openKey(HKEY parent, const std::wstring& name) {
  HKEY key = nullptr;
  checkRegistryUnlessMissing(RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ | KEY_WRITE, &key));
  return UniqueRegistryKey(key);
}

}  // namespace zyn
