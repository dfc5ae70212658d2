#include "viewer/StatusBar_win.h"

// After windows.h:
#include <commctrl.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

constexpr int kSteps = 1000;

// Lengths at 96 dots per inch:
constexpr int kPadding = 14;  // around a text and the line beside it
constexpr int kGrip = 18;
constexpr int kLeastWidth = 120;
constexpr int kProgressWidth = 240;

HWND makeBar(HWND parent) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&classes);
  return CreateWindowExW(0, STATUSCLASSNAMEW, nullptr,
                         WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP | SBARS_TOOLTIPS, 0, 0, 0, 0,
                         parent, nullptr, nullptr, nullptr);
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
  padding_ = scale.px(kPadding);
  grip_ = scale.px(kGrip);
  progressWidth_ = scale.px(kProgressWidth);
  for (std::size_t pane = 0; pane < kPanes; ++pane) {
    widths_[pane] = {.text = 0, .widest = pane == kPath ? 0 : scale.px(kLeastWidth)};
    measure(static_cast<Pane>(pane));
  }
  arrange();
}

void StatusBar::measure(Pane pane) {
  PaneWidth& width = widths_[pane];
  width.text = 0;
  if (!texts_[pane].empty()) {
    const std::wstring text = host::toWide(texts_[pane]);
    const HDC dc = GetDC(bar_);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(bar_, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(dc, font);
    SIZE size = {};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, before);
    ReleaseDC(bar_, dc);
    width.text = static_cast<int>(size.cx) + padding_;
  }
  if (isProgressShown() && pane == kPicks) {
    width.text = std::max(width.text, progressWidth_);
  }
  width.widest = std::max(width.text, width.widest);
}

void StatusBar::show(Pane pane, const std::string& text) {
  if (texts_[pane] == text) {
    return;
  }
  texts_[pane] = text;
  measure(pane);
  divide();
  const std::wstring wide = host::toWide(text);
  SendMessageW(bar_, SB_SETTEXTW, pane, reinterpret_cast<LPARAM>(wide.c_str()));
  SendMessageW(bar_, SB_SETTIPTEXTW, pane, reinterpret_cast<LPARAM>(wide.c_str()));
  UpdateWindow(bar_);
}

void StatusBar::showProgress(double part) {
  SendMessageW(progress_, PBM_SETPOS, static_cast<WPARAM>(part * kSteps), 0);
  if (!isProgressShown()) {
    ShowWindow(progress_, SW_SHOWNA);
    measure(kPicks);
    divide();
  }
  UpdateWindow(progress_);
}

void StatusBar::hideProgress() {
  ShowWindow(progress_, SW_HIDE);
  measure(kPicks);
  divide();
}

bool StatusBar::isProgressShown() const {
  return (GetWindowLongW(progress_, GWL_STYLE) & WS_VISIBLE) != 0;
}

int StatusBar::height() const {
  RECT frame = {};
  GetWindowRect(bar_, &frame);
  return frame.bottom - frame.top;
}

void StatusBar::arrange() {
  SendMessageW(bar_, WM_SIZE, 0, 0);
  divide();
}

void StatusBar::divide() {
  RECT client = {};
  GetClientRect(bar_, &client);
  const std::size_t count = texts_[kPath].empty() ? kPanes - 1 : kPanes;
  std::vector<int> edges = statusWidths(std::span(widths_).first(count), client.right - grip_);
  std::partial_sum(edges.begin(), edges.end(), edges.begin());
  edges.back() = client.right;
  if (edges == edges_) {
    return;
  }
  edges_ = edges;
  SendMessageW(bar_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
  RECT place = {};
  SendMessageW(bar_, SB_GETRECT, kPicks, reinterpret_cast<LPARAM>(&place));
  MoveWindow(progress_, place.left, place.top, place.right - place.left, place.bottom - place.top,
             TRUE);
}

}  // namespace zyn::viewer
