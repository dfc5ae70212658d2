#include "viewer/HelpWindow_win.h"

// After windows.h:
#include <commctrl.h>

#include <algorithm>

#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

constexpr int kWidth = 460;  // lengths at 96 dots per inch
constexpr int kHeight = 560;
constexpr int kKeyWidth = 130;
constexpr int kScrollBar = 24;

/// In the middle of the owner, no higher than the monitor that it is on has room for.
RECT placeOver(HWND owner, const UiScale& scale) {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  RECT main = {};
  GetWindowRect(owner, &main);
  const LONG width = scale.px(kWidth);
  const LONG height = std::min<LONG>(scale.px(kHeight), work.bottom - work.top);
  const LONG left = (main.left + main.right - width) / 2;
  const LONG top =
      std::clamp((main.top + main.bottom - height) / 2, work.top, work.bottom - height);
  return {left, top, left + width, top + height};
}

}  // namespace

HelpWindow::HelpWindow(HWND owner, const std::vector<HelpRow>& rows)
    : Window({.className = L"ZYNVueViewerHelp",
              .title = L"Mouse and keys",
              .style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME,
              .extendedStyle = WS_EX_TOOLWINDOW,
              .place = placeOver(owner, UiScale(owner)),
              .owner = owner}),
      scale_(owner) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  addList(rows);
  showAllColumns();
  listen();
  ShowWindow(handle(), SW_SHOW);
  SetFocus(list_);
}

void HelpWindow::addList(const std::vector<HelpRow>& rows) {
  list_ = CreateWindowExW(
      0, WC_LISTVIEWW, nullptr,
      WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_NOSORTHEADER, 0, 0, 0,
      0, handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
  ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(scale_.font()), TRUE);
  std::wstring titles[] = {L"Mouse or key", L"What it does"};
  for (int column = 0; column < 2; ++column) {
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT | LVCF_WIDTH;
    description.cx = scale_.px(kKeyWidth);
    description.pszText = titles[column].data();
    ListView_InsertColumn(list_, column, &description);
  }
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
    const HelpRow& help = rows[static_cast<std::size_t>(row)];
    std::wstring key = host::toWide(help.key);
    std::wstring what = host::toWide(help.what);
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = key.data();
    ListView_InsertItem(list_, &item);
    ListView_SetItemText(list_, row, 1, what.data());
  }
}

void HelpWindow::showAllColumns() const {
  RECT client = {};
  GetClientRect(handle(), &client);
  MoveWindow(list_, 0, 0, client.right, client.bottom, TRUE);
  ListView_SetColumnWidth(list_, 1, client.right - scale_.px(kKeyWidth) - scale_.px(kScrollBar));
}

std::optional<LRESULT> HelpWindow::answer(UINT message, WPARAM wParam, LPARAM) {
  if (message == WM_SIZE) {
    showAllColumns();
    return 0;
  }
  if (message == WM_COMMAND) {
    if (LOWORD(wParam) == IDCANCEL) {
      DestroyWindow(handle());
    }
    return 0;
  }
  return std::nullopt;
}

}  // namespace zyn::viewer
