#include "support/GlCanvas_win.h"

namespace zyn::test {
namespace {

HBITMAP createBitmap(int width, int height) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  return CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
}

bool choosePixelFormat(HDC dc, DWORD flags) {
  PIXELFORMATDESCRIPTOR wanted = {};
  wanted.nSize = sizeof wanted;
  wanted.nVersion = 1;
  wanted.dwFlags = flags | PFD_SUPPORT_OPENGL;
  wanted.iPixelType = PFD_TYPE_RGBA;
  wanted.cColorBits = 32;
  wanted.cDepthBits = 24;
  const int format = ChoosePixelFormat(dc, &wanted);
  return format != 0 && SetPixelFormat(dc, format, &wanted);
}

}  // namespace

GlCanvas::GlCanvas(int width, int height)
    : width_(width),
      height_(height),
      bitmap_(createBitmap(width, height)),
      dc_(CreateCompatibleDC(nullptr)) {
  SelectObject(dc_, bitmap_);
  bool isFit = choosePixelFormat(dc_, PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI);
  if (!isFit) {
    DeleteDC(dc_);
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, width, height,
                              nullptr, nullptr, nullptr, nullptr);
    dc_ = GetDC(window_);
    isFit = choosePixelFormat(dc_, PFD_DRAW_TO_WINDOW | PFD_DOUBLEBUFFER);
  }
  if (isFit) context_ = wglCreateContext(dc_);
  makeCurrent();
}

GlCanvas::~GlCanvas() {
  if (isCurrent()) wglMakeCurrent(nullptr, nullptr);
  wglDeleteContext(context_);
  if (window_) {
    ReleaseDC(window_, dc_);
    DestroyWindow(window_);
  } else {
    DeleteDC(dc_);
  }
  DeleteObject(bitmap_);
}

void GlCanvas::makeCurrent() const {
  if (!context_ || !wglMakeCurrent(dc_, context_)) {
    throw std::runtime_error("the test's own OpenGL context could not be made current");
  }
}

bool GlCanvas::isCurrent() const {
  return context_ && wglGetCurrentContext() == context_ && wglGetCurrentDC() == dc_;
}

Image GlCanvas::read() const {
  glFinish();
  std::vector<std::uint8_t> pixels(static_cast<size_t>(width_) * static_cast<size_t>(height_) * 4);
  glReadPixels(0, 0, width_, height_, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
  Image image(width_, height_);
  const std::uint8_t* pixel = pixels.data();
  for (int y = height_ - 1; y >= 0; --y) {
    for (int x = 0; x < width_; ++x, pixel += 4) image.at(x, y) = {pixel[0], pixel[1], pixel[2]};
  }
  return image;
}

}  // namespace zyn::test
