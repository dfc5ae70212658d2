#include "viewer/FrameWindow_win.h"

// After windows.h:
#include <shellapi.h>

#include <algorithm>
#include <exception>

#include "viewer/ToolIcon.h"

namespace zyn::viewer {

namespace {

constexpr int kTreeWidth = 220;  // lengths at 96 dots per inch
constexpr int kProgramWidth = 270;
constexpr int kLeastPanelWidth = 80;
constexpr int kSplitterWidth = 5;

struct FinishDrop {
  void operator()(HDROP drop) const { DragFinish(drop); }
};
using Drop = std::unique_ptr<std::remove_pointer_t<HDROP>, FinishDrop>;

}  // namespace

FrameWindow::FrameWindow(FrameEvents& events, PaneKind pane, const Panels& panels, SIZE view)
    : Window({.className = L"ZYNVueViewer",
              .title = L"ZYNVue viewer",
              .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
              .extendedStyle = WS_EX_ACCEPTFILES,
              .place = {CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + view.cx,
                        CW_USEDEFAULT + view.cy},
              .menu = makeMenuBar(pane)}),
      events_(events),
      pane_(pane),
      accelerators_(makeAccelerators(pane)),
      scale_(std::make_unique<UiScale>(handle())),
      tools_(std::make_unique<ToolBar>(handle(), toolsOf(pane), *scale_)),
      parts_(std::make_unique<PartsTree>(handle(), events, *scale_)),
      pathBar_(std::make_unique<PathBar>(handle(), events, *scale_)),
      program_(std::make_unique<ProgramList>(handle(), events, *scale_)),
      status_(std::make_unique<StatusBar>(handle(), *scale_)),
      treeWidth_(scale_->px(kTreeWidth)),
      programWidth_(scale_->px(kProgramWidth)) {
  setVisible(panels);
  fitViewTo(view);
  listen();
}

FrameWindow::~FrameWindow() { close(); }

void FrameWindow::fitViewTo(SIZE view) {
  // A menu bar that wraps in a narrow window makes a second round necessary.
  for (int round = 0; round < 2; ++round) {
    RECT frame = {};
    GetWindowRect(handle(), &frame);
    const RECT area = viewArea();
    SetWindowPos(handle(), nullptr, 0, 0,
                 frame.right - frame.left + view.cx - (area.right - area.left),
                 frame.bottom - frame.top + view.cy - (area.bottom - area.top),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    arrange();
  }
}

void FrameWindow::arrange() {
  RECT client = {};
  GetClientRect(handle(), &client);
  tools_->place({0, 0, client.right, tools_->height()});
  status_->arrange();
  const RECT left = placeOf(Gap::kParts);
  const RECT right = placeOf(Gap::kProgram);
  parts_->place({0, left.top, left.left, left.bottom});
  program_->place({right.right, right.top, client.right, right.bottom});
  const RECT view = viewArea();
  pathBar_->place({view.left, view.bottom, view.right, left.bottom});
}

RECT FrameWindow::middle() const {
  RECT area = {};
  GetClientRect(handle(), &area);
  area.top += tools_->height();
  area.bottom = std::max(area.top, area.bottom - status_->height());
  return area;
}

RECT FrameWindow::placeOf(Gap gap) const {
  RECT area = middle();
  const bool isOfParts = gap == Gap::kParts;
  const bool isThere = isOfParts ? parts_->isVisible() : program_->isVisible();
  const int panel = isThere ? (isOfParts ? treeWidth_ : programWidth_) : 0;
  const int width = isThere ? scale_->px(kSplitterWidth) : 0;
  if (isOfParts) {
    area.left = panel;
    area.right = panel + width;
  } else {
    area.right = std::max(area.left, area.right - panel);
    area.left = std::max(area.left, area.right - width);
  }
  return area;
}

RECT FrameWindow::viewArea() const {
  RECT area = middle();
  area.left = placeOf(Gap::kParts).right;
  area.right = std::max(area.left, placeOf(Gap::kProgram).left);
  if (pathBar_->isVisible()) {
    area.bottom = std::max(area.top, area.bottom - pathBar_->height());
  }
  return area;
}

FrameWindow::Gap FrameWindow::gapUnderMouse() const {
  POINT mouse = {};
  GetCursorPos(&mouse);
  ScreenToClient(handle(), &mouse);
  for (const Gap gap : {Gap::kParts, Gap::kProgram}) {
    const RECT place = placeOf(gap);
    if (PtInRect(&place, mouse)) {
      return gap;
    }
  }
  return Gap::kNone;
}

void FrameWindow::dragGap(int x) {
  RECT client = {};
  GetClientRect(handle(), &client);
  const int least = scale_->px(kLeastPanelWidth);
  const int most = std::max(least, static_cast<int>(client.right) - least);
  if (dragged_ == Gap::kParts) {
    treeWidth_ = std::clamp(x, least, most);
  } else {
    programWidth_ = std::clamp(static_cast<int>(client.right) - x, least, most);
  }
  arrange();
  events_.arranged(viewArea());
}

void FrameWindow::changeScale(const RECT& proposed) {
  const int before = scale_->px(kTreeWidth);
  scale_ = std::make_unique<UiScale>(handle());
  treeWidth_ = MulDiv(treeWidth_, scale_->px(kTreeWidth), before);
  programWidth_ = MulDiv(programWidth_, scale_->px(kTreeWidth), before);
  tools_ = std::make_unique<ToolBar>(handle(), toolsOf(pane_), *scale_);
  parts_->scaleTo(*scale_);
  pathBar_->scaleTo(*scale_);
  program_->scaleTo(*scale_);
  status_->scaleTo(*scale_);
  SetWindowPos(handle(), nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
               proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FrameWindow::markTools() {
  if (isOpen()) {
    const auto isOn = [this](Command command) { return events_.isOn(command); };
    tools_->mark(isOn);
    pathBar_->markTools(isOn);
  }
}

void FrameWindow::setTitle(const std::wstring& title) { SetWindowTextW(handle(), title.c_str()); }

void FrameWindow::showCommandsOf(PaneKind pane) {
  const HMENU old = GetMenu(handle());
  SetMenu(handle(), makeMenuBar(pane));
  DestroyMenu(old);
  accelerators_ = makeAccelerators(pane);
  pane_ = pane;
  tools_ = std::make_unique<ToolBar>(handle(), toolsOf(pane), *scale_);
  arrange();
}

void FrameWindow::showPanels(const Panels& panels) {
  const Panels before = {parts_->isVisible(), program_->isVisible()};
  if (panels == before) {
    return;
  }
  setVisible(panels);
  arrange();
  events_.arranged(viewArea());
}

void FrameWindow::setVisible(const Panels& panels) {
  parts_->setVisible(panels.parts);
  program_->setVisible(panels.path);
  pathBar_->setVisible(panels.path);
}

bool FrameWindow::translate(MSG& message) const {
  const bool ours = message.hwnd == handle() || IsChild(handle(), message.hwnd);
  return ours && TranslateAcceleratorW(handle(), accelerators_.get(), &message) != 0;
}

bool FrameWindow::isKeyOfPanel(const MSG& message) const {
  const bool isKey = message.message == WM_KEYDOWN || message.message == WM_KEYUP;
  return isKey && isOpen() &&
         (parts_->keepsKey(message) || program_->keepsKey(message) || pathBar_->keepsKey(message));
}

std::optional<LRESULT> FrameWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
  try {
    return handleMessage(message, wParam, lParam);
  } catch (const std::exception& error) {
    events_.failed(error.what());
    return 0;
  }
}

std::optional<LRESULT> FrameWindow::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
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
      return notified(*reinterpret_cast<NMHDR*>(lParam));
    case WM_HSCROLL:
      return pathBar_->scrolled(lParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_TIMER:
      events_.ticked();
      return 0;
    case WM_SETCURSOR:
    case WM_LBUTTONDOWN:
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
      return handleMouse(message, lParam);
    case WM_DPICHANGED:
      changeScale(*reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_INITMENUPOPUP:
      showRecentFiles(reinterpret_cast<HMENU>(wParam), events_.recentFiles());
      markCommands(GetMenu(handle()), [this](Command command) { return events_.isOn(command); });
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
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> FrameWindow::handleMouse(UINT message, LPARAM lParam) {
  switch (message) {
    case WM_SETCURSOR:
      if (gapUnderMouse() == Gap::kNone) {
        return std::nullopt;
      }
      SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
      return 0;
    case WM_LBUTTONDOWN:
      dragged_ = gapUnderMouse();
      if (dragged_ != Gap::kNone) {
        SetCapture(handle());
      }
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == handle()) {
        dragGap(static_cast<short>(LOWORD(lParam)));
      }
      return 0;
    default:
      ReleaseCapture();
      return 0;
  }
}

std::optional<LRESULT> FrameWindow::notified(NMHDR& message) {
  const std::optional<LRESULT> answer = parts_->notified(message);
  return answer ? answer : program_->notified(message);
}

void FrameWindow::openDropped(WPARAM message) {
  const Drop files(reinterpret_cast<HDROP>(message));
  const UINT count = DragQueryFileW(files.get(), 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring name(DragQueryFileW(files.get(), i, nullptr, 0), L'\0');
    DragQueryFileW(files.get(), i, name.data(), static_cast<UINT>(name.size() + 1));
    events_.dropped(name);
  }
}

}  // namespace zyn::viewer
