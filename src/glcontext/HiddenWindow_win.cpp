#include "glcontext/HiddenWindow_win.h"

namespace zyn {

// Any registered class serves: the window is never painted.
HiddenWindow::HiddenWindow(SIZE size, Place place)
    : window_(CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP, 0, 0,
                              size.cx, size.cy, place == kMessageOnly ? HWND_MESSAGE : nullptr,
                              nullptr, nullptr, nullptr)),
      dc_(window_ != nullptr ? GetDCEx(window_, nullptr, DCX_CACHE) : nullptr, {window_}) {}

HiddenWindow::~HiddenWindow() {
  dc_.reset();
  if (window_ != nullptr) {
    DestroyWindow(window_);
  }
}

}  // namespace zyn
