#include "com/control/ControlWindow_win.h"

#include <mutex>
#include <utility>

#include "platform/ModuleHandle_win.h"
#include "platform/ModuleStatic.h"
#include "platform/Mutex_win.h"

namespace zyn {

namespace {

constexpr const wchar_t* kClassName = L"ZYNVueControl";

ControlWindow* ownerOf(HWND window) noexcept {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): it is how a window keeps a pointer
  return reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, 0));
}

}  // namespace

/// The registration of the window class, from the first time that it succeeds and for as long as
/// the module is loaded.
class ControlWindowClass {
 public:
  static ATOM atom() noexcept {
    static ControlWindowClass registered;
    const std::lock_guard lock(registered.mutex_);
    if (registered.atom_ == 0) {
      registered.atom_ = registerClass();
    }
    return registered.atom_;
  }

 private:
  ControlWindowClass() = default;
  ~ControlWindowClass() {
    if (atom_ != 0 && !UnregisterClassW(kClassName, moduleHandle()) && !ProcessEnd::hasBegun()) {
      EnumWindows(disownBelow, 0);
    }
  }

  /// A host that ends COM before its windows has this library unloaded under them: those of ours
  /// get the system's procedure, for ours is about to go.
  static BOOL CALLBACK disownBelow(HWND window, LPARAM) noexcept {
    EnumChildWindows(window, disown, 0);
    return TRUE;
  }
  static BOOL CALLBACK disown(HWND window, LPARAM) noexcept {
    if (GetWindowLongPtrW(window, GWLP_WNDPROC) ==
        reinterpret_cast<LONG_PTR>(&ControlWindow::procedure)) {
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcW));
    }
    return TRUE;
  }

  static ATOM registerClass() noexcept {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS | CS_OWNDC;
    description.lpfnWndProc = ControlWindow::procedure;
    description.cbWndExtra = sizeof(LONG_PTR);
    description.hInstance = moduleHandle();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kClassName;
    return RegisterClassExW(&description);
  }

  Mutex mutex_;
  ATOM atom_ = 0;
};

bool ControlWindow::create(HWND parent, const RECT& place) noexcept {
  destroy();
  const ATOM windowClass = ControlWindowClass::atom();
  return windowClass &&
         CreateWindowExW(0, MAKEINTATOM(windowClass), L"",
                         WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, parent, nullptr,
                         moduleHandle(), this);
}

void ControlWindow::destroy() noexcept {
  const HWND window = std::exchange(window_, nullptr);
  const bool isEnding = std::exchange(ending_, false);
  clipped_ = false;
  if (!window || ownerOf(window) != this) {
    return;
  }
  if (!isEnding) {
    DestroyWindow(window);
  }
  // One that is being destroyed already, or cannot be from this thread, must forget us all the
  // same.
  if (ownerOf(window) == this) {
    SetWindowLongPtrW(window, 0, 0);
  }
}

HWND ControlWindow::handle() const noexcept {
  return window_ && !ending_ && ownerOf(window_) == this ? window_ : nullptr;
}

void ControlWindow::place(const RECT& position, const RECT& clip) noexcept {
  const HWND window = handle();
  if (!window) {
    return;
  }
  SetWindowPos(window, nullptr, position.left, position.top, position.right - position.left,
               position.bottom - position.top, SWP_NOZORDER | SWP_NOACTIVATE);
  RECT shown = position;
  if (!IsRectEmpty(&clip)) {
    IntersectRect(&shown, &position, &clip);
  }
  const bool clipped = !EqualRect(&shown, &position) && !IsRectEmpty(&position);
  if (clipped || clipped_) {
    OffsetRect(&shown, -position.left, -position.top);
    SetWindowRgn(window, clipped ? CreateRectRgnIndirect(&shown) : nullptr, TRUE);
    clipped_ = clipped;
  }
}

LRESULT CALLBACK ControlWindow::procedure(HWND window, UINT message, WPARAM wParam,
                                          LPARAM lParam) noexcept {
  if (message == WM_NCCREATE && lParam && !ownerOf(window)) {
    auto* const created = static_cast<ControlWindow*>(
        reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);  // NOLINT
    created->window_ = window;
    SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(created));
  }
  ControlWindow* const owner = ownerOf(window);
  std::optional<LRESULT> result;
  if (owner) {
    if ((message == WM_DESTROY || message == WM_NCDESTROY) && owner->window_ == window) {
      owner->ending_ = true;
    }
    result = owner->client_.windowMessage(window, message, wParam, lParam);
  }
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, 0, 0);
  }
  return result ? *result : DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace zyn
