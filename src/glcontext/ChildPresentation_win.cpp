#include "glcontext/ChildPresentation_win.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "glcontext/MemorySurface_win.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {
namespace {

/// GL_BGRA, the order of a bitmap's bytes. OpenGL has it since 1.2; Wine's always.
constexpr GLenum kBgra = 0x80E1;

/// As many pixels are copied at a time: they stay in the processor's cache, and need little memory.
constexpr LONG kStripPixels = 1 << 15;

bool isWine() {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return system != nullptr && GetProcAddress(system, "wine_get_version") != nullptr;
}

/// Any registered class serves: these windows are never painted nor sent messages.
HWND makeWindow(DWORD extendedStyle, DWORD style, SIZE size, HWND parent) {
  return CreateWindowExW(extendedStyle, L"STATIC", L"", style, 0, 0, size.cx, size.cy, parent,
                         nullptr, nullptr, nullptr);
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

/// A top-level window: the buffers of a hidden child do not follow its size.
HWND makeCanvasFor(HWND window) {
  if (!isWine() || !IsWindow(window)) {
    return nullptr;
  }
  return makeWindow(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, WS_POPUP, clientSize(window), nullptr);
}

/// Lets pixels be read as they are, into rows without gaps.
void setPlainReading() {
  for (const GLenum scale : GLNames{GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE}) {
    glPixelTransferf(scale, 1);
  }
  for (const GLenum bias : GLNames{GL_RED_BIAS, GL_GREEN_BIAS, GL_BLUE_BIAS}) {
    glPixelTransferf(bias, 0);
  }
  glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
  for (const GLenum layout :
       GLNames{GL_PACK_SWAP_BYTES, GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS}) {
    glPixelStorei(layout, 0);
  }
  glPixelStorei(GL_PACK_ALIGNMENT, sizeof(std::uint32_t));
}

/// The frame can be read as rows of a bitmap, whatever reading was set up for, for a scope.
class FrameReading {
 public:
  FrameReading() {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    setPlainReading();
    glReadBuffer(GL_BACK);
  }
  ~FrameReading() { glPopClientAttrib(); }
  FrameReading(const FrameReading&) = delete;
  FrameReading& operator=(const FrameReading&) = delete;

 private:
  PushedAttributes modes_{GL_PIXEL_MODE_BIT};
};

}  // namespace

ChildPresentation::ChildPresentation(HWND window)
    : window_(window),
      canvas_(makeCanvasFor(window)),
      dc_(canvas_ != nullptr
              ? wholeDC(canvas_)
              : UniqueWindowDC(IsWindow(window) ? GetDC(window) : nullptr, {window})) {}

ChildPresentation::~ChildPresentation() {
  dc_.reset();
  if (canvas_ != nullptr) {
    DestroyWindow(canvas_);
  }
}

void ChildPresentation::follow() const {
  if (canvas_ == nullptr) {
    return;
  }
  const SIZE wanted = clientSize(window_);
  const SIZE present = clientSize(canvas_);
  if (wanted.cx == present.cx && wanted.cy == present.cy) {
    return;
  }
  SetWindowPos(canvas_, nullptr, 0, 0, wanted.cx, wanted.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS);
  // The buffers take the window's size when they are swapped.
  SwapBuffers(dc_.get());
}

void ChildPresentation::present() const {
  if (canvas_ != nullptr) {
    copyFrame();  // nobody sees the canvas: its buffers need not change places
  } else {
    SwapBuffers(dc_.get());
  }
}

void ChildPresentation::copyFrame() const {
  const SIZE size = clientSize(canvas_);
  if (size.cx <= 0 || size.cy <= 0 || !IsWindowVisible(window_)) {
    return;
  }
  const LONG stripHeight = std::clamp(kStripPixels / size.cx, 1L, size.cy);
  const auto pixels = std::make_unique_for_overwrite<std::uint32_t[]>(
      static_cast<std::size_t>(size.cx * stripHeight));
  const UniqueWindowDC shown = wholeDC(window_);
  const FrameReading reading;
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
