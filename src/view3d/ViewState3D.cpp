#include "view3d/ViewState3D.h"

#include <algorithm>

namespace zyn {

ViewState3D::~ViewState3D() {
  while (history_.head()) {
    const std::unique_ptr<CParamsVue3D> entry(history_.takeFirst());
  }
}

bool ViewState3D::showAxis(AxisView view, double surplus) {
  return changeWithHistory([&](CParamsVue3D& camera) {
    camera.fitAxis(view, sceneBox_, client_, surplus, drawingDepth_);
  });
}

bool ViewState3D::vueTournage(double surplus) {
  return changeWithHistory(
      [&](CParamsVue3D& camera) { camera.fitTurning(sceneBox_, client_, surplus); });
}

bool ViewState3D::initView(double surplus, const BoxSource& boxSource) {
  if (!prepareFit(boxSource)) {
    return false;
  }
  if (!camera_) {
    camera_ = std::make_unique<CParamsVue3D>();
  } else {
    pushHistory();
  }
  return change(
      [&](CParamsVue3D& camera) { camera.fitDefault(sceneBox_, client_, surplus, drawingDepth_); });
}

bool ViewState3D::zoomTotal(double surplus, const BoxSource& boxSource) {
  if (!prepareFit(boxSource) || !sceneBox_) {
    return false;
  }
  if (!camera_) {
    return initView(surplus, boxSource);
  }
  return changeWithHistory(
      [&](CParamsVue3D& camera) { camera.fitWhole(*sceneBox_, client_, surplus, drawingDepth_); });
}

bool ViewState3D::updateParams(const BoxSource& boxSource) {
  if (!camera_) {
    return false;
  }
  sceneBox_ = boxSource();
  return fitDepth();
}

bool ViewState3D::setViewBox(const Box3& box) {
  if (!camera_) {
    return false;
  }
  sceneBox_ = box;
  return fitDepth();
}

bool ViewState3D::translateH(double distance) {
  return change([&](CParamsVue3D& camera) { camera.translateH(distance); });
}

bool ViewState3D::translateV(double distance) {
  return change([&](CParamsVue3D& camera) { camera.translateV(distance); });
}

bool ViewState3D::translateP(double distance) {
  return change([&](CParamsVue3D& camera) { camera.translateP(distance); });
}

bool ViewState3D::zoom(double coefficient) {
  return changeWithHistory([&](CParamsVue3D& camera) { camera.zoom(coefficient); });
}

bool ViewState3D::zoomAbout(int x, int y, double coefficient) {
  return change([&](CParamsVue3D& camera) { camera.zoomAbout(x, y, coefficient); });
}

bool ViewState3D::resize(ClientSize client) {
  client_ = client;
  return change([&](CParamsVue3D& camera) { camera.resize(client); });
}

bool ViewState3D::rotateA(double degrees) {
  return change([&](CParamsVue3D& camera) { camera.rotateA(degrees); });
}

bool ViewState3D::rotateH(double degrees) {
  return change([&](CParamsVue3D& camera) { camera.rotateH(degrees); });
}

bool ViewState3D::rotateV(double degrees) {
  return change([&](CParamsVue3D& camera) { camera.rotateV(degrees); });
}

void ViewState3D::pushHistory() {
  if (camera_) {
    auto entry = std::make_unique<CParamsVue3D>(*camera_);
    history_.prepend(entry.get());
    static_cast<void>(entry.release());
  }
}

bool ViewState3D::lastView() {
  if (!history_.head()) {
    return false;
  }
  camera_.reset(history_.takeFirst());
  return change([&](CParamsVue3D& camera) { camera.adaptTo(client_); });
}

bool ViewState3D::fitWindow() {
  return change([&](CParamsVue3D& camera) { camera.fitWindow(client_); });
}

double ViewState3D::getWindowScale() const {
  return camera_ ? camera_->width() / client_.width : 0.0;
}

std::optional<CParamsVue3D::Frame> ViewState3D::xFormView() {
  return camera_ ? std::optional(camera_->frame()) : std::nullopt;
}

std::optional<Point> ViewState3D::getPixelPlanIntersection(int x, int y,
                                                           std::span<const double> plane) {
  std::array<double, 4> coefficients{};
  if (!camera_ || plane.size() != coefficients.size()) {
    return std::nullopt;
  }
  std::ranges::copy(plane, coefficients.begin());
  return camera_->pixelToPlane(x, y, coefficients);
}

/// Makes sure of a client area and looks for a scene box. The source may have changed either
/// meanwhile.
bool ViewState3D::prepareFit(const BoxSource& boxSource) {
  if (client_.isEmpty()) {
    return false;
  }
  if (!sceneBox_) {
    sceneBox_ = boxSource();
  }
  return !client_.isEmpty();
}

bool ViewState3D::fitDepth() {
  if (!sceneBox_) {
    return false;
  }
  return change([&](CParamsVue3D& camera) { camera.fitDepth(*sceneBox_, client_, drawingDepth_); });
}

/// Applies a change to the camera, if there is one, and keeps a copy of the result.
template <class Change>
bool ViewState3D::change(Change apply) {
  if (!camera_) {
    return false;
  }
  apply(*camera_);
  lastParams_ = std::make_unique<CParamsVue3D>(*camera_);
  return true;
}

template <class Change>
bool ViewState3D::changeWithHistory(Change apply) {
  pushHistory();
  return change(apply);
}

}  // namespace zyn
