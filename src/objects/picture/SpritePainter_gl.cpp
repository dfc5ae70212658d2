#include "objects/picture/SpritePainter_gl.h"

#include <cmath>

#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/ViewMeasures_gl.h"
#include "glcontext/gl_api.h"

namespace zyn {

namespace {

void drawAt(const SpriteShape& shape, double z, double pixelScale) {
  const PushedAttributes rasterGuard(GL_CURRENT_BIT);
  if (moveRasterTo(shape.position.x, shape.position.y, z, -shape.originX * pixelScale,
                   -shape.originY * pixelScale)) {
    drawImage(*shape.image, pixelScale);
  }
}

/// How much longer a length along an axis becomes on its way to the eye; below 0 where it turns
/// round.
double scaleOfAxis(const GLdouble* column, int axis) {
  return std::copysign(std::hypot(column[0], column[1], column[2]), column[axis]);
}

}  // namespace

void drawSprite3D(const SpriteShape& shape, double pixelScale) {
  const AutoGLDepthTest inFront(-1);
  drawAt(shape, shape.position.z, pixelScale);
}

void drawSprite2D(const SpriteShape& shape, double pixelScale) { drawAt(shape, 0, pixelScale); }

void drawSpriteRectangle2D(const SpriteShape& shape, double pixelScale, double viewHeight) {
  GLdouble modelview[16] = {};
  glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
  const double pixel = pixelScale * pixelLength(viewHeight);
  const double stepX = pixel / scaleOfAxis(modelview, 0);
  const double stepY = pixel / scaleOfAxis(modelview + 4, 1);
  const double left = shape.position.x - stepX * shape.originX;
  const double bottom = shape.position.y - stepY * shape.originY;
  const double right = left + stepX * shape.image->width;
  const double top = bottom + stepY * shape.image->height;
  glBegin(GL_POLYGON);
  glVertex2d(left, bottom);
  glVertex2d(right, bottom);
  glVertex2d(right, top);
  glVertex2d(left, top);
  glEnd();
}

}  // namespace zyn
