#include "glcontext/ViewMeasures_gl.h"

#include <array>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

double shownHeight() { return 2.0 / matrixState(GL_PROJECTION_MATRIX)[5]; }

double pixelLength(double viewHeight) {
  std::array<GLdouble, 4> viewport{};
  glGetDoublev(GL_VIEWPORT, viewport.data());
  return viewport[3] > 0 ? viewHeight / viewport[3] : 0.0;
}

}  // namespace zyn
