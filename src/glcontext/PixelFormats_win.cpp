#include "glcontext/PixelFormats_win.h"

#include <GL/gl.h>
#include <GL/wglext.h>

#include <atomic>
#include <bit>
#include <mutex>

#include "glcontext/CurrentContext_win.h"
#include "glcontext/MemorySurface_win.h"
#include "glcontext/MultisampleFormat.h"
#include "platform/ModuleHandle_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {
namespace {

// A probe's window can reach hooks of the host, and they this module.
std::recursive_mutex probing;
std::atomic<int> windowFormat = 0;
std::atomic<int> bitmapFormat = 0;
std::atomic<bool> bitmapMultisample = false;

ATOM registerProbeClass() {
  WNDCLASSEXW probe{};
  probe.cbSize = sizeof probe;
  probe.style = CS_VREDRAW | CS_HREDRAW | CS_OWNDC;
  probe.lpfnWndProc = DefWindowProcW;
  probe.hInstance = moduleHandle();
  probe.lpszClassName = L"OpenGL";
  return RegisterClassExW(&probe);
}

/// A throw-away top-level window that is never shown, of a window class of its own that lives as
/// long as it does. There is at most one at a time.
class ProbeWindow {
 public:
  ProbeWindow() : class_(registerProbeClass()) {
    if (class_ != 0) {
      window_ = CreateWindowExW(0, MAKEINTATOM(class_), L"", WS_OVERLAPPEDWINDOW, 0, 0, 0, 0,
                                nullptr, nullptr, moduleHandle(), nullptr);
    }
    if (window_ != nullptr) {
      dc_ = GetDC(window_);
    }
  }
  ~ProbeWindow() {
    if (dc_ != nullptr) {
      ReleaseDC(window_, dc_);
    }
    if (window_ != nullptr) {
      DestroyWindow(window_);
    }
    if (class_ != 0) {
      UnregisterClassW(MAKEINTATOM(class_), moduleHandle());
    }
  }
  ProbeWindow(const ProbeWindow&) = delete;
  ProbeWindow& operator=(const ProbeWindow&) = delete;

  /// The window's device context; null if the class or the window could not be made.
  HDC dc() const { return dc_; }

 private:
  ATOM class_;
  HWND window_ = nullptr;
  HDC dc_ = nullptr;
};

PIXELFORMATDESCRIPTOR formatOf(DWORD flags, int colourBits, int depthBits, int stencilBits) {
  PIXELFORMATDESCRIPTOR wanted{};
  wanted.nSize = sizeof wanted;
  wanted.nVersion = 1;
  wanted.dwFlags = flags | PFD_SUPPORT_OPENGL;
  wanted.iPixelType = PFD_TYPE_RGBA;
  wanted.cColorBits = static_cast<BYTE>(colourBits);
  wanted.cDepthBits = static_cast<BYTE>(depthBits);
  wanted.cStencilBits = static_cast<BYTE>(stencilBits);
  wanted.iLayerType = PFD_MAIN_PLANE;
  return wanted;
}

void runWindowProbe() {
  const ProbeWindow window;
  if (window.dc() == nullptr) {
    return;
  }
  const PIXELFORMATDESCRIPTOR wanted = windowFormatOf(8);
  const int format = ChoosePixelFormat(window.dc(), &wanted);
  windowFormat = format;
  if (format <= 0 || !SetPixelFormat(window.dc(), format, &wanted)) {
    return;
  }
  const UniqueRenderingContext context(wglCreateContext(window.dc()));
  // The driver loads when a context is made current.
  const CurrentContext current(window.dc(), context.get());
}

template <class Function>
Function glEntryPoint(const char* name) {
  return std::bit_cast<Function>(wglGetProcAddress(name));
}

/// Whether the driver of the current context offers the extension.
bool isOffered(const char* name) {
  const auto wglExtensions =
      glEntryPoint<PFNWGLGETEXTENSIONSSTRINGARBPROC>("wglGetExtensionsStringARB");
  const char* list = wglExtensions != nullptr ? wglExtensions(wglGetCurrentDC()) : nullptr;
  if (list == nullptr) {
    list = std::bit_cast<const char*>(glGetString(GL_EXTENSIONS));
  }
  return list != nullptr && hasExtension(list, name);
}

/// Replaces the bitmap format by a multisampled one where the driver of the current context has it.
void queryMultisample(HDC dc) {
  const auto choose = isOffered("WGL_ARB_multisample")
                          ? glEntryPoint<PFNWGLCHOOSEPIXELFORMATARBPROC>("wglChoosePixelFormatARB")
                          : nullptr;
  if (choose == nullptr) {
    bitmapMultisample = false;
    return;
  }
  const int format = chooseMultisampleFormat([&](const int* attributes) {
    const float noFloats[] = {0.0F, 0.0F};
    int found = 0;
    UINT count = 0;
    return choose(dc, attributes, noFloats, 1, &found, &count) != FALSE && count > 0 ? found : 0;
  });
  if (format == 0) {
    return;
  }
  bitmapFormat = format;
  bitmapMultisample = true;
}

void runBitmapProbe() {
  const auto surface = MemorySurface::make(200, 200, 24);
  if (!surface) {
    return;
  }
  const PIXELFORMATDESCRIPTOR wanted = bitmapFormatOf(24, 24);
  const int format = ChoosePixelFormat(surface->dc(), &wanted);
  bitmapFormat = format;
  if (format <= 0 || !SetPixelFormat(surface->dc(), format, &wanted)) {
    return;
  }
  const UniqueRenderingContext context(wglCreateContext(surface->dc()));
  const CurrentContext current(surface->dc(), context.get());
  if (current && !bitmapMultisample) {
    queryMultisample(surface->dc());
  }
}

}  // namespace

void probeWindowPixelFormat() {
  const std::lock_guard lock(probing);
  if (windowFormat == 0) {
    runWindowProbe();
  }
}

PIXELFORMATDESCRIPTOR windowFormatOf(int stencilBits) {
  return formatOf(PFD_DRAW_TO_WINDOW | PFD_DOUBLEBUFFER, 32, 32, stencilBits);
}

int windowPixelFormat() { return windowFormat; }

bool setWindowPixelFormat(HDC dc) {
  const PIXELFORMATDESCRIPTOR wanted = windowFormatOf(0);
  const int known = windowFormat;
  const int format = known != 0 ? known : ChoosePixelFormat(dc, &wanted);
  return format != 0 && SetPixelFormat(dc, format, &wanted) != FALSE;
}

void probeBitmapPixelFormat() {
  const std::lock_guard lock(probing);
  if (bitmapFormat == 0) {
    runBitmapProbe();
  }
}

PIXELFORMATDESCRIPTOR bitmapFormatOf(int colourBits, int depthBits) {
  return formatOf(PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI, colourBits, depthBits, 0);
}

int bitmapPixelFormat() { return bitmapFormat; }

bool drawsOnMultisampledBitmap() {
  return bitmapMultisample && GetPixelFormat(wglGetCurrentDC()) == bitmapFormat;
}

}  // namespace zyn
