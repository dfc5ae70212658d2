#include "view3d/CParamsVue3D.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/VectorMath.h"

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

Vecteur vectorAt(const CParamsVue3D::Frame& frame, std::size_t place) {
  return {frame[place], frame[place + 1], frame[place + 2]};
}

Point pointAt(const CParamsVue3D::Frame& frame, std::size_t place) {
  return {frame[place], frame[place + 1], frame[place + 2]};
}

/// `v` turned counterclockwise about `axis` (Rodrigues' rotation formula).
Vecteur rotated(const Vecteur& v, const Vecteur& axis, double degrees) {
  const double angle = degrees * std::numbers::pi / 180.0;
  const Vecteur k = normalised(axis);
  return std::cos(angle) * v + std::sin(angle) * cross(k, v) +
         ((1.0 - std::cos(angle)) * dot(k, v)) * k;
}

double atLeast(double minimum, double distance) { return minimum > distance ? minimum : distance; }

/// How far a box with these sizes reaches along a direction.
double extentAlong(const Vecteur& direction, const Vecteur& sizes) {
  return std::abs(direction.x) * sizes.x + std::abs(direction.y) * sizes.y +
         std::abs(direction.z) * sizes.z;
}

Orientation orientationOf(AxisView view) {
  const Vecteur x(1.0, 0.0, 0.0);
  const Vecteur y(0.0, 1.0, 0.0);
  const Vecteur z(0.0, 0.0, 1.0);
  switch (view) {
    case AxisView::kXYp:
      return {z, y};
    case AxisView::kXYm:
      return {-z, y};
    case AxisView::kXZp:
      return {y, z};
    case AxisView::kXZm:
      return {-y, z};
    case AxisView::kYZp:
      return {x, z};
    case AxisView::kYZm:
      break;
  }
  return {-x, z};
}

}  // namespace

CParamsVue3D::CParamsVue3D(const CParamsVue3D& other)
    : eye_(other.eye_),
      target_(other.target_),
      up_(other.up_),
      zNear_(other.zNear_),
      zFar_(other.zFar_),
      width_(other.width_),
      height_(other.height_),
      depth_(other.depth_),
      pixelWidth_(other.pixelWidth_),
      pixelHeight_(other.pixelHeight_) {
  frame();
}

Vecteur CParamsVue3D::direction() const { return normalised(target_ - eye_); }

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

void CParamsVue3D::fitAxis(AxisView view, const std::optional<Box3>& box, ClientSize client,
                           double surplus, double minimumDepth) {
  fitTurned(orientationOf(view), box, client, surplus, minimumDepth);
}

void CParamsVue3D::fitTurned(const Orientation& orientation, const std::optional<Box3>& box,
                             ClientSize client, double surplus, double minimumDepth) {
  const auto& [side, up] = orientation;
  storeClient(client);
  up_ = up;
  if (!box) {
    lookAtNothing(side);
    return;
  }
  const Vecteur sizes = box->extents();
  fitRectangle(extentAlong(cross(up, side), sizes), extentAlong(up, sizes), surplus,
               client.aspect());
  lookAt(box->centre(), side, atLeast(minimumDepth, 2.0 * box->halfDiagonal() * (1.0 + surplus)));
}

void CParamsVue3D::fitTurning(const std::optional<Box3>& box, ClientSize client, double surplus) {
  const Vecteur side(0.0, 1.0, 0.0);
  storeClient(client);
  up_ = Vecteur(1.0, 0.0, 0.0);
  if (!box) {
    lookAtNothing(side);
    return;
  }
  const Vecteur sizes = box->extents();
  fitRectangle(sizes.x, sizes.z, surplus, client.aspect());
  lookAt(box->centre(), side, 2.0 * box->halfDiagonal());
}

void CParamsVue3D::fitDefault(const std::optional<Box3>& box, ClientSize client, double surplus,
                              double minimumDepth) {
  const Vecteur side(1.0, 0.0, 0.0);
  storeClient(client);
  up_ = Vecteur(0.0, 0.0, 1.0);
  if (!box) {
    width_ = height_ = 0.0;
    lookAt(Point(), side, 0.0);
    return;
  }
  fitSphere((1.0 + surplus) * box->halfDiagonal(), client.aspect());
  lookAt(box->centre(), side, atLeast(minimumDepth, 2.0 * box->halfDiagonal()));
}

void CParamsVue3D::fitWhole(const Box3& box, ClientSize client, double surplus,
                            double minimumDepth) {
  const Vecteur side = -direction();
  const double aspect = width_ / height_;
  storeClient(client);
  fitSphere((1.0 + surplus) * box.halfDiagonal(), aspect);
  lookAt(box.centre(), side, depth_);
  depth_ = atLeast(minimumDepth, 2.0 * box.halfDiagonal());
}

