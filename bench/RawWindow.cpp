#include "bench/RawWindow.h"

#include <stdexcept>

#include "objects/text/ContextFonts_win.h"

namespace zyn::bench {

namespace {

HWND makeWindow(DWORD extendedStyle, DWORD style, SIZE size, HWND parent) {
  return CreateWindowExW(extendedStyle, L"STATIC", L"", style, 0, 0, size.cx, size.cy, parent,
                         nullptr, GetModuleHandleW(nullptr), nullptr);
}

HGLRC makeContext(HDC dc) {
  PIXELFORMATDESCRIPTOR wanted = {};
  wanted.nSize = sizeof wanted;
  wanted.nVersion = 1;
  wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
  wanted.iPixelType = PFD_TYPE_RGBA;
  wanted.cColorBits = 24;
  wanted.cDepthBits = 24;
  SetPixelFormat(dc, ChoosePixelFormat(dc, &wanted), &wanted);
  const HGLRC context = wglCreateContext(dc);
  if (!context || !wglMakeCurrent(dc, context)) throw std::runtime_error("no raw context");
  return context;
}

}  // namespace

RawWindow::RawWindow(SIZE size, Fonts fonts)
    : frame_(makeWindow(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, WS_POPUP | WS_CLIPCHILDREN, size,
                        nullptr)),
      window_(makeWindow(WS_EX_NOPARENTNOTIFY, WS_CHILD | WS_VISIBLE, size, frame_)),
      dc_(GetDC(window_)),
      context_(makeContext(dc_)) {
  ShowWindow(frame_, SW_SHOWNOACTIVATE);
  if (fonts == kWithFonts) {
    CGLFontContext lists;
    buildOutlineFonts(lists, true);
    lists.compileGlyphs();
  }
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glFinish();
  SwapBuffers(dc_);
}

RawWindow::~RawWindow() {
  wglMakeCurrent(nullptr, nullptr);
  wglDeleteContext(context_);
  ReleaseDC(window_, dc_);
  DestroyWindow(frame_);
}

}  // namespace zyn::bench
