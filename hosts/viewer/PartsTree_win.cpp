#include "viewer/PartsTree_win.h"

#include "common/Utf8_win.h"
#include "viewer/Icon.h"
#include "viewer/ScopedFlag.h"

namespace zyn::viewer {

namespace {

constexpr UINT kUnchecked = 1;  // places in the list of state images; 0 means no box
constexpr UINT kChecked = 2;

constexpr COLORREF kEmphasis = RGB(255, 204, 160);  // a pale tone of what is selected in the view

constexpr std::string_view kBoxes[] = {
    "",
    "white M 2.5 2.5 L 17.5 2.5 L 17.5 17.5 L 2.5 17.5 Z line M 2.5 2.5 L 17.5 2.5 L 17.5 17.5 L "
    "2.5 17.5 Z",
    "middle M 2.5 2.5 L 17.5 2.5 L 17.5 17.5 L 2.5 17.5 Z accent M 2.5 2.5 L 17.5 2.5 L 17.5 17.5 "
    "L 2.5 17.5 Z M 5.5 10 L 8.8 13.5 L 14.5 6.5 M 5.7 9.7 L 8.8 12.9 L 14.3 6.2"};

}  // namespace

PartsTree::PartsTree(HWND parent, PartsTreeEvents& events, const UiScale& scale) : events_(events) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  constexpr DWORD kStyle = TVS_HASBUTTONS | TVS_SHOWSELALWAYS | TVS_FULLROWSELECT | TVS_INFOTIP;
  tree_ = CreateWindowExW(0, WC_TREEVIEWW, nullptr, WS_CHILD | WS_TABSTOP | kStyle, 0, 0, 0, 0,
                          parent, nullptr, nullptr, nullptr);
  scaleTo(scale);
}

void PartsTree::scaleTo(const UiScale& scale) {
  const int side = scale.px(16);
  Images boxes(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, 3, 0));
  for (const std::string_view words : kBoxes) {
    addImage(boxes.get(), drawIcon(words, side), side);
  }
  TreeView_SetImageList(tree_, boxes.get(), TVSIL_STATE);
  boxes_ = std::move(boxes);
  SendMessageW(tree_, WM_SETFONT, reinterpret_cast<WPARAM>(scale.font()), TRUE);
  TreeView_SetItemHeight(tree_, scale.px(24));
  TreeView_SetIndent(tree_, scale.px(16));
}

