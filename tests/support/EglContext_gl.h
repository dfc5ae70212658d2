#pragma once

#include "support/Image.h"

namespace zyn::test {

/// An OpenGL context on a black picture in memory (8 bits a component with alpha, 24 of depth, no
/// window system), current for the object's life. With `samples` each pixel has several.
class EglContext {
 public:
  EglContext(int width, int height, int samples = 0);
  ~EglContext();
  EglContext(const EglContext&) = delete;
  EglContext& operator=(const EglContext&) = delete;

  /// Again, after another one was.
  void makeCurrent() const;

  int width() const { return width_; }
  int height() const { return height_; }

  /// What has been drawn so far in the lower left part of this size; by default all.
  Image read(int width, int height) const;
  Image read() const { return read(width_, height_); }

 private:
  int width_;
  int height_;
  void* surface_;
  void* context_;
};

}  // namespace zyn::test
