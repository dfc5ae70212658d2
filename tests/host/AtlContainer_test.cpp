// The 3D view in the container of atl.dll, created by window text and attached
// to a window.
#include "support/AtlHost_win.h"
#include "support/ControlTest_win.h"

namespace zyn::test {
namespace {

HWND windowOf(IUnknown* control) {
  HWND found = nullptr;
  queryFor<IOleInPlaceObject>(control)->GetWindow(&found);
  return found;
}

SIZE clientSize(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  return {client.right, client.bottom};
}

class AtlContainer : public ControlTest {
 protected:
  const AtlHost atl;
};

TEST_F(AtlContainer, CreatesTheViewByItsName) {
  for (int round = 0; round < 5; ++round) {
    const HWND holder = atl.createWindow(container.window(), kVue3DProgId, {200, 100});
    ASSERT_TRUE(holder);
    ComPtr<IUnknown> view = atl.controlOf(holder);
    const HWND own = windowOf(view.Get());
    ASSERT_TRUE(IsWindowVisible(own));
    EXPECT_TRUE(IsChild(holder, own));
    EXPECT_EQ(clientSize(own).cx, 200);
    EXPECT_EQ(clientSize(own).cy, 100);
    DestroyWindow(holder);
    EXPECT_FALSE(IsWindow(own));
    IUnknown* const last = view.Detach();
    EXPECT_EQ(last->Release(), 0U);
  }
}

TEST_F(AtlContainer, FollowsItsHolderWhateverItsSize) {
  const HWND holder = atl.createWindow(container.window(), kVue3DProgId, {200, 100});
  ComPtr<IUnknown> view = atl.controlOf(holder);
  const HWND own = windowOf(view.Get());
  for (const SIZE size : {SIZE{120, 60}, SIZE{0, 0}, SIZE{1, 1}, SIZE{301, 199}}) {
    MoveWindow(holder, 0, 0, size.cx, size.cy, TRUE);
    ScriptedContainer::pump();
    EXPECT_EQ(clientSize(own).cx, size.cx);
    EXPECT_EQ(clientSize(own).cy, size.cy);
  }
  view.Reset();
  DestroyWindow(holder);
}

TEST_F(AtlContainer, IsDrawnAndTakesTheFocus) {
  const HWND holder = atl.createWindow(container.window(), kVue3DProgId, {200, 100});
  ComPtr<IUnknown> view = atl.controlOf(holder);
  const HWND own = windowOf(view.Get());
  EXPECT_EQ(queryFor<IZYNVue3D>(view.Get())->Repaint(), S_OK);
  EXPECT_TRUE(GetUpdateRect(own, nullptr, FALSE));
  ScriptedContainer::pump();
  EXPECT_FALSE(GetUpdateRect(own, nullptr, FALSE));
  SendMessageW(own, WM_RBUTTONDOWN, 0, 0);
  EXPECT_EQ(GetFocus(), own);
  view.Reset();
  DestroyWindow(holder);
}

TEST_F(AtlContainer, IsAttachedToAPlainWindow) {
  const HWND holder = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 77, 55,
                                      container.window(), nullptr, nullptr, nullptr);
  ASSERT_EQ(atl.attach(control.Get(), holder), S_OK);
  EXPECT_EQ(clientSize(window()).cx, 77);
  EXPECT_EQ(clientSize(window()).cy, 55);
  EXPECT_EQ(as<IZYNVue3D>()->VueXYp(0.0), S_OK);
  DestroyWindow(holder);
  EXPECT_EQ(window(), nullptr);
}

}  // namespace
}  // namespace zyn::test
