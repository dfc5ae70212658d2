#include "view3d/CParamsVue3D.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/VectorMath.h"

namespace zyn {

namespace {

/// By this part two sides may differ that were once related in single precision.
constexpr double kSinglePrecision = 1e-6;

double atLeast(double minimum, double distance) { return minimum > distance ? minimum : distance; }

/// How far a box with these sizes reaches along a direction.
double extentAlong(const Vecteur& direction, const Vecteur& sizes) {
  return std::abs(direction.x) * sizes.x + std::abs(direction.y) * sizes.y +
         std::abs(direction.z) * sizes.z;
}

std::array<Point, 8> cornersOf(const Box3& box) {
  std::array<Point, 8> corners;
  for (unsigned i = 0; i < corners.size(); ++i) {
    corners[i] = {(i & 1U) != 0 ? box.xMax : box.xMin, (i & 2U) != 0 ? box.yMax : box.yMin,
                  (i & 4U) != 0 ? box.zMax : box.zMin};
  }
  return corners;
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
      pixelHeight_(other.pixelHeight_),
      perspective_(other.perspective_),
      openingAngle_(other.openingAngle_),
      isFree_(other.isFree_),
      scene_(other.scene_) {
  frame();
}

CameraValue CParamsVue3D::value() const {
  return {eye_, target_, up_, width_, height_, perspective_, openingAngle_, depth_};
}

void CParamsVue3D::take(const CameraValue& value) {
  frame_.reset();
  eye_ = value.eye;
  target_ = value.target;
  up_ = value.up;
  width_ = value.width;
  height_ = value.height;
  perspective_ = value.perspective;
  openingAngle_ = value.openingAngle;
  depth_ = value.depth;
  setClipRange(depth_);
  isFree_ = true;
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
  makeRoomForBox(*box, surplus);
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
  makeRoomForBox(*box, surplus);
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
  makeRoomForSphere((1.0 + surplus) * box->halfDiagonal());
}

void CParamsVue3D::fitWhole(const Box3& box, ClientSize client, double surplus,
                            double minimumDepth) {
  const Vecteur side = -direction();
  const double aspect = width_ / height_;
  storeClient(client);
  fitSphere((1.0 + surplus) * box.halfDiagonal(), aspect);
  const double fitted = atLeast(minimumDepth, 2.0 * box.halfDiagonal());
  lookAt(box.centre(), side, isFree_ ? fitted : depth_);
  depth_ = fitted;
  makeRoomForSphere((1.0 + surplus) * box.halfDiagonal());
}

void CParamsVue3D::fitDepth(const Box3& box, ClientSize client, double minimumDepth) {
  const double offCentre = (target_ - box.centre()).norm();
  storeClient(client);
  if (isFree_ && scene_ == box) {
    return;  // which it holds
  }
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

void CParamsVue3D::growTo(ClientSize client) {
  if (client.isEmpty()) {
    return;
  }
  const double aspect = static_cast<double>(client.width) / client.height;
  const double stretch = aspect * height_ / width_;
  storeClient(client);
  if (stretch > 1.0 + kSinglePrecision) {
    width_ = aspect * height_;
  } else if (stretch < 1.0 - kSinglePrecision) {
    height_ = width_ / aspect;
  }
}

void CParamsVue3D::showPart(ClientSize client, double x1, double y1, double x2, double y2) {
  const Vecteur right = normalised(cross(direction(), up_));
  const double pixelWide = width_ / client.width;
  const double pixelHigh = height_ / client.height;
  moveBy((pixelWide * ((x1 + x2 - client.width) / 2)) * right +
         (pixelHigh * ((client.height - y1 - y2) / 2)) * cross(right, direction()));
  width_ = pixelWide * std::abs(x2 - x1);
  height_ = pixelHigh * std::abs(y2 - y1);
  growTo(client);
}

void CParamsVue3D::showBox(const Box3& box, double surplus) {
  const Vecteur sizes = box.extents();
  const Vecteur right = normalised(cross(direction(), up_));
  const double horizontal = extentAlong(right, sizes);
  const double vertical = extentAlong(cross(right, direction()), sizes);
  moveBy(box.centre() - target_);
  if (horizontal > 0.0 || vertical > 0.0) {
    fitRectangle(horizontal, vertical, surplus, width_ / height_);
    makeRoomForBox(box, surplus);
  }
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
  eye_ = centre + (isFree_ && distance == 0.0 ? 1.0 : distance) * side;
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

/// With perspective, moves the drawn eye at least so far away, which enlarges the view rectangle.
void CParamsVue3D::makeRoom(double distance) {
  const double factor = distance / viewDistance();
  if (perspective_ && factor > 1.0 && std::isfinite(factor)) {
    width_ *= factor;
    height_ *= factor;
  }
}

/// For a sphere around the target.
void CParamsVue3D::makeRoomForSphere(double radius) {
  const double upwards = std::atan2(height_ / 2, viewDistance());
  const double sideways = std::atan2(width_ / 2, viewDistance());
  makeRoom(radius / std::sin(std::min(upwards, sideways)));
}

/// For a box around the target, enlarged by the surplus.
void CParamsVue3D::makeRoomForBox(const Box3& box, double surplus) {
  const Vecteur forward = direction();
  const Vecteur right = normalised(cross(forward, up_));
  const Vecteur upwards = cross(right, forward);
  const double distance = viewDistance();
  double needed = 0.0;
  for (const Point& corner : cornersOf(box)) {
    const Vecteur offset = (1.0 + surplus) * (corner - target_);
    const double across = std::max(2 * std::abs(dot(offset, right)) / width_,
                                   2 * std::abs(dot(offset, upwards)) / height_);
    needed = std::max(needed, across * distance - dot(offset, forward));
  }
  makeRoom(needed);
}

/// The range reaches 0.55 times the distance in front of and behind the target.
void CParamsVue3D::setClipRange(double distance) {
  zNear_ = distance * 0.9 * 0.5;
  zFar_ = distance * 3.1 * 0.5;
}

}  // namespace zyn
