#include "objects/picture/SpritePick_gl.h"

#include <algorithm>

namespace zyn {

namespace {

/// Model units along an axis for one of the eye's space, against its direction where it points the
/// other way.
double signedUnit(const PickVolume& volume, std::size_t axis) {
  const double unit = 1 / volume.axisLength(axis);
  return volume.isAxisReversed(axis) ? -unit : unit;
}

}  // namespace

bool mayPickSprite(const SpriteShape& shape, const PickQuery& query) {
  const Point& at = shape.position;
  const double z = query.isFlat ? 0.0 : at.z;
  return query.volume.mayMeet(Box3{at.x, at.x, at.y, at.y, z, z});
}

bool mayPickSpriteRectangle(const SpriteShape& shape, double pixelScale, double viewHeight,
                            const PickQuery& query) {
  const double pixel = pixelScale * query.pixelLength(viewHeight);
  const double stepX = pixel * signedUnit(query.volume, 0);
  const double stepY = pixel * signedUnit(query.volume, 1);
  const double left = shape.position.x - stepX * shape.originX;
  const double bottom = shape.position.y - stepY * shape.originY;
  const double right = left + stepX * shape.image->width;
  const double top = bottom + stepY * shape.image->height;
  return query.volume.mayMeet(Box3{std::min(left, right), std::max(left, right),
                                   std::min(bottom, top), std::max(bottom, top), 0, 0});
}

}  // namespace zyn
