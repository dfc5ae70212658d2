#pragma once

#include "glcontext/PushedAttributes_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// Draws plain lines as wide and plain points as large as so many pixels, above 0, for a scope.
class PixelScale {
 public:
  explicit PixelScale(double pixels) {
    glLineWidth(static_cast<GLfloat>(pixels));
    glPointSize(static_cast<GLfloat>(pixels));
  }

 private:
  PushedAttributes sizes_{GL_LINE_BIT | GL_POINT_BIT};
};

}  // namespace zyn
