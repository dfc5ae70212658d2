#include "glcontext/SharedBitmap_win.h"

#include <utility>

#include "core/Dib.h"
#include "glcontext/MemorySurface_win.h"

namespace zyn {
namespace {

constexpr int kBitsPerPixel = 24;

}  // namespace

SharedBitmap::SharedBitmap(int width, int height, UniqueKernelHandle mapping, UniqueView view)
    : width_(width),
      height_(height),
      mapping_(std::move(mapping)),
      view_(std::move(view)),
      bitmap_(makeBitmap()) {}

std::optional<SharedBitmap> SharedBitmap::make(std::int64_t width, std::int64_t height) {
  if (!isBmpSize(width, height)) {
    return std::nullopt;
  }
  const auto bytes = static_cast<DWORD>(dibRowBytes(width, kBitsPerPixel) * height);
  UniqueKernelHandle mapping(
      CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, bytes, nullptr));
  if (!mapping) {
    return std::nullopt;
  }
  UniqueView view(MapViewOfFile(mapping.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
  if (!view) {
    return std::nullopt;
  }
  SharedBitmap made(static_cast<int>(width), static_cast<int>(height), std::move(mapping),
                    std::move(view));
  if (made.bitmap() == nullptr) {
    return std::nullopt;
  }
  return made;
}

std::int64_t SharedBitmap::rowBytes() const { return dibRowBytes(width_, kBitsPerPixel); }

UniqueBitmap SharedBitmap::makeBitmap() const {
  const BITMAPINFO info = dibInfo(width_, height_, kBitsPerPixel);
  void* ownView = nullptr;
  return UniqueBitmap(
      CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &ownView, mapping_.get(), 0));
}

UniqueBitmap SharedBitmap::giveBitmap() { return std::exchange(bitmap_, makeBitmap()); }

}  // namespace zyn
