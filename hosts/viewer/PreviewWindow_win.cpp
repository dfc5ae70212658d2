#include "viewer/PreviewWindow_win.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zyn::viewer {

namespace {

constexpr int kBar = 48;  // lengths at 96 dots per inch
constexpr int kGap = 10;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 28;
constexpr COLORREF kGround = RGB(118, 122, 128);
constexpr COLORREF kShadow = RGB(84, 88, 94);

/// Pixels of the longer side of a page in memory: more than a monitor shows, so that it can be made
/// smaller smoothly.
constexpr int kLongSide = 2400;

/// As large as there is room for in the middle of an area.
RECT fitted(SIZE page, const RECT& area) {
  const LONG width = std::max(area.right - area.left, 1L);
  const LONG height = std::max(area.bottom - area.top, 1L);
  const double factor = std::min(static_cast<double>(width) / static_cast<double>(page.cx),
                                 static_cast<double>(height) / static_cast<double>(page.cy));
  const auto fittedWidth = static_cast<LONG>(static_cast<double>(page.cx) * factor);
  const auto fittedHeight = static_cast<LONG>(static_cast<double>(page.cy) * factor);
  const LONG left = area.left + (width - fittedWidth) / 2;
  const LONG top = area.top + (height - fittedHeight) / 2;
  return {left, top, left + fittedWidth, top + fittedHeight};
}

RECT placeOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return place;
}

void fill(HDC dc, const RECT& area, COLORREF colour) {
  SetDCBrushColor(dc, colour);
  FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

}  // namespace

PageImage::PageImage(const Printable& printable) {
  const PrintPage page = usualPage(printable.isWide());
  const double widthInInches = static_cast<double>(page.width) / page.xPerInch;
  const double heightInInches = static_cast<double>(page.height) / page.yPerInch;
  const double perInch = kLongSide / std::max(widthInInches, heightInInches);
  size_ = {static_cast<LONG>(widthInInches * perInch), static_cast<LONG>(heightInInches * perInch)};
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, size_.cx, size_.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap_ == nullptr) {
    throw std::bad_alloc();
  }
  dc_ = CreateCompatibleDC(nullptr);
  before_ = SelectObject(dc_, bitmap_);
  fill(dc_, {0, 0, size_.cx, size_.cy}, RGB(255, 255, 255));
  const PrintPlace place = placeOnPage(page, printable.aspect);
  const auto x = [&](int pixel) { return MulDiv(pixel, static_cast<int>(size_.cx), page.width); };
  const auto y = [&](int pixel) { return MulDiv(pixel, static_cast<int>(size_.cy), page.height); };
  printable.draw(
      dc_, {x(place.left), y(place.top), x(place.left + place.width), y(place.top + place.height)});
}

PageImage::~PageImage() {
  SelectObject(dc_, before_);
  DeleteObject(bitmap_);
  DeleteDC(dc_);
}

PreviewWindow::PreviewWindow(HWND owner, const Printable& printable,
                             std::function<void()> printPage)
    : Window({.className = L"ZYNVueViewerPreview",
              .title = L"Print preview",
              .style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN,
              .extendedStyle = WS_EX_TOOLWINDOW,
              .place = placeOf(owner),
              .owner = owner}),
      owner_(owner),
      scale_(owner),
      page_(printable),
      printPage_(std::move(printPage)) {
  addButton(L"&Print...", IDOK);
  addButton(L"&Close", IDCANCEL);
  arrange();
  listen();
  EnableWindow(owner, FALSE);
  ShowWindow(handle(), SW_SHOW);
  SetFocus(GetDlgItem(handle(), IDOK));
}

PreviewWindow::~PreviewWindow() {
  if (isOpen()) {
    release();
  }
}

/// Before the window goes: else another program's comes to the front.
void PreviewWindow::release() { EnableWindow(owner_, TRUE); }

void PreviewWindow::addButton(const wchar_t* text, int command) {
  const DWORD kind = command == IDOK ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
  const HWND button = CreateWindowExW(
      0, L"BUTTON", text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | kind, 0, 0, scale_.px(kButtonWidth),
      scale_.px(kButtonHeight), handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(command)),
      GetModuleHandleW(nullptr), nullptr);
  SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(scale_.font()), FALSE);
}

void PreviewWindow::arrange() const {
  const int top = (scale_.px(kBar) - scale_.px(kButtonHeight)) / 2;
  int left = scale_.px(kGap);
  for (const int command : {IDOK, IDCANCEL}) {
    SetWindowPos(GetDlgItem(handle(), command), nullptr, left, top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
    left += scale_.px(kButtonWidth) + scale_.px(kGap);
  }
  InvalidateRect(handle(), nullptr, FALSE);
}

void PreviewWindow::paint() const {
  PAINTSTRUCT paint = {};
  const HDC dc = BeginPaint(handle(), &paint);
  RECT area = {};
  GetClientRect(handle(), &area);
  fill(dc, {0, 0, area.right, scale_.px(kBar)}, GetSysColor(COLOR_BTNFACE));
  area.top = scale_.px(kBar);
  fill(dc, area, kGround);
  const int gap = scale_.px(2 * kGap);
  InflateRect(&area, -gap, -gap);
  const RECT page = fitted(page_.size(), area);
  RECT shadow = page;
  OffsetRect(&shadow, scale_.px(3), scale_.px(3));
  fill(dc, shadow, kShadow);
  SetStretchBltMode(dc, HALFTONE);
  SetBrushOrgEx(dc, 0, 0, nullptr);
  StretchBlt(dc, page.left, page.top, page.right - page.left, page.bottom - page.top, page_.dc(), 0,
             0, page_.size().cx, page_.size().cy, SRCCOPY);
  EndPaint(handle(), &paint);
}

void PreviewWindow::chosen(int command) {
  if (command == IDOK) {
    printPage_();
  } else if (command == IDCANCEL) {
    release();
    DestroyWindow(handle());
  }
}

std::optional<LRESULT> PreviewWindow::answer(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_SIZE:
      arrange();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint();
      return 0;
    case WM_COMMAND:
      chosen(LOWORD(wParam));
      return 0;
    case WM_CLOSE:
      chosen(IDCANCEL);
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace zyn::viewer
