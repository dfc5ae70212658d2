#include "glcontext/ViewMeasures_gl.h"

#include <array>

#include "glcontext/gl_api.h"

namespace zyn {

double shownHeight() {
  std::array<GLdouble, 16> projection{};
  glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
  return 2.0 / projection[5];
}

double pixelLength(double viewHeight) {
  std::array<GLdouble, 4> viewport{};
  glGetDoublev(GL_VIEWPORT, viewport.data());
  return viewport[3] > 0 ? viewHeight / viewport[3] : 0.0;
}

}  // namespace zyn
