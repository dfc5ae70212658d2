#include "support/ModuleLeaks_win.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <bit>

namespace zyn::test {

void expectNothingLeft() {
  for (const wchar_t* const name : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
    const HMODULE module = GetModuleHandleW(name);
    if (!module) continue;
    const auto canUnloadNow =
        std::bit_cast<HRESULT(WINAPI*)()>(GetProcAddress(module, "DllCanUnloadNow"));
    EXPECT_EQ(canUnloadNow(), S_OK) << "something of " << std::wstring(name) << " is left";
  }
}

}  // namespace zyn::test
