#include "view/ContainerPicture_win.h"

#include <algorithm>

#include "glcontext/MemorySurface_win.h"

namespace zyn {

namespace {

/// The largest side of a picture, in pixels.
constexpr LONG kLargestPicture = 8192;

}  // namespace

SIZE pictureSizeFor(SIZE pixels) {
  const double shrink = std::max(1.0, std::max(pixels.cx, pixels.cy) / double{kLargestPicture});
  return {std::max(1L, static_cast<LONG>(pixels.cx / shrink)),
          std::max(1L, static_cast<LONG>(pixels.cy / shrink))};
}

void stretchInto(HDC dc, const RECT& bounds, const SharedBitmap& picture) {
  const BITMAPINFO info = dibInfo(picture.width(), picture.height(), 24);
  const int mode = SetStretchBltMode(dc, HALFTONE);
  StretchDIBits(dc, bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
                0, 0, picture.width(), picture.height(), picture.pixels(), &info, DIB_RGB_COLORS,
                SRCCOPY);
  SetStretchBltMode(dc, mode);
}

}  // namespace zyn
