// Many lives of the 3D view in one process, and the module's own.
#include "support/ControlTest_win.h"

// After windows.h:
#include <psapi.h>

namespace zyn::test {
namespace {

class ControlLifetime : public ControlTest {
 protected:
  /// Shows, draws and ends a view in one of the ways in which hosts do.
  void liveOnce(int way) {
    dropControl();
    makeControl();
    show();
    as<IZYNVue3D>()->Repaint();
    UpdateWindow(window());
    if (way == 0) control->Close(OLECLOSE_NOSAVE);
    if (way == 1) control->SetClientSite(nullptr);
    if (way == 2) DestroyWindow(window());
    dropControl();
  }

  static std::size_t committedBytes() {
    PROCESS_MEMORY_COUNTERS memory = {};
    memory.cb = sizeof memory;
    require(K32GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory) ? S_OK : E_FAIL,
            "GetProcessMemoryInfo");
    return memory.PagefileUsage;
  }
};

TEST_F(ControlLifetime, ModuleGoesWithItsLastViewAndComesBack) {
  for (int round = 0; round < 3; ++round) {
    liveOnce(3);
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"ZYNVue.dll"), nullptr);
  }
}

TEST_F(ControlLifetime, HundredsOfViewsLeaveNothingBehind) {
  for (int life = 0; life < 150; ++life) liveOnce(life % 4);
  const std::size_t before = committedBytes();
  for (int life = 0; life < 150; ++life) liveOnce(life % 4);
  EXPECT_LT(committedBytes(), before + (8U << 20));
  EXPECT_EQ(GetWindow(container.window(), GW_CHILD), nullptr);
}

}  // namespace
}  // namespace zyn::test
