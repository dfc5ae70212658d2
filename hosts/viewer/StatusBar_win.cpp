#include "viewer/StatusBar_win.h"

// After windows.h:
#include <commctrl.h>

#include <iterator>

#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

constexpr int kSteps = 1000;

HWND makeBar(HWND parent) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&classes);
  return CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                         0, 0, parent, nullptr, nullptr, nullptr);
}

}  // namespace

StatusBar::StatusBar(HWND parent, const UiScale& scale)
    : bar_(makeBar(parent)),
      progress_(CreateWindowExW(0, PROGRESS_CLASSW, nullptr, WS_CHILD, 0, 0, 0, 0, bar_, nullptr,
                                nullptr, nullptr)) {
  SendMessageW(progress_, PBM_SETRANGE32, 0, kSteps);
  scaleTo(scale);
}

void StatusBar::scaleTo(const UiScale& scale) {
  SendMessageW(bar_, WM_SETFONT, reinterpret_cast<WPARAM>(scale.font()), TRUE);
  SendMessageW(bar_, SB_SETMINHEIGHT, static_cast<WPARAM>(scale.px(22)), 0);
  arrange();
}

void StatusBar::show(Pane pane, const std::string& text) {
  if (texts_[pane] == text) {
    return;
  }
  const bool rearranges = pane == kPath && (text.empty() || texts_[kPath].empty());
  texts_[pane] = text;
  if (rearranges) {
    arrange();
  }
  SendMessageW(bar_, SB_SETTEXTW, pane, reinterpret_cast<LPARAM>(host::toWide(text).c_str()));
  UpdateWindow(bar_);
}

void StatusBar::showProgress(double part) {
  SendMessageW(progress_, PBM_SETPOS, static_cast<WPARAM>(part * kSteps), 0);
  ShowWindow(progress_, SW_SHOWNA);
  UpdateWindow(progress_);
}

void StatusBar::hideProgress() { ShowWindow(progress_, SW_HIDE); }

int StatusBar::height() const {
  RECT frame = {};
  GetWindowRect(bar_, &frame);
  return frame.bottom - frame.top;
}

void StatusBar::arrange() {
  SendMessageW(bar_, WM_SIZE, 0, 0);
  RECT client = {};
  GetClientRect(bar_, &client);
  const int width = client.right;
  const auto edge = [width](int percent) { return width * percent / 100; };
  const int edges[] = {edge(20), edge(62), edge(88), -1};
  const int edgesWithPath[] = {edge(15), edge(35), edge(52), edge(58), -1};
  const bool hasPath = !texts_[kPath].empty();
  SendMessageW(bar_, SB_SETPARTS, hasPath ? std::size(edgesWithPath) : std::size(edges),
               reinterpret_cast<LPARAM>(hasPath ? edgesWithPath : edges));
  RECT place = {};
  SendMessageW(bar_, SB_GETRECT, kPicks, reinterpret_cast<LPARAM>(&place));
  MoveWindow(progress_, place.left, place.top, place.right - place.left, place.bottom - place.top,
             TRUE);
}

}  // namespace zyn::viewer