void CParamsVue3D::fitDepth(const Box3& box, ClientSize client, double minimumDepth) {
  const double offCentre = (target_ - box.centre()).norm();
  storeClient(client);
  lookAt(target_, -direction(), atLeast(minimumDepth, 2.0 * (box.halfDiagonal() + offCentre)));
}

void CParamsVue3D::fitWindow(ClientSize client) {
  if (client.isEmpty()) {
    return;
  }
  const double aspect = client.aspect();
  if (aspect > width_ / height_) {
    width_ = aspect * height_;
  } else {
    height_ = width_ / aspect;
  }
  storeClient(client);
}

void CParamsVue3D::resize(ClientSize client) {
  if (client.isEmpty()) {
    return;
  }
  if (pixelWidth_ == 0 || pixelHeight_ == 0) {
    fitWindow(client);
    return;
  }
  width_ *= static_cast<double>(client.width) / pixelWidth_;
  height_ *= static_cast<double>(client.height) / pixelHeight_;
  storeClient(client);
}

void CParamsVue3D::adaptTo(ClientSize client) {
  if (client.isEmpty()) {
    return;
  }
  const float aspect = client.aspect();
  const float aspectBefore = static_cast<float>(pixelWidth_) / static_cast<float>(pixelHeight_);
  if (aspect > aspectBefore) {
    width_ = aspect * height_;
  } else {
    height_ = width_ / aspect;
  }
  storeClient(client);
}

void CParamsVue3D::zoom(double coefficient) {
  frame_.reset();
  width_ /= coefficient;
  height_ /= coefficient;
  const double shorter = std::min(width_, height_);
  if (shorter / 6.0 > zFar_ - zNear_) {
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
    eye_ = eye_ + shift;
    target_ = target_ + shift;
    frame_.reset();
  }
}

void CParamsVue3D::translateH(double distance) {
  const Vecteur left = normalised(cross(up_, direction()));
  eye_ = eye_ - distance * left;
  target_ = target_ - distance * left;
  backOff(2.0 * std::abs(distance));
}

void CParamsVue3D::translateV(double distance) {
  const Vecteur upwards = normalised(up_);
  eye_ = eye_ + distance * upwards;
  target_ = target_ + distance * upwards;
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

std::optional<Point> CParamsVue3D::pixelToPlane(int x, int y, const std::array<double, 4>& plane) {
  const Point start = pixelToWorld(x, y);
  const Vecteur sight = vectorAt(*frame_, kDirection);
  const Vecteur normal(plane[0], plane[1], plane[2]);
  const double slope = dot(normal, sight);
  if (!(std::abs(slope) > kParallel)) {
    return std::nullopt;
  }
  const double along = -(dot(normal, start - Point()) + plane[3]) / slope;
  return start + along * sight;
}

/// The start of every fit: what is cached about the old view goes.
void CParamsVue3D::storeClient(ClientSize client) {
  frame_.reset();
  pixelWidth_ = static_cast<std::uint32_t>(client.width);
  pixelHeight_ = static_cast<std::uint32_t>(client.height);
}

/// Near beyond far: nothing is drawn until there is a scene.
void CParamsVue3D::lookAtNothing(const Vecteur& side) {
  target_ = Point();
  eye_ = target_ + side;
  width_ = height_ = depth_ = 0.0;
  zNear_ = 1.5;
  zFar_ = 0.5;
}

void CParamsVue3D::lookAt(const Point& centre, const Vecteur& side, double distance) {
  target_ = centre;
  eye_ = centre + distance * side;
  depth_ = distance;
  setClipRange(distance);
}

void CParamsVue3D::fitRectangle(double horizontal, double vertical, double surplus, double aspect) {
  width_ = (1.0 + surplus) * horizontal;
  height_ = (1.0 + surplus) * vertical;
  if (horizontal == 0.0 && vertical == 0.0) {
    height_ = 1.0;
    width_ = 1.0 / aspect;
  } else if (vertical == 0.0 || (horizontal != 0.0 && width_ / height_ > aspect)) {
    height_ = width_ / aspect;
  } else {
    width_ = aspect * height_;
  }
}

/// The shorter side of the view rectangle holds the sphere.
void CParamsVue3D::fitSphere(double radius, double aspect) {
  if (aspect < 1.0) {
    width_ = 2.0 * radius;
    height_ = 2.0 * radius / aspect;
  } else {
    width_ = 2.0 * aspect * radius;
    height_ = 2.0 * radius;
  }
}

/// The range reaches 0.55 times the distance in front of and behind the target.
void CParamsVue3D::setClipRange(double distance) {
  zNear_ = distance * 0.9 * 0.5;
  zFar_ = distance * 3.1 * 0.5;
}

void CParamsVue3D::backOff(double distance) {
  const Vecteur forward = direction();
  frame_.reset();
  depth_ += distance;
  setClipRange(depth_);
  eye_ = eye_ - distance * forward;
}

}  // namespace zyn
