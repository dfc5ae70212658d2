#include "support/ModuleLeaks_win.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <bit>
#include <set>
#include <string>

namespace zyn::test {

static std::set<std::wstring> keptLibraries;

void allowKeptClassObject(const wchar_t* library) {
  if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")) {
    keptLibraries.insert(library);
  }
}

void allowLostReferences() { keptLibraries = {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}; }

void expectNothingLeft() {
  for (const wchar_t* const name : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
    const HMODULE module = GetModuleHandleW(name);
    if (!module || keptLibraries.contains(name)) continue;
    const auto canUnloadNow =
        std::bit_cast<HRESULT(WINAPI*)()>(GetProcAddress(module, "DllCanUnloadNow"));
    EXPECT_EQ(canUnloadNow(), S_OK) << "something of " << std::wstring(name) << " is left";
  }
}

}  // namespace zyn::test
