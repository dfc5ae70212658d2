#include "glcontext/ChildPresentation_win.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "glcontext/FrameReading_gl.h"
#include "glcontext/MemorySurface_win.h"
#include "glcontext/PixelFormats_win.h"
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

/// With the pixel format of views. Null where there is none to be had.
std::unique_ptr<HiddenWindow> makeCanvas(SIZE size) {
  for (const auto place : {HiddenWindow::kMessageOnly, HiddenWindow::kTopLevel}) {
    auto canvas = std::make_unique<HiddenWindow>(size, place);
    if (canvas->dc() != nullptr && setWindowPixelFormat(canvas->dc())) {
      return canvas;
    }
  }
  return nullptr;
}

bool needsCanvas(HWND window) { return isWine() && IsWindow(window); }

}  // namespace

ChildPresentation::ChildPresentation(HWND window)
    : window_(window),
      canvas_(needsCanvas(window) ? makeCanvas(clientSize(window)) : nullptr),
      windowDC_(!canvas_ && IsWindow(window) ? GetDC(window) : nullptr, {window}),
      hasFormat_(canvas_ || setWindowPixelFormat(windowDC_.get())) {}

void ChildPresentation::follow() {
  if (!canvas_) {
    return;
  }
  const SIZE wanted = clientSize(window_);
  const SIZE present = clientSize(canvas_->get());
  if (wanted.cx == present.cx && wanted.cy == present.cy) {
    return;
  }
  // The buffers of a message-only window keep their size.
  if (auto canvas = makeCanvas(wanted)) {
    canvas_ = std::move(canvas);
  }
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
