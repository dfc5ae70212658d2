// What the screen shows of a view that something else has covered for a while.
#include <algorithm>
#include <string>
#include <vector>

#include "glcontext/gl_api.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

/// Serves messages until it is so, for some seconds at most.
bool comesTrue(const std::function<bool()>& isSo) {
  for (int tries = 0; tries < 500; ++tries) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    if (isSo()) return true;
    Sleep(10);
  }
  return false;
}

bool isWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

/// A menu, open until something is so.
class OpenMenu {
 public:
  OpenMenu() {
    for (int i = 0; i < 6; ++i) AppendMenuW(menu_, MF_STRING, 1, L"An entry that is long enough");
  }
  ~OpenMenu() { DestroyMenu(menu_); }
  OpenMenu(const OpenMenu&) = delete;
  OpenMenu& operator=(const OpenMenu&) = delete;

  bool until(const std::function<bool()>& isSo, POINT corner, HWND owner) {
    static const std::function<bool()>* wanted = nullptr;
    static bool came = false;
    static int left = 0;
    wanted = &isSo;
    came = false;
    left = 500;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
      came = came || (*wanted)();
      if (came || --left == 0) EndMenu();
    });
    TrackPopupMenu(menu_, TPM_RETURNCMD | TPM_NONOTIFY, corner.x, corner.y, 0, owner, nullptr);
    KillTimer(nullptr, timer);
    return came;
  }

 private:
  HMENU menu_ = CreatePopupMenu();
};

void showNothingOfItsOwn(const View2DHost&) {}
void showNothingOfItsOwn(const View3DHost& view) {
  require(view->put_DrawCoordSys(VARIANT_FALSE), "DrawCoordSys");
  view.addBox({-1, 1, -1, 1, -1, 1});
  require(view->initView(0), "initView");
}

template <class View>
class ViewCovering : public HostTest {
 protected:
  ViewCovering() {
    SetWindowPos(frame(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    object_ = host.add([this](int) {
      glClearColor(red_, 0.4F, 0.8F, 1);
      glClear(GL_COLOR_BUFFER_BIT);
      return S_OK;
    });
    showNothingOfItsOwn(host);
    host.paint();
  }

  HWND frame() const { return GetAncestor(host.window(), GA_ROOT); }

  void turnPink() { red_ = 1; }

  bool isWhole() const {
    const SIZE size = host.clientSize();
    const auto red = static_cast<unsigned char>(red_ * 255);
    return host.onScreen().count({red, 102, 204}) == size.cx * size.cy;
  }
  bool isCovered() const { return !isWhole(); }

  View host{SIZE{300, 200}};

 private:
  float red_ = 0.2F;
  ComPtr<ForeignObject> object_;
};

using Views = ::testing::Types<View2DHost, View3DHost>;
TYPED_TEST_SUITE(ViewCovering, Views);

TYPED_TEST(ViewCovering, AMenuLeavesTheFrameWhole) {
  ASSERT_TRUE(comesTrue([&] { return this->isWhole(); }));
  POINT corner = {20, 20};
  ClientToScreen(this->host.window(), &corner);
  EXPECT_TRUE(OpenMenu().until([&] { return this->isCovered(); }, corner, this->frame()));
  EXPECT_TRUE(comesTrue([&] { return this->isWhole(); }));
}

TYPED_TEST(ViewCovering, AnotherWindowLeavesTheFrameWhole) {
  ASSERT_TRUE(comesTrue([&] { return this->isWhole(); }));
  const HWND other =
      CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP,
                      50, 50, 100, 100, nullptr, nullptr, nullptr, nullptr);
  ShowWindow(other, SW_SHOWNOACTIVATE);
  EXPECT_TRUE(comesTrue([&] { return this->isCovered(); }));
  DestroyWindow(other);
  EXPECT_TRUE(comesTrue([&] { return this->isWhole(); }));
}

/// As a program does that closes all windows of a thread.
int destroyHiddenWindows() {
  std::vector<HWND> hidden;
  for (const HWND parent : {static_cast<HWND>(nullptr), HWND_MESSAGE}) {
    HWND window = nullptr;
    while ((window = FindWindowExW(parent, window, L"Static", nullptr)) != nullptr) {
      const bool isOurs = GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
      if (isOurs && !IsWindowVisible(window)) hidden.push_back(window);
    }
  }
  return static_cast<int>(std::ranges::count_if(hidden, DestroyWindow));
}

TYPED_TEST(ViewCovering, ANewSizeIsFilled) {
  for (const SIZE size : {SIZE{500, 400}, SIZE{120, 300}, SIZE{301, 200}}) {
    this->host.resize(size);
    this->host.paint();
    EXPECT_TRUE(comesTrue([&] { return this->isWhole(); })) << size.cx << " x " << size.cy;
  }
}

TYPED_TEST(ViewCovering, AHiddenWindowThatIsDestroyedIsMadeAgain) {
  ASSERT_TRUE(comesTrue([&] { return this->isWhole(); }));
  EXPECT_EQ(destroyHiddenWindows() > 0, isWine());
  this->turnPink();
  this->host.paint();
  EXPECT_TRUE(comesTrue([&] { return this->isWhole(); }));
}

/// While it lives, this thread's windows for drawing on can only be made where the screen knows
/// them.
class NoMessageOnlyCanvas {
 public:
  NoMessageOnlyCanvas() : hook_(SetWindowsHookExW(WH_CBT, &answer, nullptr, GetCurrentThreadId())) {
    refused = 0;
  }
  ~NoMessageOnlyCanvas() { UnhookWindowsHookEx(hook_); }
  NoMessageOnlyCanvas(const NoMessageOnlyCanvas&) = delete;
  NoMessageOnlyCanvas& operator=(const NoMessageOnlyCanvas&) = delete;

  inline static int refused = 0;

 private:
  static LRESULT CALLBACK answer(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND) {
      const CREATESTRUCTW& made = *reinterpret_cast<const CBT_CREATEWNDW*>(lParam)->lpcs;
      if (isMessageParent(made.hwndParent) && !IS_INTRESOURCE(made.lpszClass) &&
          std::wstring(made.lpszClass) == L"STATIC") {
        return ++refused;
      }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
  }

  /// By its class: hooks are given the window that stands for HWND_MESSAGE.
  static bool isMessageParent(HWND window) {
    wchar_t name[20] = L"";
    return window == HWND_MESSAGE ||
           (GetClassNameW(window, name, static_cast<int>(std::size(name))) > 0 &&
            std::wstring(name) == L"Message");
  }

  HHOOK hook_;
};

template <class View>
class ViewWithoutMessageOnlyCanvas : public NoMessageOnlyCanvas, public ViewCovering<View> {};
TYPED_TEST_SUITE(ViewWithoutMessageOnlyCanvas, Views);

TYPED_TEST(ViewWithoutMessageOnlyCanvas, IsWholeInEverySize) {
  EXPECT_TRUE(comesTrue([&] { return this->isWhole(); }));
  this->host.resize({500, 400});
  this->host.paint();
  EXPECT_TRUE(comesTrue([&] { return this->isWhole(); }));
  if (isWine()) {
    EXPECT_GT(this->refused, 0);
  }
}

}  // namespace
}  // namespace zyn::test
