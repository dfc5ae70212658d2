#include "viewer/ProgramList_win.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "common/Utf8_win.h"
#include "viewer/ScopedFlag.h"

namespace zyn::viewer {

namespace {

constexpr COLORREF kEmphasis = RGB(255, 204, 160);  // as the rows of selected parts
constexpr int kDigitWidth = 7;                      // lengths at 96 dots per inch
constexpr int kScrollBar = 20;
enum Column { kNumber, kText };

void addColumn(HWND list, int column, std::wstring title, int format) {
  LVCOLUMNW description = {};
  description.mask = LVCF_TEXT | LVCF_FMT;
  description.fmt = format;
  description.pszText = title.data();
  ListView_InsertColumn(list, column, &description);
}

HWND makeList(HWND parent) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  constexpr DWORD kStyle = LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                           LVS_NOCOLUMNHEADER | LVS_NOSORTHEADER;
  const HWND list = CreateWindowExW(0, WC_LISTVIEWW, nullptr, WS_CHILD | WS_TABSTOP | kStyle, 0, 0,
                                    0, 0, parent, nullptr, nullptr, nullptr);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  addColumn(list, kNumber, L"Line", LVCFMT_LEFT);
  addColumn(list, kText, L"Program", LVCFMT_LEFT);
  return list;
}

/// As a row shows it: with blanks for tabs, for which a list has no glyph.
std::wstring rowText(std::string_view line) {
  std::wstring text = host::toWide(line);
  std::ranges::replace(text, L'\t', L' ');
  return text;
}

}  // namespace

ProgramList::ProgramList(HWND parent, ProgramListEvents& events, const UiScale& scale)
    : events_(events), list_(makeList(parent)) {
  scaleTo(scale);
}

void ProgramList::scaleTo(const UiScale& scale) {
  SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(scale.font()), TRUE);
  digitWidth_ = scale.px(kDigitWidth);
  scrollBar_ = scale.px(kScrollBar);
  setWidths();
}

void ProgramList::place(const RECT& area) const {
  MoveWindow(list_, area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
  setWidths();
}

void ProgramList::setWidths() const {
  constexpr int kLeastDigits = 3;
  const std::size_t count = lines_ == nullptr ? 0 : lines_->lineCount();
  const int digits = std::max(kLeastDigits, static_cast<int>(std::to_string(count).size()));
  const int numbers = (digits + 2) * digitWidth_;
  RECT frame = {};
  GetWindowRect(list_, &frame);
  const int rest = static_cast<int>(frame.right - frame.left) - numbers - scrollBar_;
  ListView_SetColumnWidth(list_, kNumber, numbers);
  ListView_SetColumnWidth(list_, kText, std::max(rest, 10 * digitWidth_));
}

void ProgramList::setVisible(bool visible) const {
  ShowWindow(list_, visible ? SW_SHOWNA : SW_HIDE);
}

bool ProgramList::isVisible() const { return (GetWindowLongW(list_, GWL_STYLE) & WS_VISIBLE) != 0; }

void ProgramList::show(const ProgramLines* lines) {
  const ScopedFlag filling(selecting_);
  lines_ = lines;
  const int count = lines == nullptr ? 0 : static_cast<int>(lines->lineCount());
  ListView_SetItemState(list_, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_SetItemCountEx(list_, count, 0);
  setWidths();
  InvalidateRect(list_, nullptr, TRUE);
}

void ProgramList::selectLine(long line) {
  const ScopedFlag selecting(selecting_);
  const int row = static_cast<int>(line) - 1;
  if (row < 0 || ListView_GetNextItem(list_, -1, LVNI_SELECTED) == row) {
    return;
  }
  constexpr UINT kHere = LVIS_SELECTED | LVIS_FOCUSED;
  ListView_SetItemState(list_, row, kHere, kHere);
  scrollToMiddle(row);
}

/// So that what comes and what has gone are seen around it.
void ProgramList::scrollToMiddle(int row) const {
  ListView_EnsureVisible(list_, row, FALSE);  // makes the list know its heights
  RECT place = {};
  ListView_GetItemRect(list_, row, &place, LVIR_BOUNDS);
  const int top = std::max(0, row - ListView_GetCountPerPage(list_) / 2);
  const int height = static_cast<int>(place.bottom - place.top);
  ListView_Scroll(list_, 0, (top - ListView_GetTopIndex(list_)) * height);
}

void ProgramList::fill(LVITEMW& item) const {
  if ((item.mask & LVIF_TEXT) == 0 || lines_ == nullptr || item.cchTextMax <= 0) {
    return;
  }
  const auto number = static_cast<std::size_t>(item.iItem) + 1;
  const std::wstring text =
      item.iSubItem == kNumber ? std::to_wstring(number) : rowText(lines_->line(number));
  const std::size_t length = text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1);
  item.pszText[length] = L'\0';
}

/// The line on which the tool is looks alike whether or not the list has the keys.
LRESULT ProgramList::paint(NMLVCUSTOMDRAW& drawing) const {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
    return CDRF_NOTIFYITEMDRAW;
  }
  const int row = static_cast<int>(drawing.nmcd.dwItemSpec);
  if (ListView_GetItemState(list_, row, LVIS_SELECTED) != 0) {
    drawing.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED | CDIS_FOCUS);
    drawing.clrText = RGB(0, 0, 0);
    drawing.clrTextBk = kEmphasis;
  }
  return CDRF_DODEFAULT;
}

std::optional<LRESULT> ProgramList::notified(NMHDR& message) {
  if (message.hwndFrom != list_) {
    return std::nullopt;
  }
  if (message.code == NM_CUSTOMDRAW) {
    return paint(reinterpret_cast<NMLVCUSTOMDRAW&>(message));
  }
  if (message.code == LVN_GETDISPINFOW) {
    fill(reinterpret_cast<NMLVDISPINFOW&>(message).item);
  } else if (message.code == LVN_ITEMCHANGED && !selecting_) {
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(message);
    if ((change.uNewState & LVIS_SELECTED) != 0 && (change.uOldState & LVIS_SELECTED) == 0) {
      events_.lineChosen(change.iItem + 1L);
    }
  }
  return 0;
}

bool ProgramList::keepsKey(const MSG& message) const {
  constexpr WPARAM kKeys[] = {VK_UP, VK_DOWN, VK_HOME, VK_END, VK_PRIOR, VK_NEXT};
  return message.hwnd == list_ && GetKeyState(VK_CONTROL) >= 0 &&
         std::ranges::find(kKeys, message.wParam) != std::end(kKeys);
}

}  // namespace zyn::viewer
