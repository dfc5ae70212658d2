// EditAmbiantLight: the dialog opens over the container, and nothing that is done in it reaches the
// lights.
#include <vector>

#include "support/ArrayVariant_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr int kActive = 206;
constexpr int kOk = 210;

/// What the timer saw of the open dialog.
struct Seen {
  bool opened = false;
  bool ownerDisabled = false;
  bool openAfterOk = false;
};
Seen seen;

void CALLBACK useDialog(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND dialog = FindWindowW(L"#32770", L"Lumiere Ambiante");
  if (!dialog) {
    return;
  }
  KillTimer(nullptr, timer);
  seen.opened = true;
  const HWND owner = GetWindow(dialog, GW_OWNER);
  seen.ownerDisabled = owner != nullptr && !IsWindowEnabled(owner);
  SendDlgItemMessageW(dialog, kActive, BM_CLICK, 0, 0);
  SendDlgItemMessageW(dialog, kOk, BM_CLICK, 0, 0);
  seen.openAfterOk = IsWindow(dialog) != FALSE;
  PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

TEST(View3DLightDialogTest, OpensOverTheContainerAndChangesNothing) {
  View3DHost view;
  _variant_t before;
  ASSERT_EQ(view->get_AmbientLightProperty(&before), S_OK);
  SetTimer(nullptr, 0, 50, useDialog);
  EXPECT_EQ(view->EditAmbiantLight(), S_OK);
  EXPECT_TRUE(seen.opened);
  EXPECT_TRUE(seen.ownerDisabled);
  EXPECT_TRUE(seen.openAfterOk);
  EXPECT_EQ(FindWindowW(L"#32770", L"Lumiere Ambiante"), nullptr);
  _variant_t after;
  ASSERT_EQ(view->get_AmbientLightProperty(&after), S_OK);
  EXPECT_EQ(doublesIn(after), doublesIn(before));
  EXPECT_TRUE(IsWindowEnabled(GetAncestor(view.window(), GA_ROOT)));
}

}  // namespace
}  // namespace zyn::test
