#pragma once

#include <windows.h>

#include <cstring>

#include "support/Imports_win.h"
#include "support/ServerModule_win.h"

namespace zyn::test {

/// Has new views of ZYNVue.dll draw in their own windows, as they do on Windows, where this system
/// is one that they would draw in a hidden window on; for a scope.
class DirectPresentation {
 private:
  static FARPROC WINAPI withoutWine(HMODULE library, LPCSTR name) {
    const bool isNumber = reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
    if (!isNumber && std::strcmp(name, "wine_get_version") == 0) return nullptr;
    return GetProcAddress(library, name);
  }

  ServerModule module_{L"ZYNVue.dll"};
  ImportPatch patch_{module_.handle(), "GetProcAddress",
                     reinterpret_cast<const void*>(&withoutWine)};
};

}  // namespace zyn::test
