#include "viewer/ToolBar_win.h"

#include <algorithm>
#include <string>
#include <vector>

#include "common/Utf8_win.h"
#include "viewer/ToolIcon.h"

namespace zyn::viewer {

namespace {

constexpr int kIconSide = 20;  // lengths at 96 dots per inch
constexpr int kMargin = 5;     // part of the images, as bars differ in where they put small ones

std::vector<std::uint32_t> withMargin(const std::vector<std::uint32_t>& icon, int side,
                                      int margin) {
  const int wide = side + 2 * margin;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(wide * wide));
  for (int row = 0; row < side; ++row) {
    std::copy_n(icon.begin() + row * side, side, pixels.begin() + (row + margin) * wide + margin);
  }
  return pixels;
}

HWND makeBar(HWND parent) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  constexpr DWORD kStyle = TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_TOP |
                           CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
  return CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | kStyle, 0, 0, 0, 0,
                         parent, nullptr, nullptr, nullptr);
}

/// The label and the key: "Zoom all (F)".
std::wstring tipOf(const CommandEntry& entry) {
  std::string text(entry.label);
  std::erase(text, '&');
  std::erase(text, '.');
  const std::string key = keyText(entry.key);
  return host::toWide(key.empty() ? text : text + " (" + key + ')');
}

}  // namespace

void addImage(HIMAGELIST images, std::span<const std::uint32_t> pixels, int side) {
  const HBITMAP colours = CreateBitmap(side, side, 1, 32, pixels.data());
  const HBITMAP mask = CreateBitmap(side, side, 1, 1, nullptr);
  ICONINFO parts = {TRUE, 0, 0, mask, colours};
  const HICON icon = CreateIconIndirect(&parts);
  ImageList_ReplaceIcon(images, -1, icon);
  DestroyIcon(icon);
  DeleteObject(mask);
  DeleteObject(colours);
}

ToolBar::ToolBar(HWND parent, Tools tools, const UiScale& scale) : bar_(makeBar(parent)) {
  SendMessageW(bar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(bar_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
  SendMessageW(bar_, WM_SETFONT, reinterpret_cast<WPARAM>(scale.font()), FALSE);
  SendMessageW(bar_, TB_SETPADDING, 0, 0);
  addButtons(tools, scale.px(kIconSide), scale.px(kMargin));
  SendMessageW(bar_, TB_SETINDENT, static_cast<WPARAM>(scale.px(kMargin)), 0);
}

ToolBar::~ToolBar() { DestroyWindow(bar_); }

void ToolBar::addButtons(Tools tools, int icon, int margin) {
  const int side = icon + 2 * margin;
  images_.reset(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, 32, 8));
  SendMessageW(bar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_.get()));
  for (const CommandEntry* const tool : tools) {
    TBBUTTON button = {};
    std::wstring tip;
    if (tool == nullptr) {
      button.fsStyle = BTNS_SEP;
    } else {
      addImage(images_.get(), withMargin(drawToolIcon(tool->command, icon), icon, margin), side);
      tip = tipOf(*tool);
      button.iBitmap = ImageList_GetImageCount(images_.get()) - 1;
      if (hasToolIconWhileOn(tool->command)) {
        addImage(images_.get(), withMargin(drawToolIconWhileOn(tool->command, icon), icon, margin),
                 side);
        button.dwData = static_cast<DWORD_PTR>(button.iBitmap);
      }
      button.idCommand = static_cast<int>(tool->command);
      button.fsState = TBSTATE_ENABLED;
      button.fsStyle = BTNS_BUTTON;
      button.iString = reinterpret_cast<INT_PTR>(tip.c_str());
    }
    SendMessageW(bar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
  }
}

int ToolBar::width() const {
  const auto count = SendMessageW(bar_, TB_BUTTONCOUNT, 0, 0);
  RECT last = {};
  SendMessageW(bar_, TB_GETITEMRECT, static_cast<WPARAM>(count - 1),
               reinterpret_cast<LPARAM>(&last));
  return last.right;
}

int ToolBar::height() const {
  const int button = HIWORD(SendMessageW(bar_, TB_GETBUTTONSIZE, 0, 0));
  return button + button / 8;
}

void ToolBar::place(const RECT& area) const {
  MoveWindow(bar_, area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
}

void ToolBar::setVisible(bool visible) const { ShowWindow(bar_, visible ? SW_SHOWNA : SW_HIDE); }

void ToolBar::showImage(const TBBUTTON& button, int image) const {
  if (button.iBitmap != image) {
    SendMessageW(bar_, TB_CHANGEBITMAP, static_cast<WPARAM>(button.idCommand), image);
  }
}

void ToolBar::mark(const std::function<bool(Command)>& isOn) {
  const auto count = SendMessageW(bar_, TB_BUTTONCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    TBBUTTON button = {};
    SendMessageW(bar_, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    if ((button.fsStyle & BTNS_SEP) != 0) {
      continue;
    }
    const bool on = isOn(static_cast<Command>(button.idCommand));
    if (hasToolIconWhileOn(static_cast<Command>(button.idCommand))) {
      showImage(button, static_cast<int>(button.dwData) + (on ? 1 : 0));
    } else if (on != ((button.fsState & TBSTATE_CHECKED) != 0)) {
      SendMessageW(bar_, TB_CHECKBUTTON, static_cast<WPARAM>(button.idCommand), on ? TRUE : FALSE);
    }
  }
}

}  // namespace zyn::viewer
