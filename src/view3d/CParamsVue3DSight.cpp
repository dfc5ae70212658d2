#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/VectorMath.h"
#include "view3d/CParamsVue3D.h"

// What a camera sees: where it draws from, how deep, and what lies under a pixel.

namespace zyn {

namespace {

/// Places within the frame.
constexpr std::size_t kAxisA = 0;
constexpr std::size_t kAxisB = 3;
constexpr std::size_t kDirection = 6;
constexpr std::size_t kCorner = 9;
constexpr std::size_t kPixelSize = 12;

/// Lines of sight closer to a plane than this are parallel to it.
constexpr double kParallel = 1e-8;

/// The clipping planes keep this part of the scene's depth away from it.
constexpr double kMargin = 1e-3;

/// Distance of the near clipping plane at least where the scene reaches to the eye or behind it:
/// in parts of the target's distance, and of the far plane's as long as that is far from the
/// target's. Depth buffers of 24 bits then tell apart what anybody could.
constexpr double kNearest = 1e-3;
constexpr double kNearestPerFarthest = 1e-5;
constexpr double kNearestAtMost = 0.1;

Vecteur vectorAt(const CParamsVue3D::Frame& frame, std::size_t place) {
  return {frame[place], frame[place + 1], frame[place + 2]};
}

Point pointAt(const CParamsVue3D::Frame& frame, std::size_t place) {
  return {frame[place], frame[place + 1], frame[place + 2]};
}

/// Without perspective the eye is drawn from no farther than so many times the depth of what is
/// seen: OpenGL calculates in single precision.
constexpr double kFarEye = 100.0;

double tangentOfHalf(double degrees) { return std::tan(degrees * std::numbers::pi / 360.0); }

/// How far behind a point a box reaches along a direction.
double reachAlong(const Vecteur& direction, const Box3& box, const Point& from) {
  const Vecteur sizes = box.extents();
  return dot(direction, box.centre() - from) +
         (std::abs(direction.x) * sizes.x + std::abs(direction.y) * sizes.y +
          std::abs(direction.z) * sizes.z) /
             2;
}

}  // namespace

Vecteur CParamsVue3D::direction() const { return normalised(target_ - eye_); }

double CParamsVue3D::viewDistance() const { return height_ / 2 / tangentOfHalf(openingAngle_); }

double CParamsVue3D::shownHeight() const {
  return perspective_ ? 2 * tangentOfHalf(openingAngle_) : height_;
}

Point CParamsVue3D::drawnEye() const {
  return isFree_ ? target_ - drawnDistance() * direction() : eye_;
}

double CParamsVue3D::drawnDistance() const {
  if (isFree_ && perspective_) {
    return viewDistance();
  }
  const double distance = (eye_ - target_).norm();
  const auto [front, back] = reach();
  return isFree_ ? std::min(distance, kFarEye * (front + back)) : distance;
}

CParamsVue3D::Reach CParamsVue3D::reach() const {
  const Vecteur forward = direction();
  Reach reach;
  reach.front = reach.back = std::max({0.55 * depth_, width_ / 2, height_ / 2});
  if (scene_) {
    reach.front = std::max(reach.front, reachAlong(-forward, *scene_, target_));
    reach.back = std::max(reach.back, reachAlong(forward, *scene_, target_));
  }
  return reach;
}

CParamsVue3D::DepthRange CParamsVue3D::drawnRange() const {
  if (!isFree_) {
    return {zNear_, zFar_};
  }
  const auto [front, back] = reach();
  const double margin = kMargin * (front + back);
  const double target = drawnDistance();
  DepthRange range{target - front - margin, target + back + margin};
  if (perspective_) {
    const double perFarthest = std::min(kNearestPerFarthest * range.zFar, kNearestAtMost * target);
    range.zNear = std::max({range.zNear, kNearest * target, perFarthest});
  }
  return range;
}

const CParamsVue3D::Frame& CParamsVue3D::frame() {
  if (!frame_) {
    const Vecteur d = direction();
    const Vecteur a = normalised(cross(normalised(up_), d));
    const Vecteur b = cross(d, a);
    const Point corner = target_ - (width_ / 2) * a - (height_ / 2) * b;
    const double pixelSize = width_ / pixelWidth_;
    frame_ =
        Frame{a.x, a.y, a.z, b.x, b.y, b.z, d.x, d.y, d.z, corner.x, corner.y, corner.z, pixelSize};
  }
  return *frame_;
}

Point CParamsVue3D::pixelToWorld(int x, int y) {
  frame();
  double& pixelSize = (*frame_)[kPixelSize];
  if (pixelSize == 0.0) {
    pixelSize = 1.0;
  }
  // The projection stretches the rectangle over the window, so a pixel is as high as the heights
  // say.
  const double pixelHigh = height_ == 0.0 ? pixelSize : height_ / pixelHeight_;
  const double fromRight = pixelWidth_ - (x + 0.5);
  const double fromBottom = pixelHeight_ - (y + 0.5);
  return pointAt(*frame_, kCorner) + (fromRight * pixelSize) * vectorAt(*frame_, kAxisA) +
         (fromBottom * pixelHigh) * vectorAt(*frame_, kAxisB);
}

/// From the point beside the target, or from the eye of a perspective.
Ray CParamsVue3D::rayThrough(int x, int y) {
  const Point seen = pixelToWorld(x, y);
  if (!perspective_) {
    return Ray{seen, vectorAt(*frame_, kDirection)};
  }
  const Point eye = drawnEye();
  return Ray{eye, normalised(seen - eye)};
}

LineOfSight CParamsVue3D::sightThrough(int x, int y) {
  const auto [zNear, zFar] = drawnRange();
  const Ray ray = rayThrough(x, y);
  const double slant = dot(ray.direction, vectorAt(*frame_, kDirection));
  const double start = perspective_ ? zNear / slant : zNear - drawnDistance();
  return {Ray{ray.at(start), ray.direction}, (zFar - zNear) / slant};
}

std::optional<Point> CParamsVue3D::pixelToPlane(int x, int y, const std::array<double, 4>& plane) {
  const Ray ray = rayThrough(x, y);
  const Vecteur normal(plane[0], plane[1], plane[2]);
  const double slope = dot(normal, ray.direction);
  if (!(std::abs(slope) > kParallel)) {
    return std::nullopt;
  }
  const double along = -(dot(normal, ray.origin - Point()) + plane[3]) / slope;
  if (perspective_ && along <= 0.0) {
    return std::nullopt;
  }
  return ray.origin + along * ray.direction;
}

}  // namespace zyn
