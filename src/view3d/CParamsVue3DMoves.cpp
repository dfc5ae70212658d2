#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/VectorMath.h"
#include "view3d/CParamsVue3D.h"

// How a camera moves: zooms, pans and turns.

namespace zyn {

namespace {

/// From the up direction and from its opposite, a table turns as near as this, in degrees.
constexpr double kFromPole = 1.0;

/// The size of a ball that is turned by the mouse, in parts of the view's shorter side.
constexpr double kBallRadius = 0.45;

double degreesOf(double angle) { return angle * 180.0 / std::numbers::pi; }

/// `v` turned counterclockwise about `axis` (Rodrigues' rotation formula).
Vecteur rotated(const Vecteur& v, const Vecteur& axis, double degrees) {
  const double angle = degrees * std::numbers::pi / 180.0;
  const Vecteur k = normalised(axis);
  return std::cos(angle) * v + std::sin(angle) * cross(k, v) +
         ((1.0 - std::cos(angle)) * dot(k, v)) * k;
}

/// The direction from the middle of a ball to its place under a pixel: right, up, towards the
/// viewer. Outside of the ball it goes on as a hyperbola.
Vecteur ballPoint(PixelPoint pixel, ClientSize client) {
  const double radius = kBallRadius * std::min(client.width, client.height);
  const double x = (pixel.x + 0.5 - client.width / 2.0) / radius;
  const double y = (client.height / 2.0 - pixel.y - 0.5) / radius;
  const double square = x * x + y * y;
  const double z = square < 0.5 ? std::sqrt(1.0 - square) : 0.5 / std::sqrt(square);
  return normalised({x, y, z});
}

}  // namespace

void CParamsVue3D::zoom(double coefficient) {
  frame_.reset();
  width_ /= coefficient;
  height_ /= coefficient;
  const double shorter = std::min(width_, height_);
  if (!isFree_ && shorter / 6.0 > zFar_ - zNear_) {
    const double distance = shorter / 12.0;
    eye_ = target_ + (2.0 * distance) * normalised(eye_ - target_);
    zNear_ = 0.9 * distance;
    zFar_ = 3.1 * distance;
  }
}

void CParamsVue3D::zoomAbout(int x, int y, double coefficient) {
  const Point before = pixelToWorld(x, y);
  zoom(coefficient);
  const Vecteur shift = before - pixelToWorld(x, y);
  if (std::isfinite(shift.norm())) {
    moveBy(shift);
  }
}

void CParamsVue3D::translateH(double distance) {
  const Vecteur left = normalised(cross(up_, direction()));
  eye_ = eye_ - distance * left;
  target_ = target_ - distance * left;
  backOff(2.0 * std::abs(distance));
}

void CParamsVue3D::translateV(double distance) {
  const Vecteur shift = distance * upwards();
  eye_ = eye_ + shift;
  target_ = target_ + shift;
  backOff(2.0 * std::abs(distance));
}

void CParamsVue3D::translateP(double distance) {
  const Vecteur forward = direction();
  frame_.reset();
  eye_ = eye_ + distance * forward;
  target_ = target_ + distance * forward;
}

void CParamsVue3D::rotateA(double degrees) {
  frame_.reset();
  up_ = rotated(up_, target_ - eye_, degrees);
}

void CParamsVue3D::rotateH(double degrees) {
  frame_.reset();
  eye_ = target_ + rotated(eye_ - target_, up_, degrees);
}

void CParamsVue3D::rotateV(double degrees) {
  const Vecteur sight = target_ - eye_;
  const Vecteur axis = cross(sight, up_);
  frame_.reset();
  eye_ = target_ - rotated(sight, axis, degrees);
  up_ = rotated(up_, axis, degrees);
}

void CParamsVue3D::turnTable(double degrees, double tilt) {
  isFree_ = true;
  frame_.reset();
  const Vecteur back = rotated(eye_ - target_, up_, degrees);
  const Vecteur upwards = normalised(up_);
  const double height = dot(normalised(back), upwards);
  const double fromUp = degreesOf(std::acos(std::clamp(height, -1.0, 1.0)));
  const double wanted = std::clamp(fromUp + tilt, kFromPole, 180.0 - kFromPole);
  eye_ = target_ + rotated(back, cross(back, upwards), fromUp - wanted);
}

void CParamsVue3D::turnBall(PixelPoint from, PixelPoint to, ClientSize client) {
  const Vecteur a = ballPoint(from, client);
  const Vecteur b = ballPoint(to, client);
  const Vecteur axis = cross(b, a);  // the camera turns against the ball
  if (client.isEmpty() || !(axis.norm() > 0.0)) {
    return;
  }
  const double angle = degreesOf(std::atan2(axis.norm(), dot(a, b)));
  const Vecteur back = -direction();
  const Vecteur right = normalised(cross(up_, back));
  const Vecteur inSpace = axis.x * right + axis.y * cross(back, right) + axis.z * back;
  frame_.reset();
  eye_ = target_ + rotated(eye_ - target_, inSpace, angle);
  up_ = rotated(up_, inSpace, angle);
}

void CParamsVue3D::backOff(double distance) {
  frame_.reset();
  if (isFree_) {
    return;  // its depth range holds the scene wherever it goes
  }
  const Vecteur forward = direction();
  depth_ += distance;
  setClipRange(depth_);
  eye_ = eye_ - distance * forward;
}

/// The direction in which translateV goes.
Vecteur CParamsVue3D::upwards() const {
  return isFree_ ? normalised(cross(cross(direction(), up_), direction())) : normalised(up_);
}

/// How far to the right, upwards and away a point is seen from the target.
Vecteur CParamsVue3D::seenFromTarget(const Point& point) const {
  const Vecteur away = direction();
  const Vecteur right = normalised(cross(away, up_));
  const Vecteur offset = point - target_;
  return {dot(offset, right), dot(offset, cross(right, away)), dot(offset, away)};
}

/// So that `centre` is seen so far from the target.
void CParamsVue3D::moveBy(const Vecteur& seen, const Point& centre) {
  const Vecteur away = direction();
  const Vecteur right = normalised(cross(away, up_));
  moveBy(centre - (target_ + seen.x * right + seen.y * cross(right, away) + seen.z * away));
}

void CParamsVue3D::moveBy(const Vecteur& shift) {
  frame_.reset();
  eye_ = eye_ + shift;
  target_ = target_ + shift;
}

}  // namespace zyn
