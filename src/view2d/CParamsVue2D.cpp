#include "view2d/CParamsVue2D.h"

#include <cmath>

namespace zyn {

namespace {

double aspectOf(ClientSize client) { return static_cast<double>(client.width) / client.height; }

}  // namespace

bool CParamsVue2D::showsAnything() const {
  return std::isfinite(centreX_) && std::isfinite(centreY_) && std::isfinite(width_) &&
         std::isfinite(height_) && width_ != 0.0 && height_ != 0.0;
}

Rect2 CParamsVue2D::bounds() const {
  return {centreX_ - width_ / 2, centreX_ + width_ / 2, centreY_ - height_ / 2,
          centreY_ + height_ / 2};
}

void CParamsVue2D::fit(const Target& target, ClientSize client, float surplus) {
  const double factor = 1.0F + surplus;
  width_ = target.width * factor;
  height_ = target.height * factor;
  if (!client.isEmpty()) {
    const double aspect = aspectOf(client);
    if (target.width == 0.0 && target.height == 0.0) {
      width_ = 2.0 / aspect;
      height_ = 2.0;
    } else if (target.height == 0.0 || (target.width != 0.0 && width_ / height_ > aspect)) {
      height_ = width_ / aspect;
    } else {
      width_ = height_ * aspect;
    }
  }
  halfHeight_ = height_ * 0.5;
  moveTo((target.bounds.xMin + target.bounds.xMax) * 0.5,
         (target.bounds.yMin + target.bounds.yMax) * 0.5);
}

void CParamsVue2D::setHalfHeight(double halfHeight, ClientSize client) {
  halfHeight_ = halfHeight;
  width_ = 2.0 * halfHeight * client.width / client.height;
  height_ = 2.0 * halfHeight;
}

void CParamsVue2D::moveTo(double centreX, double centreY) {
  centreX_ = centreX;
  centreY_ = centreY;
}

}  // namespace zyn
