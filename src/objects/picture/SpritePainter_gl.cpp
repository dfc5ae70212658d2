#include "objects/picture/SpritePainter_gl.h"

#include <algorithm>
#include <cmath>

#include "glcontext/ModelView_gl.h"
#include "glcontext/RasterImage_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "glcontext/ViewMeasures_gl.h"

namespace zyn {

namespace {

constexpr GLbitfield kBlending = GL_COLOR_BUFFER_BIT | GL_ENABLE_BIT;

void drawAt(const SpriteShape& shape, double z, double pixelScale, double opacity) {
  const PushedAttributes rasterGuard(opacity < 1 ? GL_CURRENT_BIT | kBlending : GL_CURRENT_BIT);
  if (opacity < 1) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  }
  if (moveRasterTo(shape.position.x, shape.position.y, z, -shape.originX * pixelScale,
                   -shape.originY * pixelScale)) {
    drawImage(*shape.image, pixelScale, opacity);
  }
}

/// What a picture covers, its pixels `stepX` and `stepY` model units long.
ScreenRectangle rectangleOf(const SpriteShape& shape, double stepX, double stepY) {
  const double left = shape.position.x - stepX * shape.originX;
  const double bottom = shape.position.y - stepY * shape.originY;
  return {left, left + stepX * shape.image->width, bottom, bottom + stepY * shape.image->height};
}

/// The same about the position, in units of the eye's space.
ScreenRectangle aboutPosition(const SpriteShape& shape, double pixel) {
  const double left = -pixel * shape.originX;
  const double bottom = -pixel * shape.originY;
  return {left, left + pixel * shape.image->width, bottom, bottom + pixel * shape.image->height};
}

void drawRectangle(const ScreenRectangle& sides) {
  glBegin(GL_POLYGON);
  glVertex2d(sides.left, sides.bottom);
  glVertex2d(sides.right, sides.bottom);
  glVertex2d(sides.right, sides.top);
  glVertex2d(sides.left, sides.top);
  glEnd();
}

/// How much longer a length along an axis becomes on its way to the eye; below 0 where it turns
/// round.
double scaleOfAxis(const GlMatrix& m, std::size_t axis) {
  const std::size_t column = 4 * axis;
  return std::copysign(std::hypot(m[column], m[column + 1], m[column + 2]), m[column + axis]);
}

/// Model units along an axis for one of the eye's space, against its direction where it points the
/// other way.
double signedUnit(const PickVolume& volume, std::size_t axis) {
  const double unit = 1 / volume.axisLength(axis);
  return volume.isAxisReversed(axis) ? -unit : unit;
}

}  // namespace

void drawSprite3D(const SpriteShape& shape, double pixelScale, double opacity) {
  const AutoGLDepthTest inFront(-1);
  drawAt(shape, shape.position.z, pixelScale, opacity);
}

void drawSprite2D(const SpriteShape& shape, double pixelScale, double opacity) {
  drawAt(shape, 0, pixelScale, opacity);
}

void drawSpriteRectangle2D(const SpriteShape& shape, double pixelScale, double viewHeight) {
  const GlMatrix modelview = matrixState(GL_MODELVIEW_MATRIX);
  const double pixel = pixelScale * pixelLength(viewHeight);
  drawRectangle(
      rectangleOf(shape, pixel / scaleOfAxis(modelview, 0), pixel / scaleOfAxis(modelview, 1)));
}

void drawUprightRectangle2D(const SpriteShape& shape, double pixelScale, double viewHeight,
                            GLenum frontFace) {
  const double pixel = pixelScale * pixelLength(viewHeight);
  ModelView space;
  space.moveTo({shape.position.x, shape.position.y, 0});
  space.faceViewer();
  if (!space.isUsable()) {
    return;
  }
  const PushedAttributes state(GL_TRANSFORM_BIT | GL_POLYGON_BIT);
  glFrontFace(frontFace);
  const PushedMatrix modelView(GL_MODELVIEW);
  space.load();
  drawRectangle(aboutPosition(shape, pixel));
}
bool mayPickSprite(const SpriteShape& shape, const PickQuery& query) {
  const Point& at = shape.position;
  const double z = query.isFlat ? 0.0 : at.z;
  return query.volume.mayMeet(Box3{at.x, at.x, at.y, at.y, z, z});
}

bool mayPickSpriteRectangle(const SpriteShape& shape, double pixelScale, double viewHeight,
                            const PickQuery& query) {
  const double pixel = pixelScale * query.pixelLength(viewHeight);
  if (query.isMoved) {
    return query.volume.mayMeet({shape.position.x, shape.position.y, 0},
                                aboutPosition(shape, pixel));
  }
  const auto [left, right, bottom, top] =
      rectangleOf(shape, pixel * signedUnit(query.volume, 0), pixel * signedUnit(query.volume, 1));
  return query.volume.mayMeet(Box3{std::min(left, right), std::max(left, right),
                                   std::min(bottom, top), std::max(bottom, top), 0, 0});
}

}  // namespace zyn
