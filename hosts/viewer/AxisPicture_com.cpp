#include "viewer/AxisPicture_com.h"

#include <olectl.h>

#include <cmath>
#include <memory>
#include <string>
#include <type_traits>

#include "common/ComFailure_com.h"
#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

struct Deleter {
  void operator()(HDC context) const { DeleteDC(context); }
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using Context = std::unique_ptr<std::remove_pointer_t<HDC>, Deleter>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, Deleter>;
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, Deleter>;

/// An object selected into a context for a scope.
class Selected {
 public:
  Selected(const Context& context, HGDIOBJ object)
      : context_(context.get()), before_(SelectObject(context_, object)) {}
  ~Selected() { SelectObject(context_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

std::wstring textOf(const AxisTitle& title) {
  return host::toWide(title.unit.empty() ? title.name : title.name + " [" + title.unit + ']');
}

/// The font of the system's messages. Grey levels at its edges: the picture may be shown anywhere.
Font fontOf(int height) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW font = metrics.lfMessageFont;
  font.lfHeight = -height;
  font.lfWidth = 0;
  font.lfQuality = ANTIALIASED_QUALITY;
  return Font(CreateFontIndirectW(&font));
}

COLORREF colourOf(const Colour& colour) {
  const auto level = [](double part) { return static_cast<BYTE>(std::lround(part * 255)); };
  return RGB(level(colour[0]), level(colour[1]), level(colour[2]));
}

Bitmap makeBitmap(const SIZE& size) {
  BITMAPINFO description = {};
  description.bmiHeader.biSize = sizeof description.bmiHeader;
  description.bmiHeader.biWidth = size.cx;
  description.bmiHeader.biHeight = size.cy;
  description.bmiHeader.biPlanes = 1;
  description.bmiHeader.biBitCount = 24;
  void* pixels = nullptr;
  return Bitmap(CreateDIBSection(nullptr, &description, DIB_RGB_COLORS, &pixels, nullptr, 0));
}

/// A picture object that owns the bitmap.
Microsoft::WRL::ComPtr<IDispatch> pictureOf(Bitmap bitmap) {
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap.get();
  Microsoft::WRL::ComPtr<IDispatch> picture;
  host::check(OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                                       reinterpret_cast<void**>(picture.GetAddressOf())),
              L"OleCreatePictureIndirect");
  bitmap.release();
  return picture;
}

}  // namespace

Microsoft::WRL::ComPtr<IDispatch> axisPicture(const AxisTitle& title, const Colour& colour,
                                              int height) {
  const std::wstring text = textOf(title);
  if (text.empty()) {
    return nullptr;
  }
  const Context context(CreateCompatibleDC(nullptr));
  const Font font = fontOf(height);
  const Selected fontSelected(context, font.get());
  RECT place = {};
  DrawTextW(context.get(), text.c_str(), -1, &place, DT_SINGLELINE | DT_NOPREFIX | DT_CALCRECT);
  Bitmap bitmap = makeBitmap({place.right, place.bottom});
  {
    const Selected bitmapSelected(context, bitmap.get());
    FillRect(context.get(), &place, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    SetTextColor(context.get(), colourOf(colour));
    SetBkMode(context.get(), TRANSPARENT);
    DrawTextW(context.get(), text.c_str(), -1, &place, DT_SINGLELINE | DT_NOPREFIX);
    GdiFlush();
  }
  return pictureOf(std::move(bitmap));
}

}  // namespace zyn::viewer
