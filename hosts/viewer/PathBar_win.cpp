#include "viewer/PathBar_win.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "viewer/ToolIcon.h"

namespace zyn::viewer {

namespace {

constexpr int kSteps = 100000;
constexpr int kFactorWidth = 64;  // at 96 dots per inch

/// The place that a click beside the thumb asks for.
LPARAM stepAt(HWND slider, int x) {
  RECT channel = {};
  RECT thumb = {};
  SendMessageW(slider, TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&channel));
  SendMessageW(slider, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
  const double half = (thumb.right - thumb.left) / 2.0;
  const double way = std::max(1.0, channel.right - channel.left - 2 * half);
  const double part = std::clamp((x - channel.left - half) / way, 0.0, 1.0);
  return std::lround(part * kSteps);
}

/// A press beside the thumb moves it there, where it is dragged from, in place of a page.
LRESULT CALLBACK jumpToMouse(HWND slider, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR) {
  if (message == WM_LBUTTONDOWN) {
    const POINT mouse = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    RECT thumb = {};
    SendMessageW(slider, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
    if (!PtInRect(&thumb, mouse)) {
      SendMessageW(slider, TBM_SETPOS, TRUE, stepAt(slider, mouse.x));
      SendMessageW(GetParent(slider), WM_HSCROLL, TB_THUMBPOSITION,
                   reinterpret_cast<LPARAM>(slider));
    }
  }
  return DefSubclassProc(slider, message, wParam, lParam);
}

HWND makeSlider(HWND parent) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  const HWND slider =
      CreateWindowExW(0, TRACKBAR_CLASSW, nullptr, WS_CHILD | WS_TABSTOP | TBS_NOTICKS | TBS_BOTH,
                      0, 0, 0, 0, parent, nullptr, nullptr, nullptr);
  SendMessageW(slider, TBM_SETRANGEMIN, FALSE, 0);
  SendMessageW(slider, TBM_SETRANGEMAX, FALSE, kSteps);
  SendMessageW(slider, TBM_SETLINESIZE, 0, kSteps / 1000);
  SendMessageW(slider, TBM_SETPAGESIZE, 0, kSteps / 50);
  SetWindowSubclass(slider, jumpToMouse, 0, 0);
  return slider;
}

void show(HWND window, bool visible) { ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE); }

}  // namespace

PathBar::PathBar(HWND parent, PathBarEvents& events, const UiScale& scale)
    : events_(events),
      slider_(makeSlider(parent)),
      factor_(CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | SS_CENTER | SS_CENTERIMAGE, 0, 0, 0,
                              0, parent, nullptr, nullptr, nullptr)) {
  scaleTo(scale);
  setVisible(false);
}

void PathBar::scaleTo(const UiScale& scale) {
  const bool visible = isVisible();
  tools_ = std::make_unique<ToolBar>(GetParent(slider_), pathTools(), scale);
  tools_->setVisible(visible);
  SendMessageW(factor_, WM_SETFONT, reinterpret_cast<WPARAM>(scale.font()), TRUE);
  factorWidth_ = scale.px(kFactorWidth);
}

int PathBar::height() const { return tools_->height(); }

void PathBar::place(const RECT& area) const {
  const LONG height = area.bottom - area.top;
  const LONG toolsEnd = std::min(area.left + tools_->width(), area.right);
  const LONG sliderEnd = std::max(toolsEnd, area.right - factorWidth_);
  tools_->place({area.left, area.top, toolsEnd, area.bottom});
  MoveWindow(slider_, toolsEnd, area.top, sliderEnd - toolsEnd, height, TRUE);
  MoveWindow(factor_, sliderEnd, area.top, area.right - sliderEnd, height, TRUE);
}

void PathBar::setVisible(bool visible) const {
  tools_->setVisible(visible);
  show(slider_, visible);
  show(factor_, visible);
}

bool PathBar::isVisible() const { return (GetWindowLongW(slider_, GWL_STYLE) & WS_VISIBLE) != 0; }

void PathBar::showPart(double part) const {
  const auto step = static_cast<LPARAM>(std::lround(part * kSteps));
  if (SendMessageW(slider_, TBM_GETPOS, 0, 0) != step) {
    SendMessageW(slider_, TBM_SETPOS, TRUE, step);
  }
}

void PathBar::showFactor(double factor) const {
  const std::wstring text = std::to_wstring(std::lround(factor)) + L" \u00D7";
  SetWindowTextW(factor_, text.c_str());
}

bool PathBar::scrolled(LPARAM lParam) const {
  if (reinterpret_cast<HWND>(lParam) != slider_) {
    return false;
  }
  events_.pathSlid(static_cast<double>(SendMessageW(slider_, TBM_GETPOS, 0, 0)) / kSteps);
  return true;
}

bool PathBar::keepsKey(const MSG& message) const {
  constexpr WPARAM kKeys[] = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT};
  return message.hwnd == slider_ && GetKeyState(VK_CONTROL) >= 0 &&
         std::ranges::find(kKeys, message.wParam) != std::end(kKeys);
}

}  // namespace zyn::viewer
