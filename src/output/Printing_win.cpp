#include "output/Printing_win.h"

#include "glcontext/MemorySurface_win.h"
#include "platform/Failure_win.h"

namespace zyn {

namespace {

[[noreturn]] void fail() { throw Failure(E_FAIL, L"The device context did not take the picture"); }

/// A device context that counts in pixels of the device for a scope.
class DevicePixels {
 public:
  explicit DevicePixels(HDC dc) : dc_(dc), saved_(SaveDC(dc)) {
    if (saved_ == 0) {
      fail();  // it could not be left as it was
    }
    if (GetGraphicsMode(dc) == GM_ADVANCED) {
      ModifyWorldTransform(dc, nullptr, MWT_IDENTITY);
    }
    SetMapMode(dc, MM_TEXT);
    SetWindowOrgEx(dc, 0, 0, nullptr);
    SetViewportOrgEx(dc, 0, 0, nullptr);
  }
  ~DevicePixels() { RestoreDC(dc_, saved_); }
  DevicePixels(const DevicePixels&) = delete;
  DevicePixels& operator=(const DevicePixels&) = delete;

 private:
  HDC dc_;
  int saved_;
};

}  // namespace

void printMetafile(HDC dc, const RECT& place, HENHMETAFILE metafile) {
  const DevicePixels pixels(dc);
  if (!PlayEnhMetaFile(dc, metafile, &place)) {
    fail();
  }
}

void printPicture(HDC dc, const RECT& place, const PixelView& picture) {
  const DevicePixels pixels(dc);
  const BITMAPINFO info = dibInfo(picture.width, picture.height, 24);
  SetStretchBltMode(dc, HALFTONE);
  SetBrushOrgEx(dc, 0, 0, nullptr);
  const int rows = StretchDIBits(dc, place.left, place.top, place.right - place.left,
                                 place.bottom - place.top, 0, 0, picture.width, picture.height,
                                 picture.bytes, &info, DIB_RGB_COLORS, SRCCOPY);
  if (rows == 0 || static_cast<DWORD>(rows) == GDI_ERROR) {
    fail();
  }
}

}  // namespace zyn
