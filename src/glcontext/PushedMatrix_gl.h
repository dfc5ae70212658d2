#pragma once

#include "glcontext/CountedGuard.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// A matrix that may be changed within the scope and is given back at its end. `mode` becomes the
/// matrix mode at the beginning and at the end.
class PushedMatrix : CountedGuard {
 public:
  explicit PushedMatrix(GLenum mode) : mode_(mode) {
    glMatrixMode(mode_);
    glPushMatrix();
  }
  ~PushedMatrix() {
    glMatrixMode(mode_);
    glPopMatrix();
  }
  PushedMatrix(const PushedMatrix&) = delete;
  PushedMatrix& operator=(const PushedMatrix&) = delete;

 private:
  GLenum mode_;
};

}  // namespace zyn