void PartsTree::place(const RECT& area) const {
  MoveWindow(tree_, area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
}

void PartsTree::setVisible(bool visible) const { ShowWindow(tree_, visible ? SW_SHOWNA : SW_HIDE); }

bool PartsTree::isVisible() const { return (GetWindowLongW(tree_, GWL_STYLE) & WS_VISIBLE) != 0; }

HTREEITEM PartsTree::insert(HTREEITEM parent, HTREEITEM after, const std::string& name, int part) {
  std::wstring text = host::toWide(name);
  TVINSERTSTRUCTW entry = {};
  entry.hParent = parent;
  entry.hInsertAfter = after;
  entry.item.mask = TVIF_TEXT | TVIF_STATE | TVIF_PARAM;
  entry.item.pszText = text.data();
  entry.item.stateMask = TVIS_STATEIMAGEMASK;
  entry.item.state = INDEXTOSTATEIMAGEMASK(kChecked);
  entry.item.lParam = part;
  return TreeView_InsertItem(tree_, &entry);
}

void PartsTree::fill(const std::string& model, const std::vector<std::string>& parts) {
  const ScopedFlag filling(filling_);
  SendMessageW(tree_, WM_SETREDRAW, FALSE, 0);
  if (!items_.empty()) {
    TreeView_DeleteItem(tree_, items_.front());
  }
  items_ = {insert(TVI_ROOT, TVI_FIRST, model, 0)};
  for (const std::string& part : parts) {
    items_.push_back(insert(items_.front(), TVI_LAST, part, static_cast<int>(items_.size())));
  }
  TreeView_Expand(tree_, items_.front(), TVE_EXPAND);
  SendMessageW(tree_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(tree_, nullptr, TRUE);
}

void PartsTree::clear() {
  const ScopedFlag filling(filling_);
  TreeView_DeleteAllItems(tree_);
  items_.clear();
  program_ = nullptr;
}

void PartsTree::showProgram(const std::string& name) {
  const ScopedFlag filling(filling_);
  if (program_ != nullptr) {
    TreeView_DeleteItem(tree_, program_);
  }
  program_ = name.empty() ? nullptr : insert(TVI_ROOT, TVI_LAST, name, kProgram);
}

void PartsTree::check(int part, bool shown) {
  const UINT image = shown ? kChecked : kUnchecked;
  TreeView_SetItemState(tree_, itemOf(part), INDEXTOSTATEIMAGEMASK(image), TVIS_STATEIMAGEMASK);
}

void PartsTree::emphasise(const std::set<int>& parts) {
  const ScopedFlag choosing(filling_);
  if (items_.empty()) {
    return;
  }
  for (int part = 1; part < static_cast<int>(items_.size()); ++part) {
    if (parts.contains(part) != isEmphasised(itemOf(part))) {
      TreeView_SetItemState(tree_, itemOf(part), parts.contains(part) ? TVIS_BOLD : 0, TVIS_BOLD);
    }
  }
  if (!parts.empty()) {
    TreeView_SelectItem(tree_, itemOf(*parts.begin()));
  } else if (partOf(TreeView_GetSelection(tree_)) > 0) {
    TreeView_SelectItem(tree_, nullptr);
  }
}

bool PartsTree::isEmphasised(HTREEITEM item) const {
  return (TreeView_GetItemState(tree_, item, TVIS_BOLD) & TVIS_BOLD) != 0;
}

/// Rows of what is selected look alike, whichever of them has the keys.
LRESULT PartsTree::paint(NMTVCUSTOMDRAW& drawing) const {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
    return CDRF_NOTIFYITEMDRAW;
  }
  if (isEmphasised(reinterpret_cast<HTREEITEM>(drawing.nmcd.dwItemSpec))) {
    drawing.clrText = RGB(0, 0, 0);
    drawing.clrTextBk = kEmphasis;
  }
  return CDRF_DODEFAULT;
}

std::optional<LRESULT> PartsTree::notified(NMHDR& message) {
  if (message.hwndFrom != tree_) {
    return std::nullopt;
  }
  if (message.code == NM_CUSTOMDRAW) {
    return paint(reinterpret_cast<NMTVCUSTOMDRAW&>(message));
  }
  if (filling_) {
    return std::nullopt;
  }
  if (message.code == NM_CLICK || message.code == NM_DBLCLK) {
    TVHITTESTINFO hit = {};
    GetCursorPos(&hit.pt);
    ScreenToClient(tree_, &hit.pt);
    TreeView_HitTest(tree_, &hit);
    if ((hit.flags & TVHT_ONITEMSTATEICON) != 0) {
      toggle(hit.hItem);
      return 0;
    }
  } else if (message.code == TVN_KEYDOWN &&
             reinterpret_cast<const NMTVKEYDOWN&>(message).wVKey == VK_SPACE) {
    toggle(TreeView_GetSelection(tree_));
    return 0;
  } else if (message.code == TVN_SELCHANGEDW) {
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(message);
    events_.partClicked(static_cast<int>(change.itemNew.lParam));
  }
  return std::nullopt;
}

int PartsTree::partOf(HTREEITEM item) const {
  TVITEMW asked = {};
  asked.hItem = item;
  asked.mask = TVIF_PARAM;
  return item != nullptr && TreeView_GetItem(tree_, &asked) ? static_cast<int>(asked.lParam) : 0;
}

void PartsTree::toggle(HTREEITEM item) {
  if (item != nullptr) {
    events_.partChecked(partOf(item), TreeView_GetCheckState(tree_, item) == 0);
  }
}

}  // namespace zyn::viewer
