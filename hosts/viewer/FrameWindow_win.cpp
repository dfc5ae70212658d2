#include "viewer/FrameWindow_win.h"

// After windows.h:
#include <shellapi.h>

#include <exception>
#include <stdexcept>

namespace zyn::viewer {

namespace {

constexpr wchar_t kClassName[] = L"ZYNVueViewer";

struct FinishDrop {
  void operator()(HDROP drop) const { DragFinish(drop); }
};
using Drop = std::unique_ptr<std::remove_pointer_t<HDROP>, FinishDrop>;

void registerClass(WNDPROC procedure) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  description.hbrBackground = GetSysColorBrush(COLOR_APPWORKSPACE);
  description.lpszClassName = kClassName;
  RegisterClassExW(&description);
}

}  // namespace

FrameWindow::FrameWindow(FrameEvents& events, SIZE view)
    : events_(events), accelerators_(makeAccelerators(PaneKind::kModel)) {
  registerClass(&FrameWindow::procedure);
  window_ = CreateWindowExW(WS_EX_ACCEPTFILES, kClassName, L"ZYNVue viewer",
                            WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                            view.cx, view.cy, nullptr, makeMenuBar(PaneKind::kModel),
                            GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) {
    throw std::runtime_error("the window cannot be created");
  }
  status_ = std::make_unique<StatusBar>(window_);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  fitViewTo(view);
}

FrameWindow::~FrameWindow() {
  if (window_ != nullptr) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
  }
}

void FrameWindow::fitViewTo(SIZE view) {
  // A menu bar that wraps in a narrow window makes a second round necessary.
  for (int round = 0; round < 2; ++round) {
    RECT frame = {};
    GetWindowRect(window_, &frame);
    const RECT area = viewArea();
    SetWindowPos(window_, nullptr, 0, 0, frame.right - frame.left + view.cx - area.right,
                 frame.bottom - frame.top + view.cy - area.bottom,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    status_->arrange();
  }
}

RECT FrameWindow::viewArea() const {
  RECT area = {};
  GetClientRect(window_, &area);
  area.bottom -= status_->height();
  if (area.bottom < 0) {
    area.bottom = 0;
  }
  return area;
}

void FrameWindow::setTitle(const std::wstring& title) { SetWindowTextW(window_, title.c_str()); }

void FrameWindow::showCommandsOf(PaneKind pane) {
  const HMENU old = GetMenu(window_);
  SetMenu(window_, makeMenuBar(pane));
  DestroyMenu(old);
  accelerators_ = makeAccelerators(pane);
}

bool FrameWindow::translate(MSG& message) const {
  const bool ours = message.hwnd == window_ || IsChild(window_, message.hwnd);
  return ours && TranslateAcceleratorW(window_, accelerators_.get(), &message) != 0;
}

LRESULT CALLBACK FrameWindow::procedure(HWND window, UINT message, WPARAM wParam,
                                        LPARAM lParam) noexcept {
  auto* const self = reinterpret_cast<FrameWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr) {
    try {
      if (self->handle(message, wParam, lParam)) {
        return 0;
      }
    } catch (const std::exception& error) {
      self->events_.failed(error.what());
      return 0;
    }
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

bool FrameWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) {
        status_->arrange();
        events_.arranged(viewArea());
      }
      return true;
    case WM_COMMAND:
      if (lParam == 0) {
        events_.chosen(static_cast<Command>(LOWORD(wParam)));
      }
      return true;
    case WM_INITMENUPOPUP:
      markCommands(GetMenu(window_), [this](Command command) { return events_.isOn(command); });
      return true;
    case WM_DROPFILES:
      openDropped(wParam);
      return true;
    case WM_ACTIVATE:
      events_.activated(LOWORD(wParam) != WA_INACTIVE);
      return true;
    case WM_CLOSE:
      return !events_.mayClose();
    case WM_DESTROY:
      events_.closing();
      PostQuitMessage(0);
      return true;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
      window_ = nullptr;
      return false;
    default:
      return false;
  }
}

void FrameWindow::openDropped(WPARAM message) {
  const Drop files(reinterpret_cast<HDROP>(message));
  std::wstring name(DragQueryFileW(files.get(), 0, nullptr, 0), L'\0');
  DragQueryFileW(files.get(), 0, name.data(), static_cast<UINT>(name.size() + 1));
  events_.dropped(name);
}

}  // namespace zyn::viewer
