#include "view3d/ViewState3D.h"

#include <algorithm>
#include <utility>

namespace zyn {

ViewState3D::~ViewState3D() {
  while (history_.head()) {
    const std::unique_ptr<CParamsVue3D> entry(history_.takeFirst());
  }
}

std::optional<Box3> ViewState3D::sceneBox() const {
  const BoxSource viewBox = viewBox_;  // what is asked may replace it
  return viewBox ? viewBox() : measured_;
}

void ViewState3D::setSceneBox(const std::optional<Box3>& measured) {
  measured_ = measured;
  const BoxSource released = std::exchange(viewBox_, nullptr);
}

bool ViewState3D::showAxis(AxisView view, double surplus) {
  const auto box = sceneBox();
  return changeWithHistory(
      [&](CParamsVue3D& camera) { camera.fitAxis(view, box, client_, surplus, drawingDepth_); });
}

bool ViewState3D::vueTournage(double surplus) {
  const auto box = sceneBox();
  return changeWithHistory([&](CParamsVue3D& camera) { camera.fitTurning(box, client_, surplus); });
}

bool ViewState3D::initView(double surplus, const BoxSource& measureScene) {
  return rebuildSceneBox(measureScene) && fitDefault(surplus);
}

bool ViewState3D::zoomTotal(double surplus, const BoxSource& measureScene) {
  if (!rebuildSceneBox(measureScene) || !measured_) {
    return false;
  }
  if (!camera_) {
    return fitDefault(surplus);
  }
  return changeWithHistory(
      [&](CParamsVue3D& camera) { camera.fitWhole(*measured_, client_, surplus, drawingDepth_); });
}

bool ViewState3D::updateParams(const BoxSource& measureScene) {
  if (!camera_) {
    return false;
  }
  setSceneBox(measureScene());
  return fitDepth(measured_);
}

bool ViewState3D::setViewBox(BoxSource viewBox) {
  if (!camera_) {
    return false;
  }
  const auto box = viewBox();
  viewBox_.swap(viewBox);
  return fitDepth(box);
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

/// False without a client area, also where that goes while the scene is measured.
bool ViewState3D::rebuildSceneBox(const BoxSource& measureScene) {
  if (client_.isEmpty()) {
    return false;
  }
  setSceneBox(measureScene());
  return !client_.isEmpty();
}

bool ViewState3D::fitDefault(double surplus) {
  if (!camera_) {
    camera_ = std::make_unique<CParamsVue3D>();
  } else {
    pushHistory();
  }
  return change(
      [&](CParamsVue3D& camera) { camera.fitDefault(measured_, client_, surplus, drawingDepth_); });
}

bool ViewState3D::fitDepth(const std::optional<Box3>& box) {
  return box &&
         change([&](CParamsVue3D& camera) { camera.fitDepth(*box, client_, drawingDepth_); });
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
