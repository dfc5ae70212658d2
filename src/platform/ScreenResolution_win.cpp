#include "platform/ScreenResolution_win.h"

namespace zyn {

double resolutionOf(HDC dc) {
  return (GetDeviceCaps(dc, LOGPIXELSX) + GetDeviceCaps(dc, LOGPIXELSY)) / 2.0;
}

double screenResolution() {
  const HDC screen = GetDC(nullptr);
  const double resolution = resolutionOf(screen);
  ReleaseDC(nullptr, screen);
  return resolution;
}

}  // namespace zyn
