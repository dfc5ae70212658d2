#include "support/EglContext_gl.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "glcontext/gl_api.h"

namespace zyn::test {

namespace {

template <class Result>
Result checked(Result result, const char* what) {
  if (!result) {
    throw std::runtime_error(std::string(what) + " failed with EGL error " +
                             std::to_string(eglGetError()));
  }
  return result;
}

EGLDisplay openDisplay() {
  const auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      checked(eglGetProcAddress("eglGetPlatformDisplayEXT"), "eglGetProcAddress"));
  const EGLDisplay display = checked(getDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr),
                                     "eglGetPlatformDisplayEXT");
  checked(eglInitialize(display, nullptr, nullptr), "eglInitialize");
  checked(eglBindAPI(EGL_OPENGL_API), "eglBindAPI");
  return display;
}

/// One for the process and never terminated, which would unload the driver with what it still
/// holds.
EGLDisplay display() {
  static const EGLDisplay opened = openDisplay();
  return opened;
}

EGLConfig chooseConfig(EGLint samples) {
  const EGLint wanted[] = {EGL_SURFACE_TYPE,
                           EGL_PBUFFER_BIT,
                           EGL_RENDERABLE_TYPE,
                           EGL_OPENGL_BIT,
                           EGL_RED_SIZE,
                           8,
                           EGL_GREEN_SIZE,
                           8,
                           EGL_BLUE_SIZE,
                           8,
                           EGL_ALPHA_SIZE,
                           8,
                           EGL_DEPTH_SIZE,
                           24,
                           EGL_SAMPLES,
                           samples,
                           EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  checked(eglChooseConfig(display(), wanted, &config, 1, &count), "eglChooseConfig");
  return checked(config, "eglChooseConfig");
}

}  // namespace

EglContext::EglContext(int width, int height, int samples) : width_(width), height_(height) {
  const EGLConfig config = chooseConfig(samples);
  const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
  surface_ = checked(eglCreatePbufferSurface(display(), config, size), "eglCreatePbufferSurface");
  context_ = checked(eglCreateContext(display(), config, nullptr, nullptr), "eglCreateContext");
  makeCurrent();
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

EglContext::~EglContext() {
  eglMakeCurrent(display(), nullptr, nullptr, nullptr);
  eglDestroyContext(display(), context_);
  eglDestroySurface(display(), surface_);
}

void EglContext::makeCurrent() const {
  checked(eglMakeCurrent(display(), surface_, surface_, context_), "eglMakeCurrent");
}

Image EglContext::read(int width, int height) const {
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(width * height) * 4);
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
  Image image(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const std::size_t at = static_cast<std::size_t>((height - 1 - y) * width + x) * 4;
      image.at(x, y) = {bytes[at], bytes[at + 1], bytes[at + 2]};
    }
  }
  return image;
}

}  // namespace zyn::test
