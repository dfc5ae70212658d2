#pragma once

#include <comutil.h>
#include <windows.h>

#include "support/Image.h"

namespace zyn::test {

/// A bitmap to print on, white.
class Paper {
 public:
  Paper(int width, int height) : picture_(width, height), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bytes_ = static_cast<const BYTE*>(bits);
    previous_ = SelectObject(dc_, bitmap_);
    PatBlt(dc_, 0, 0, width, height, WHITENESS);
  }
  ~Paper() {
    SelectObject(dc_, previous_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  Paper(const Paper&) = delete;
  Paper& operator=(const Paper&) = delete;

  HDC dc() const { return dc_; }
  const Image& picture() {
    GdiFlush();
    for (int y = 0; y < picture_.height(); ++y) {
      for (int x = 0; x < picture_.width(); ++x) {
        const BYTE* const pixel = bytes_ + 4 * (y * picture_.width() + x);
        picture_.at(x, y) = {pixel[2], pixel[1], pixel[0]};
      }
    }
    return picture_;
  }

 private:
  Image picture_;
  HDC dc_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ previous_ = nullptr;
  const BYTE* bytes_ = nullptr;
};

/// As hosts hand it over.
inline _variant_t handleOf(HDC dc) { return _variant_t(static_cast<LONGLONG>(HandleToLong(dc))); }

}  // namespace zyn::test
