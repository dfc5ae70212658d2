#include "viewer/UiScale_win.h"

namespace zyn::viewer {

namespace {

constexpr UINT kStandardDpi = 96;

/// A function that Windows 10 brought; null where there is none.
template <typename Function>
Function* newer(const char* name) {
  const HMODULE user = GetModuleHandleW(L"user32.dll");
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(user, name)));
}

UINT dpiOf(HWND window) {
  if (auto* const ofWindow = newer<UINT WINAPI(HWND)>("GetDpiForWindow")) {
    const UINT dpi = ofWindow(window);
    return dpi == 0 ? kStandardDpi : dpi;
  }
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return static_cast<UINT>(dpi);
}

HFONT messageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  auto* const forDpi =
      newer<BOOL WINAPI(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
  if (forDpi == nullptr || !forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  }
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace

UiScale::UiScale(HWND window) : dpi_(dpiOf(window)), font_(messageFont(dpi_)) {}

}  // namespace zyn::viewer
