#include "view/ContainerPicture_win.h"

#include "glcontext/MemorySurface_win.h"

namespace zyn {

void stretchInto(HDC dc, const RECT& bounds, const SharedBitmap& picture) {
  const BITMAPINFO info = dibInfo(picture.width(), picture.height(), 24);
  const int mode = SetStretchBltMode(dc, HALFTONE);
  StretchDIBits(dc, bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
                0, 0, picture.width(), picture.height(), picture.pixels(), &info, DIB_RGB_COLORS,
                SRCCOPY);
  SetStretchBltMode(dc, mode);
}

}  // namespace zyn
