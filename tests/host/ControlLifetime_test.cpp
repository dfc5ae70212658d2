// Many lives of the views in one process, and the module's own.
#include "support/ControlTest_win.h"

// After windows.h:
#include <psapi.h>

namespace zyn::test {
namespace {

struct ViewClass {
  const char* label;
  const wchar_t* progId;
  const IID& events;
  /// Has a new view show something.
  void (*fill)(IUnknown* view);
};

void fill3D(IUnknown* control) {
  const auto view = queryFor<IZYNVue3D>(control);
  view->setBackground(0, 0, 1);
  view->Repaint();
}

void fill2D(IUnknown* control) {
  const auto view = queryFor<IZYNVue2D>(control);
  require(view->GraphView(0, 0, 0, _bstr_t(L"Temps"), _bstr_t(L"s"), nullptr, 0, 10, 2, 1, 1,
                          nullptr, nullptr, nullptr, 0, 10, 2, 1, 1),
          "GraphView");
}

class ControlLifetime : public ControlTest, public testing::WithParamInterface<ViewClass> {
 protected:
  ControlLifetime() : ControlTest(GetParam().progId, GetParam().events) {}

  /// Shows, draws and ends a view in one of the ways in which hosts do.
  void liveOnce(int way) {
    dropControl();
    makeControl();
    show();
    GetParam().fill(control.Get());
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

TEST_P(ControlLifetime, ModuleGoesWithItsLastViewAndComesBack) {
  for (int round = 0; round < 3; ++round) {
    liveOnce(3);
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"ZYNVue.dll"), nullptr);
  }
}

TEST_P(ControlLifetime, HundredsOfViewsLeaveNothingBehind) {
  for (int life = 0; life < 150; ++life) liveOnce(life % 4);
  const std::size_t before = committedBytes();
  for (int life = 0; life < 150; ++life) liveOnce(life % 4);
  EXPECT_LT(committedBytes(), before + (8U << 20));
  EXPECT_EQ(GetWindow(container.window(), GW_CHILD), nullptr);
}

const ViewClass kViews[] = {
    {"View3D", kVue3DProgId, DIID__IZYNVue3DEvents, fill3D},
    {"View2D", kVue2DProgId, DIID__IZYNVue2DEvents, fill2D},
};

INSTANTIATE_TEST_SUITE_P(Views, ControlLifetime, testing::ValuesIn(kViews),
                         [](const auto& tested) { return std::string(tested.param.label); });

}  // namespace
}  // namespace zyn::test
