#pragma once

#include "glcontext/Tile.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// What an orthographic projection shows, as glOrtho takes it.
struct OrthographicView {
  double left = 0.0;
  double bottom = 0.0;
  double width = 0.0;
  double height = 0.0;
  double zNear = 0.0;
  double zFar = 0.0;
};

/// Loads the projection of a view, narrowed to a part of the picture. Leaves the matrix mode at
/// GL_PROJECTION.
inline void loadOrthographic(const OrthographicView& view, const PicturePart& part) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(view.left + part.left * view.width, view.left + part.right * view.width,
          view.bottom + part.bottom * view.height, view.bottom + part.top * view.height, view.zNear,
          view.zFar);
}

/// Loads a projection that maps every point to (2, 2, 2), outside the view volume. Leaves the
/// matrix mode at GL_PROJECTION.
inline void loadProjectionOfNothing() {
  constexpr GLfloat kNothing[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2, 1};
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixf(kNothing);
}

}  // namespace zyn
