#include "bench/PngEncoder.h"

// After windows.h, whose minimum and maximum it wants:
#include <algorithm>
#include <stdexcept>

namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <GL/gl.h>
#include <objidl.h>
// After objidl.h:
#include <gdiplus.h>

namespace zyn::bench {

namespace {

constexpr CLSID kPng = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
constexpr GLenum kBgr = 0x80E0;

}  // namespace

PngEncoder::PngEncoder(SIZE size)
    : size_(size),
      rowBytes_((size.cx * 3 + 3) / 4 * 4),
      pixels_(static_cast<std::size_t>(rowBytes_) * static_cast<std::size_t>(size.cy)) {
  const Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok) {
    throw std::runtime_error("no GDI+");
  }
}

PngEncoder::~PngEncoder() { Gdiplus::GdiplusShutdown(token_); }

void PngEncoder::readPixels() {
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(0, 0, size_.cx, size_.cy, kBgr, GL_UNSIGNED_BYTE, pixels_.data());
}

void PngEncoder::readPixels(const std::filesystem::path& file) {
  Gdiplus::Bitmap picture(file.c_str());
  const Gdiplus::Rect all(0, 0, size_.cx, size_.cy);
  Gdiplus::BitmapData data{};
  data.Width = static_cast<UINT>(size_.cx);
  data.Height = static_cast<UINT>(size_.cy);
  data.Stride = -rowBytes_;
  data.PixelFormat = PixelFormat24bppRGB;
  data.Scan0 = pixels_.data() + static_cast<std::ptrdiff_t>(rowBytes_) * (size_.cy - 1);
  if (picture.LockBits(&all, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                       PixelFormat24bppRGB, &data) != Gdiplus::Ok) {
    throw std::runtime_error("the plot's PNG file cannot be read");
  }
  picture.UnlockBits(&data);
}

void PngEncoder::save(const std::filesystem::path& file) {
  BYTE* const top = pixels_.data() + static_cast<std::ptrdiff_t>(rowBytes_) * (size_.cy - 1);
  Gdiplus::Bitmap bitmap(size_.cx, size_.cy, -rowBytes_, PixelFormat24bppRGB, top);
  if (bitmap.Save(file.c_str(), &kPng, nullptr) != Gdiplus::Ok) {
    throw std::runtime_error("the limit's PNG file cannot be written");
  }
}

}  // namespace zyn::bench
