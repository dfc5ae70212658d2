#include "glcontext/ChildPresentation_win.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "glcontext/FrameReading_gl.h"
#include "glcontext/MemorySurface_win.h"
#include "glcontext/gl_api.h"

namespace zyn {
namespace {

/// As many pixels are copied at a time: they stay in the processor's cache, and need little memory.
constexpr LONG kStripPixels = 1 << 15;

bool isWine() {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return system != nullptr && GetProcAddress(system, "wine_get_version") != nullptr;
}

/// Device context for the whole of a window, even while the window is painted.
UniqueWindowDC wholeDC(HWND window) {
  return {GetDCEx(window, nullptr, DCX_CACHE | DCX_CLIPCHILDREN | DCX_CLIPSIBLINGS), {window}};
}

SIZE clientSize(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  return {client.right, client.bottom};
}

/// A top-level window: the buffers of a hidden child do not follow its size. Null where none is
/// needed or to be had.
std::unique_ptr<HiddenWindow> makeCanvasFor(HWND window) {
  if (!isWine() || !IsWindow(window)) {
    return nullptr;
  }
  auto canvas = std::make_unique<HiddenWindow>(clientSize(window));
  return canvas->get() != nullptr ? std::move(canvas) : nullptr;
}

}  // namespace

ChildPresentation::ChildPresentation(HWND window)
    : window_(window),
      canvas_(makeCanvasFor(window)),
      windowDC_(!canvas_ && IsWindow(window) ? GetDC(window) : nullptr, {window}) {}

void ChildPresentation::follow() const {
  if (!canvas_) {
    return;
  }
  const SIZE wanted = clientSize(window_);
  const SIZE present = clientSize(canvas_->get());
  if (wanted.cx == present.cx && wanted.cy == present.cy) {
    return;
  }
  SetWindowPos(canvas_->get(), nullptr, 0, 0, wanted.cx, wanted.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS);
  // The buffers take the window's size when they are swapped.
  SwapBuffers(dc());
}

void ChildPresentation::present() const {
  if (canvas_) {
    copyFrame();  // nobody sees the canvas: its buffers need not change places
  } else {
    SwapBuffers(dc());
  }
}

void ChildPresentation::copyFrame() const {
  const SIZE size = clientSize(canvas_->get());
  if (size.cx <= 0 || size.cy <= 0 || !IsWindowVisible(window_)) {
    return;
  }
  const LONG stripHeight = std::clamp(kStripPixels / size.cx, 1L, size.cy);
  const auto pixels = std::make_unique_for_overwrite<std::uint32_t[]>(
      static_cast<std::size_t>(size.cx * stripHeight));
  const UniqueWindowDC shown = wholeDC(window_);
  const FrameReading reading;
  glReadBuffer(GL_BACK);
  for (LONG bottom = 0; bottom < size.cy; bottom += stripHeight) {
    const LONG height = std::min(stripHeight, size.cy - bottom);
    const BITMAPINFO layout = dibInfo(size.cx, height, 32);
    glReadPixels(0, bottom, size.cx, height, kBgra, GL_UNSIGNED_BYTE, pixels.get());
    SetDIBitsToDevice(shown.get(), 0, size.cy - bottom - height, static_cast<DWORD>(size.cx),
                      static_cast<DWORD>(height), 0, 0, 0, static_cast<UINT>(height), pixels.get(),
                      &layout, DIB_RGB_COLORS);
  }
}

}  // namespace zyn
