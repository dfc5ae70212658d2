#include "glcontext/MemorySurface_win.h"

#include <utility>

namespace zyn {

BITMAPINFO dibInfo(int width, int height, int bitsPerPixel) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = static_cast<WORD>(bitsPerPixel);
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

MemorySurface::MemorySurface(int width, UniqueBitmap bitmap, UniqueDC dc, const void* pixels)
    : width_(width), bitmap_(std::move(bitmap)), dc_(std::move(dc)), pixels_(pixels) {}

std::optional<MemorySurface> MemorySurface::make(int width, int height, int bitsPerPixel) {
  UniqueDC dc(CreateCompatibleDC(nullptr));
  if (!dc) {
    return std::nullopt;
  }
  const BITMAPINFO info = dibInfo(width, height, bitsPerPixel);
  void* pixels = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(dc.get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
  // Without the bitmap the device context holds a single pixel, and drawing would leave it.
  if (!bitmap || SelectObject(dc.get(), bitmap.get()) == nullptr) {
    return std::nullopt;
  }
  return MemorySurface(width, std::move(bitmap), std::move(dc), pixels);
}

}  // namespace zyn
