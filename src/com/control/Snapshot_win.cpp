#include "com/control/Snapshot_win.h"

namespace zyn {

namespace {

BITMAPINFO describe(SIZE pixels) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = pixels.cx;
  info.bmiHeader.biHeight = pixels.cy;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  // May be left out, but Wine's metafiles then keep no pixels.
  info.bmiHeader.biSizeImage = static_cast<DWORD>(pixels.cx) * static_cast<DWORD>(pixels.cy) * 4;
  return info;
}

}  // namespace

Snapshot::Snapshot(SIZE pixels) : pixels_(pixels), dc_(CreateCompatibleDC(nullptr)) {
  const BITMAPINFO info = describe(pixels);
  bitmap_.reset(CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &bits_, nullptr, 0));
  if (!dc_ || !bitmap_) {
    bits_ = nullptr;
    return;
  }
  initial_ = SelectObject(dc_.get(), bitmap_.get());
}

Snapshot::~Snapshot() { bitmap_.reset(release()); }

void Snapshot::drawInto(HDC dc, const RECT& bounds) const {
  const BITMAPINFO info = describe(pixels_);
  GdiFlush();
  StretchDIBits(dc, bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
                0, 0, pixels_.cx, pixels_.cy, bits_, &info, DIB_RGB_COLORS, SRCCOPY);
}

HBITMAP Snapshot::release() noexcept {
  if (initial_) {
    SelectObject(dc_.get(), initial_);
    initial_ = nullptr;
  }
  bits_ = nullptr;
  return bitmap_.release();
}

}  // namespace zyn
