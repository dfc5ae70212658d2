#pragma once

#include <array>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Draws vertices by their place before the eye, calculated in double precision, for a scope: a
/// trace far from the origin, in a view that looks there, keeps its shape. The current model-view
/// matrix is given back at the end. Not for display lists, which are called under other matrices.
class EyeSpace {
 public:
  EyeSpace() : mode_(enumState(GL_MATRIX_MODE)) {
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix_.data());
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glMatrixMode(mode_);
  }
  ~EyeSpace() {
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(matrix_.data());
    glMatrixMode(mode_);
  }
  EyeSpace(const EyeSpace&) = delete;
  EyeSpace& operator=(const EyeSpace&) = delete;

  /// The vertex at a model point, between glBegin and glEnd.
  void vertex(double x, double y, double z) const {
    glVertex4d(row(0, x, y, z), row(1, x, y, z), row(2, x, y, z), row(3, x, y, z));
  }

 private:
  double row(std::size_t i, double x, double y, double z) const {
    return ((matrix_[i] * x + matrix_[4 + i] * y) + matrix_[8 + i] * z) + matrix_[12 + i];
  }

  GLenum mode_;
  std::array<GLdouble, 16> matrix_{};
};

}  // namespace zyn
