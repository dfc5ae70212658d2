#include "soak/arguments/Dialogs_win.h"

namespace zyn::test {
namespace {

LRESULT CALLBACK cancelNew(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HCBT_CREATEWND) {
    const auto* const made = reinterpret_cast<CBT_CREATEWNDW*>(lParam);
    // The system's class of dialogs has a number for a name. What is posted waits for the dialog's
    // own message loop.
    if (made->lpcs->lpszClass == MAKEINTATOM(32770)) {
      PostMessageW(reinterpret_cast<HWND>(wParam), WM_COMMAND, IDCANCEL, 0);
    }
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

DialogsCancelled::DialogsCancelled()
    : hook_(SetWindowsHookExW(WH_CBT, cancelNew, nullptr, GetCurrentThreadId())) {}

DialogsCancelled::~DialogsCancelled() { UnhookWindowsHookEx(hook_); }

}  // namespace zyn::test
