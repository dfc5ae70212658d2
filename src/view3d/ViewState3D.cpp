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
  if (camera_) {
    camera_->holdScene(measured_);
  }
  if (flight_) {
    flight_->adjust([this](CParamsVue3D& camera) { camera.holdScene(measured_); });
  }
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
  return adjust([&](CParamsVue3D& camera) { camera.resize(client); });
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

bool ViewState3D::turn(const std::optional<Point>& centre,
                       const std::function<void(CParamsVue3D&)>& apply) {
  return change([&](CParamsVue3D& camera) {
    if (centre) {
      camera.turnAbout(*centre, apply);
    } else {
      apply(camera);
    }
  });
}

bool ViewState3D::showCamera(const CameraValue& value) {
  if (!camera_) {
    camera_ = std::make_unique<CParamsVue3D>();
  } else {
    pushHistory();
  }
  return change([&](CParamsVue3D& camera) {
    camera.take(value);
    camera.growTo(client_);
  });
}

bool ViewState3D::zoomRectangle(double x1, double y1, double x2, double y2) {
  return changeWithHistory([&](CParamsVue3D& camera) { camera.showPart(client_, x1, y1, x2, y2); });
}

bool ViewState3D::zoomBox(const Box3& box, double surplus) {
  return changeWithHistory([&](CParamsVue3D& camera) { camera.showBox(box, surplus); });
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
  undone_.push_back(std::move(camera_));
  camera_.reset(history_.takeFirst());
  return adjust([&](CParamsVue3D& camera) { camera.adaptTo(client_); });
}

bool ViewState3D::nextView() {
  if (undone_.empty()) {
    return false;
  }
  pushHistory();
  camera_ = std::move(undone_.back());
  undone_.pop_back();
  return adjust([&](CParamsVue3D& camera) { camera.adaptTo(client_); });
}

bool ViewState3D::fitWindow() {
  return adjust([&](CParamsVue3D& camera) { camera.fitWindow(client_); });
}

bool ViewState3D::fly(double now, double duration, const std::function<bool()>& operation) {
  std::optional<CParamsVue3D> shown;
  if (camera_) {
    shown.emplace(*camera_);
  }
  const unsigned changes = changes_;
  const bool settled = settle();
  if (!operation()) {
    return settled;
  }
  const bool hasWay = shown && !(shown->value() == camera_->value()) && !faultOf(shown->value()) &&
                      !faultOf(camera_->value());
  if (!hasWay || !(duration > 0)) {
    ++arrivals_;
    return true;
  }
  flight_.emplace(*shown, *camera_, now, duration);
  camera_ = std::make_unique<CParamsVue3D>(*shown);
  noteCamera();
  changes_ = changes;
  return true;
}

bool ViewState3D::advance(double now) {
  if (!flight_) {
    return false;
  }
  camera_ = std::make_unique<CParamsVue3D>(flight_->cameraAt(now));
  if (flight_->isOver(now)) {
    stop();
  }
  noteCamera();
  return true;
}

bool ViewState3D::settle() {
  if (!flight_) {
    return false;
  }
  camera_ = std::make_unique<CParamsVue3D>(flight_->aim());
  stop();
  noteCamera();
  return true;
}

void ViewState3D::stop() {
  if (flight_) {
    flight_.reset();
    ++arrivals_;
  }
}

std::optional<Point> ViewState3D::pointBeside(PixelPoint pixel) {
  return camera_ ? std::optional(camera_->pixelToWorld(pixel.x, pixel.y)) : std::nullopt;
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
         adjust([&](CParamsVue3D& camera) { camera.fitDepth(*box, client_, drawingDepth_); });
}

/// Applies a move to the camera, if there is one, and keeps a copy of the result.
template <class Change>
bool ViewState3D::change(Change apply) {
  undone_.clear();
  return adjust(apply);
}

/// The same for what is no move, and applies to the ends of a flight as well.
template <class Change>
bool ViewState3D::adjust(Change apply) {
  if (!camera_) {
    return false;
  }
  const auto holdAndApply = [&](CParamsVue3D& camera) {
    camera.holdScene(measured_);
    apply(camera);
  };
  holdAndApply(*camera_);
  if (flight_) {
    flight_->adjust(holdAndApply);
  }
  noteCamera();
  return true;
}

/// The camera may have changed.
void ViewState3D::noteCamera() {
  auto copy = std::make_unique<CParamsVue3D>(*camera_);
  if (!lastParams_ || !(lastParams_->value() == copy->value())) {
    ++changes_;
  }
  lastParams_ = std::move(copy);
}

template <class Change>
bool ViewState3D::changeWithHistory(Change apply) {
  pushHistory();
  return change(apply);
}

}  // namespace zyn
