#include "platform/ScreenResolution_win.h"

#include <bit>

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

double monitorResolution(HWND window) {
  using ResolutionOfWindow = UINT(WINAPI*)(HWND);
  if (const auto resolutionOfWindow = std::bit_cast<ResolutionOfWindow>(
          GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow"))) {
    if (const UINT resolution = resolutionOfWindow(window)) {
      return resolution;
    }
  }
  const HDC device = GetDC(window);
  const int resolution = GetDeviceCaps(device, LOGPIXELSX);
  ReleaseDC(window, device);
  return resolution;
}

}  // namespace zyn
