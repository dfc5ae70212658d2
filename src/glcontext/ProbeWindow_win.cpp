#include "glcontext/ProbeWindow_win.h"

#include "platform/ModuleHandle_win.h"

namespace zyn {
namespace {

ATOM registerProbeClass() {
  WNDCLASSEXW probe{};
  probe.cbSize = sizeof probe;
  probe.style = CS_VREDRAW | CS_HREDRAW | CS_OWNDC;
  probe.lpfnWndProc = DefWindowProcW;
  probe.hInstance = moduleHandle();
  probe.lpszClassName = L"OpenGL";
  return RegisterClassExW(&probe);
}

}  // namespace

ProbeWindow::ProbeWindow() : class_(registerProbeClass()) {
  if (class_ == 0) return;
  window_ = CreateWindowExW(0, MAKEINTATOM(class_), L"", WS_OVERLAPPEDWINDOW, 0, 0, 0, 0, nullptr,
                            nullptr, moduleHandle(), nullptr);
  if (window_ != nullptr) dc_ = GetDC(window_);
}

ProbeWindow::~ProbeWindow() {
  if (dc_ != nullptr) ReleaseDC(window_, dc_);
  if (window_ != nullptr) DestroyWindow(window_);
  if (class_ != 0) UnregisterClassW(MAKEINTATOM(class_), moduleHandle());
}

}  // namespace zyn
