#include "GlWindow.h"

#include <GL/glx.h>

#include <stdexcept>
#include <vector>

#include "Scenes.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

struct GlWindow::System {
  Display* display = XOpenDisplay(nullptr);
  Window window = 0;
  GLXContext context = nullptr;
};

GlWindow::GlWindow() : system_(new System) {
  Display* const display = system_->display;
  if (!display) {
    throw std::runtime_error("no display");
  }
  int wanted[] = {GLX_RGBA, GLX_DOUBLEBUFFER, GLX_DEPTH_SIZE, 24, None};
  XVisualInfo* const visual = glXChooseVisual(display, DefaultScreen(display), wanted);
  const Window root = RootWindow(display, visual->screen);
  XSetWindowAttributes attributes{};
  attributes.colormap = XCreateColormap(display, root, visual->visual, AllocNone);
  system_->window =
      XCreateWindow(display, root, 0, 0, scenes::kWidth, scenes::kHeight, 0, visual->depth,
                    InputOutput, visual->visual, CWColormap, &attributes);
  XMapWindow(display, system_->window);
  system_->context = glXCreateContext(display, visual, nullptr, True);
  XFree(visual);
  glXMakeCurrent(display, system_->window, system_->context);
  present();
}

GlWindow::~GlWindow() {
  glXMakeCurrent(system_->display, None, nullptr);
  glXDestroyContext(system_->display, system_->context);
  XCloseDisplay(system_->display);
  delete system_;
}

void GlWindow::present() {
  if (!path_.empty()) {
    write();
  }
  glXSwapBuffers(system_->display, system_->window);
  glFinish();
}

void GlWindow::save(const std::string& path, const std::function<void()>& draw) {
  path_ = path;
  draw();
  path_.clear();
}

void GlWindow::write() const {
  constexpr int kWidth = scenes::kWidth;
  constexpr int kHeight = scenes::kHeight;
  std::vector<unsigned char> pixels(std::size_t{3} * kWidth * kHeight);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, kWidth, kHeight, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
  stbi_flip_vertically_on_write(1);
  if (!stbi_write_png(path_.c_str(), kWidth, kHeight, 3, pixels.data(), 3 * kWidth)) {
    throw std::runtime_error(path_);
  }
}
