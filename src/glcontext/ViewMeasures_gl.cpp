#include "glcontext/ViewMeasures_gl.h"

#include <algorithm>
#include <array>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

ShownView shownView() {
  const GlMatrix projection = matrixState(GL_PROJECTION_MATRIX);
  return {2.0 / projection[5], projection[11] != 0};
}

double perspectiveScale(const GlMatrix& projection, const ModelView& space, const Point& at) {
  const Point seen = space.seenFromEye(at);
  return std::max(0.0, projection[3] * seen.x + projection[7] * seen.y + projection[11] * seen.z +
                           projection[15]);
}

double pixelLength(double viewHeight) {
  std::array<GLdouble, 4> viewport{};
  glGetDoublev(GL_VIEWPORT, viewport.data());
  return viewport[3] > 0 ? viewHeight / viewport[3] : 0.0;
}

}  // namespace zyn
