#include "zynshot/Frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zyn::shot {

namespace {

using host::Vector;

/// Length of a box's shadow along a direction.
double extentAlong(const Vector& direction, const Vector& sizes) {
  return std::abs(direction.x) * sizes.x + std::abs(direction.y) * sizes.y +
         std::abs(direction.z) * sizes.z;
}

}  // namespace

Frame::Frame(const host::Bounds& bounds, const View& view, int width, int height, double surplus)
    : centre_(bounds.centre()),
      right_(cross(view.direction, view.up)),
      up_(view.up),
      width_(width),
      height_(height),
      pixel_((1.0 + surplus) * std::max(extentAlong(right_, bounds.extents()) / width,
                                        extentAlong(up_, bounds.extents()) / height)) {}

Frame::Frame(const Vector& centre, const View& view, int width, int height, double pixel)
    : centre_(centre),
      right_(cross(view.direction, view.up)),
      up_(view.up),
      width_(width),
      height_(height),
      pixel_(pixel) {}

Frame Frame::inPerspective(const host::Bounds& bounds, double angle) const {
  const double depth = extentAlong(cross(up_, right_), bounds.extents());
  Frame larger = *this;
  larger.pixel_ += depth * std::tan(angle * std::numbers::pi / 360) / height_;
  return larger;
}

Vector Frame::at(double x, double y) const {
  return centre_ + right_ * ((x - width_ / 2) * pixel_) + up_ * ((y - height_ / 2) * pixel_);
}

Frame::Screen Frame::onScreen(const Vector& direction) const {
  return {dot(direction, right_), dot(direction, up_)};
}

}  // namespace zyn::shot
