#include "com/control/ActiveWindow_com.h"

#include <wrl/client.h>

#include <utility>

#include "com/control/Control_com.h"
#include "com/control/PaintPause_com.h"
#include "com/control/StockPointer_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  ~PaintScope() { EndPaint(window_, &paint_); }

  HDC dc() const { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_ = {};
  HDC dc_;
};

SIZE clientSizeOf(HWND window) noexcept {
  RECT client = {};
  GetClientRect(window, &client);
  return {client.right, client.bottom};
}

bool isButtonPress(UINT message) noexcept {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_XBUTTONDOWN:
    case WM_XBUTTONDBLCLK:
      return true;
    default:
      return false;
  }
}

bool isUserInput(UINT message) noexcept {
  return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_KEYFIRST && message <= WM_KEYLAST);
}

}  // namespace

SIZE ActiveWindow::clientSize() const noexcept {
  const HWND window = handle();
  return window ? clientSizeOf(window) : SIZE{};
}

bool ActiveWindow::create(HWND parent, const RECT& place) noexcept {
  ended(nullptr);
  return window_.create(parent, place);
}

void ActiveWindow::destroy() noexcept {
  window_.destroy();
  ended(nullptr);
}

void ActiveWindow::show() noexcept { ShowWindow(handle(), SW_SHOWNA); }

void ActiveWindow::hide() noexcept { ShowWindow(handle(), SW_HIDE); }

void ActiveWindow::takeFocus() noexcept {
  const HWND window = handle();
  const HWND focus = GetFocus();
  if (window && focus != window && !IsChild(window, focus)) {
    SetFocus(window);
  }
}

std::optional<LRESULT> ActiveWindow::windowMessage(HWND window, UINT message, WPARAM wParam,
                                                   LPARAM lParam) noexcept {
  const ComPtr<IUnknown> alive = control_.keepAlive();
  std::optional<LRESULT> result;
  boundary([&] { result = handle(window, message, wParam, lParam); });
  return result;
}

std::optional<LRESULT> ActiveWindow::handle(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      created(window);
      return 0;
    case WM_DESTROY:
    case WM_NCDESTROY:
      if (window == announced_) {
        ended(window);
      }
      return std::nullopt;
    case WM_SIZE:
      resized(window);
      return 0;
    case WM_PAINT:
      paint(window);
      return 0;
    case WM_PRINTCLIENT:
      print(reinterpret_cast<HDC>(wParam));  // NOLINT(performance-no-int-to-ptr)
      return 0;
    case WM_ERASEBKGND:
      return 1;
    default:
      return window == announced_ ? handleInput(message, wParam, lParam) : std::nullopt;
  }
}

std::optional<LRESULT> ActiveWindow::handleInput(UINT message, WPARAM wParam, LPARAM lParam) {
  if (control_.ignoresInput() && isUserInput(message)) {
    return std::nullopt;
  }
  if (isButtonPress(message)) {
    control_.activation().activateUi();
    takeFocus();
  }
  // The window may be on its way out, by our own doing or by that of whoever has just been called.
  if (window_.handle() && window_.handle() == announced_) {
    if (const auto result = control_.onMessage(message, wParam, lParam)) {
      return result;
    }
  }
  switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      focusChanged(message == WM_SETFOCUS);
      return std::nullopt;
    case WM_GETDLGCODE:
      return control_.wantsKey(VK_LEFT) ? DLGC_WANTARROWS | DLGC_WANTCHARS : 0;
    case WM_SETCURSOR: {
      const StockPointer* const pointer = control_.stockPointer();
      const HCURSOR cursor = pointer ? pointer->cursor() : nullptr;
      if (!cursor || LOWORD(lParam) != HTCLIENT) {
        return std::nullopt;
      }
      SetCursor(cursor);
      return TRUE;
    }
    default:
      return std::nullopt;
  }
}

void ActiveWindow::created(HWND window) {
  announced_ = window;
  client_ = clientSizeOf(window);
  control_.windowCreated(window, client_);
}

/// Tells the control, once, that the window it was told of is no more; null when that window is not
/// even there to be named.
void ActiveWindow::ended(HWND window) noexcept {
  if (std::exchange(announced_, nullptr)) {
    control_.windowDestroyed(window);
  }
}

void ActiveWindow::resized(HWND window) {
  const SIZE client = clientSizeOf(window);
  if (window == announced_ && (client.cx != client_.cx || client.cy != client_.cy)) {
    client_ = client;
    control_.windowResized(client);
  }
}

void ActiveWindow::paint(HWND window) {
  const PaintPause pause(*this);
  if (pause.isNested()) {
    ValidateRect(window, nullptr);
    paintAgain_ = true;
    return;
  }
  boundary([&] {
    const PaintScope scope(window);
    if (scope.dc() && window == announced_) {
      control_.paint(scope.dc());
    }
  });
}

void ActiveWindow::resumePainting() noexcept {
  if (std::exchange(paintAgain_, false)) {
    control_.repaint();
  }
}

void ActiveWindow::print(HDC dc) {
  const SIZE client = clientSize();
  if (dc && client.cx > 0 && client.cy > 0) {
    control_.drawInto(dc, {0, 0, client.cx, client.cy}, client);
  }
}

void ActiveWindow::focusChanged(bool gained) {
  if (const auto site = control_.site().as<IOleControlSite>()) {
    site->OnFocus(gained);
  }
  if (gained) {
    control_.activation().activateUi();
  }
}

}  // namespace zyn
