#pragma once

#include "support/HostSession_win.h"
#include "support/Image.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {

/// An OpenGL context of the test's own on a 32-bit bitmap in memory, or in a hidden window where
/// there is no OpenGL on bitmaps; current for the object's life unless the test makes another one
/// current.
class GlCanvas {
 public:
  GlCanvas(int width, int height);
  ~GlCanvas();
  GlCanvas(const GlCanvas&) = delete;
  GlCanvas& operator=(const GlCanvas&) = delete;

  void makeCurrent() const;
  bool isCurrent() const;
  /// False where OpenGL does not draw on bitmaps.
  bool isBitmap() const { return !window_; }
  /// What has been drawn so far.
  Image read() const;

 private:
  int width_;
  int height_;
  HBITMAP bitmap_;
  HDC dc_;
  HWND window_ = nullptr;
  HGLRC context_ = nullptr;
};

}  // namespace zyn::test
