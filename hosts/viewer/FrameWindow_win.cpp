#include "viewer/FrameWindow_win.h"

// After windows.h:
#include <shellapi.h>

#include <algorithm>
#include <exception>
#include <stdexcept>

#include "viewer/WindowClass_win.h"

namespace zyn::viewer {

namespace {

constexpr wchar_t kClassName[] = L"ZYNVueViewer";
constexpr int kTreeWidth = 220;  // lengths at 96 dots per inch
constexpr int kLeastTreeWidth = 80;
constexpr int kSplitterWidth = 5;

struct FinishDrop {
  void operator()(HDROP drop) const { DragFinish(drop); }
};
using Drop = std::unique_ptr<std::remove_pointer_t<HDROP>, FinishDrop>;

}  // namespace

FrameWindow::FrameWindow(FrameEvents& events, PaneKind pane, SIZE view)
    : events_(events), pane_(pane), accelerators_(makeAccelerators(pane)) {
  registerWindowClass(kClassName, &FrameWindow::procedure);
  window_ =
      CreateWindowExW(WS_EX_ACCEPTFILES, kClassName, L"ZYNVue viewer",
                      WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT, view.cx,
                      view.cy, nullptr, makeMenuBar(pane), GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) {
    throw std::runtime_error("the window cannot be created");
  }
  scale_ = std::make_unique<UiScale>(window_);
  treeWidth_ = scale_->px(kTreeWidth);
  tools_ = std::make_unique<ToolBar>(window_, pane, *scale_);
  parts_ = std::make_unique<PartsTree>(window_, events, *scale_);
  parts_->setVisible(pane == PaneKind::kModel);
  status_ = std::make_unique<StatusBar>(window_, *scale_);
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
    SetWindowPos(window_, nullptr, 0, 0,
                 frame.right - frame.left + view.cx - (area.right - area.left),
                 frame.bottom - frame.top + view.cy - (area.bottom - area.top),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    arrange();
  }
}

void FrameWindow::arrange() {
  tools_->arrange();
  status_->arrange();
  const RECT gap = splitter();
  parts_->place({0, gap.top, gap.left, gap.bottom});
}

RECT FrameWindow::splitter() const {
  RECT area = {};
  GetClientRect(window_, &area);
  area.top += tools_->height();
  area.bottom = std::max(area.top, area.bottom - status_->height());
  const bool hasTree = parts_->isVisible();
  area.left = hasTree ? treeWidth_ : 0;
  area.right = area.left + (hasTree ? scale_->px(kSplitterWidth) : 0);
  return area;
}

RECT FrameWindow::viewArea() const {
  RECT client = {};
  GetClientRect(window_, &client);
  const RECT gap = splitter();
  return {gap.right, gap.top, std::max(gap.right, client.right), gap.bottom};
}

bool FrameWindow::isOverSplitter() const {
  POINT mouse = {};
  GetCursorPos(&mouse);
  ScreenToClient(window_, &mouse);
  const RECT gap = splitter();
  return PtInRect(&gap, mouse) != FALSE;
}

void FrameWindow::dragSplitter(int x) {
  RECT client = {};
  GetClientRect(window_, &client);
  const int least = scale_->px(kLeastTreeWidth);
  treeWidth_ = std::clamp(x, least, std::max(least, static_cast<int>(client.right) - least));
  arrange();
  events_.arranged(viewArea());
}

void FrameWindow::changeScale(const RECT& proposed) {
  const int before = scale_->px(kTreeWidth);
  scale_ = std::make_unique<UiScale>(window_);
  treeWidth_ = MulDiv(treeWidth_, scale_->px(kTreeWidth), before);
  tools_ = std::make_unique<ToolBar>(window_, pane_, *scale_);
  parts_->scaleTo(*scale_);
  status_->scaleTo(*scale_);
  SetWindowPos(window_, nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
               proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FrameWindow::markTools() {
  if (window_ != nullptr) {
    tools_->mark([this](Command command) { return events_.isOn(command); });
  }
}

void FrameWindow::setTitle(const std::wstring& title) { SetWindowTextW(window_, title.c_str()); }

void FrameWindow::showCommandsOf(PaneKind pane) {
  const HMENU old = GetMenu(window_);
  SetMenu(window_, makeMenuBar(pane));
  DestroyMenu(old);
  accelerators_ = makeAccelerators(pane);
  pane_ = pane;
  tools_ = std::make_unique<ToolBar>(window_, pane, *scale_);
  parts_->setVisible(pane == PaneKind::kModel);
  arrange();
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
      if (const auto answer = self->handle(message, wParam, lParam)) {
        return *answer;
      }
    } catch (const std::exception& error) {
      self->events_.failed(error.what());
      return 0;
    }
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> FrameWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) {
        arrange();
        events_.arranged(viewArea());
      }
      return 0;
    case WM_COMMAND:
      // Of a menu, a key or the tool bar.
      events_.chosen(static_cast<Command>(LOWORD(wParam)));
      return 0;
    case WM_NOTIFY:
      return parts_->notified(*reinterpret_cast<NMHDR*>(lParam));
    case WM_SETCURSOR:
      if (!isOverSplitter()) {
        return std::nullopt;
      }
      SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
      return 0;
    case WM_LBUTTONDOWN:
      if (isOverSplitter()) {
        SetCapture(window_);
      }
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == window_) {
        dragSplitter(static_cast<short>(LOWORD(lParam)));
      }
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case WM_DPICHANGED:
      changeScale(*reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_INITMENUPOPUP:
      showRecentFiles(reinterpret_cast<HMENU>(wParam), events_.recentFiles());
      markCommands(GetMenu(window_), [this](Command command) { return events_.isOn(command); });
      return 0;
    case WM_DROPFILES:
      openDropped(wParam);
      return 0;
    case WM_ACTIVATE:
      events_.activated(LOWORD(wParam) != WA_INACTIVE);
      return 0;
    case WM_CLOSE:
      return events_.mayClose() ? std::nullopt : std::optional<LRESULT>(0);
    case WM_DESTROY:
      events_.closing();
      PostQuitMessage(0);
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
      window_ = nullptr;
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void FrameWindow::openDropped(WPARAM message) {
  const Drop files(reinterpret_cast<HDROP>(message));
  std::wstring name(DragQueryFileW(files.get(), 0, nullptr, 0), L'\0');
  DragQueryFileW(files.get(), 0, name.data(), static_cast<UINT>(name.size() + 1));
  events_.dropped(name);
}

}  // namespace zyn::viewer
