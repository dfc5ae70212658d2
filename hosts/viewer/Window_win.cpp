#include "viewer/Window_win.h"

#include <stdexcept>
#include <utility>

namespace zyn::viewer {

namespace {

/// Registers a class of windows; once more does no harm.
void registerClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

}  // namespace

Window::Window(const Description& description) {
  registerClass(description.className, &Window::procedure);
  const RECT& place = description.place;
  window_ = CreateWindowExW(description.extendedStyle, description.className, description.title,
                            description.style, place.left, place.top, place.right - place.left,
                            place.bottom - place.top, description.owner, description.menu,
                            GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) {
    throw std::runtime_error("the window cannot be created");
  }
}

Window::~Window() { close(); }

void Window::close() {
  if (window_ != nullptr) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(std::exchange(window_, nullptr));
  }
}

void Window::listen() {
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

bool Window::translate(MSG& message) const {
  return isOpen() && IsDialogMessageW(window_, &message);
}

LRESULT CALLBACK Window::procedure(HWND window, UINT message, WPARAM wParam,
                                   LPARAM lParam) noexcept {
  auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr) {
    if (message == WM_NCDESTROY) {
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      self->window_ = nullptr;
    } else if (const auto answer = self->answer(message, wParam, lParam)) {
      return *answer;
    }
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace zyn::viewer
