#include "com/TypeLibraryRegistration_com.h"

// After windows.h:
#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <cwchar>
#include <iterator>
#include <string>

#include "com/ModuleState_com.h"
#include "platform/ModuleHandle_win.h"

// Exported by oleaut32 since Windows Vista; MinGW's headers do not declare them.
extern "C" {
HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale,
                                        SYSKIND kind);
}

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// Wine's functions for the user write to HKEY_CLASSES_ROOT. While this lives, that is the user's
/// part of it. On Windows, where they write to the right place by themselves, it changes nothing.
class UserClassesAsRoot {
 public:
  UserClassesAsRoot() {
    checkRegistry(
        RegOverridePredefKey(HKEY_CLASSES_ROOT, ClassesRoot(RegistrationScope::kUser).get()));
  }
  UserClassesAsRoot(const UserClassesAsRoot&) = delete;
  UserClassesAsRoot& operator=(const UserClassesAsRoot&) = delete;
  ~UserClassesAsRoot() { RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr); }
};

/// Whether the type library is registered, and read from our own file.
bool isRegisteredHere(const TypeLibraryAttributes& id, RegistrationScope scope) {
  std::array<wchar_t, 40> version{};
  std::swprintf(version.data(), version.size(), L"\\%x.%x\\%lx\\win64", id->wMajorVerNum,
                id->wMinorVerNum, id->lcid);
  const auto file =
      readText(ClassesRoot(scope).get(), L"TypeLib\\" + guidText(id->guid) + version.data());
  return file && isSameText(*file, modulePath());
}

}  // namespace

std::wstring guidText(REFGUID id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

void registerTypeLibrary(RegistrationScope scope) {
  const ComPtr<ITypeLib> library = ModuleState::instance().typeLibrary();
  std::wstring path = modulePath();
  if (scope == RegistrationScope::kMachine) {
    throwIfFailed(RegisterTypeLib(library.Get(), path.data(), nullptr));
    return;
  }
  const UserClassesAsRoot redirected;
  throwIfFailed(RegisterTypeLibForUser(library.Get(), path.data(), nullptr));
}

void unregisterTypeLibrary(RegistrationScope scope) {
  const ComPtr<ITypeLib> library = ModuleState::instance().typeLibrary();
  const TypeLibraryAttributes id(*library.Get());
  if (!isRegisteredHere(id, scope)) {
    return;
  }
  if (scope == RegistrationScope::kMachine) {
    throwIfFailed(
        UnRegisterTypeLib(id->guid, id->wMajorVerNum, id->wMinorVerNum, id->lcid, id->syskind));
    return;
  }
  const UserClassesAsRoot redirected;
  throwIfFailed(UnRegisterTypeLibForUser(id->guid, id->wMajorVerNum, id->wMinorVerNum, id->lcid,
                                         id->syskind));
}

}  // namespace zyn
