#pragma once

#include "glcontext/Tile.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// What a projection shows, as glOrtho takes it.
struct ViewRectangle {
  double left = 0.0;
  double bottom = 0.0;
  double width = 0.0;
  double height = 0.0;
  double zNear = 0.0;
  double zFar = 0.0;
};

/// Loads the projection of a view, narrowed to a part of the picture. Leaves the matrix mode at
/// GL_PROJECTION.
inline void loadOrthographic(const ViewRectangle& view, const PicturePart& part) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(view.left + part.left * view.width, view.left + part.right * view.width,
          view.bottom + part.bottom * view.height, view.bottom + part.top * view.height, view.zNear,
          view.zFar);
}

/// The same with perspective, where the rectangle has its size at `distance` from the eye.
inline void loadPerspective(const ViewRectangle& view, double distance, const PicturePart& part) {
  const double scale = view.zNear / distance;
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glFrustum(scale * (view.left + part.left * view.width),
            scale * (view.left + part.right * view.width),
            scale * (view.bottom + part.bottom * view.height),
            scale * (view.bottom + part.top * view.height), view.zNear, view.zFar);
}

/// Loads a projection that maps every point to (2, 2, 2), outside the view volume. Leaves the
/// matrix mode at GL_PROJECTION.
inline void loadProjectionOfNothing() {
  constexpr GLfloat kNothing[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2, 1};
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixf(kNothing);
}

}  // namespace zyn
