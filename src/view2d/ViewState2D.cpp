#include "view2d/ViewState2D.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/saturate.h"

namespace zyn {

namespace {

/// Margins of views that the library chooses.
constexpr float kObjectMargin = 0.1F;
constexpr double kGraphMargin = 0.2;

/// The least part of a view that one turn of the wheel leaves, whatever its acceleration.
constexpr double kLeastZoom = 1.0 / 64;

int roundedPixel(double value) {
  return saturatedInteger(value > 0 ? std::floor(value + 0.5) : std::floor(value - 0.5));
}

float ratio(int part, int whole) { return static_cast<float>(part) / static_cast<float>(whole); }

Rect2 withGraphMargin(const Rect2& range) {
  const double x = kGraphMargin * range.width();
  const double y = kGraphMargin * range.height();
  return {range.xMin - x, range.xMax + x, range.yMin - y, range.yMax + y};
}

Rect2 scaled(const Rect2& range, double x, double y) {
  return {range.xMin * x, range.xMax * x, range.yMin * y, range.yMax * y};
}

bool canScale(double scale) { return std::isfinite(scale) && scale != 0.0; }

}  // namespace

ViewState2D::~ViewState2D() { clearHistory(); }

void ViewState2D::resize(ClientSize client) {
  client_ = client;
  if (client.isEmpty()) {
    return;
  }
  current_->fit(visible_, client, 0.0F);
  if (homeIsUnfitted_) {
    fitHomeTo(home_->bounds(), 0.0F);
  }
}

void ViewState2D::fitHome(const std::optional<Rect2>& objects) {
  if (objects && !hasGraph_) {
    fitHomeTo(scaled(*objects, xScale_, yScale_).ordered(), kObjectMargin);
  }
}

void ViewState2D::initView() {
  *current_ = *home_;
  rememberVisible();
}

bool ViewState2D::lastView() {
  if (!history_.head()) {
    return false;
  }
  current_.reset(history_.takeFirst());
  return true;
}

void ViewState2D::view(const CParamsVue2D::Target& target, double surplus) {
  pushHistory();
  current_->fit(target, client_, saturatedFloat(surplus));
  rememberVisible();
}

void ViewState2D::viewRect(const Rect2& rectangle) {
  current_->fit(rectangle, client_, kObjectMargin);
  if (client_.isEmpty()) {
    rememberVisible();
  }
}

void ViewState2D::showGraph(const Rect2& range, double xScale, double yScale) {
  xScale_ = xScale;
  yScale_ = yScale;
  clearHistory();
  hasGraph_ = true;
  fitHomeTo(scaled(withGraphMargin(range), xScale, yScale).ordered(), 0.0F);
  *current_ = *home_;
  rememberVisible();
}

std::optional<GraphPlacement> ViewState2D::graphPlacement(ClientSize client,
                                                          double pixelScale) const {
  if (!hasGraph_ || client.isEmpty() || !home_->showsAnything() || !canScale(xScale_) ||
      !canScale(yScale_)) {
    return std::nullopt;
  }
  CParamsVue2D home(*home_);
  home.fit(home.bounds(), client, 0.0F);
  return GraphPlacement{scaled(home.bounds(), 1.0 / xScale_, 1.0 / yScale_),
                        pixelScale * home.width() / client.width / xScale_,
                        pixelScale * home.height() / client.height / yScale_, pixelScale};
}

void ViewState2D::pushHistory() {
  auto entry = std::make_unique<CParamsVue2D>(*current_);
  history_.prepend(entry.get());
  static_cast<void>(entry.release());
}

bool ViewState2D::turnWheel(PixelPoint mouse, int delta, const Wheel& wheel) {
  if (!canMap()) {
    return false;
  }
  const double x = plottingX(mouse.x);
  const double y = plottingY(mouse.y);
  const double before = current_->halfHeight();
  const double change = wheel.turned(delta) / (2.0 * client_.height) * before * 0.5;
  const double halfHeight =
      change / before > kLeastZoom - 1 ? before + change : before * kLeastZoom;

  CParamsVue2D zoomed(*current_);
  zoomed.setHalfHeight(halfHeight, client_);
  zoomed.moveTo(x - ratio(mouse.x, client_.width) * zoomed.width() + zoomed.width() * 0.5,
                ratio(mouse.y, client_.height) * zoomed.height() + y - zoomed.height() * 0.5);
  if (!zoomed.showsAnything()) {
    return false;
  }
  *current_ = zoomed;
  return true;
}

bool ViewState2D::pan(int right, int down) {
  if (!canMap()) {
    return false;
  }
  const double dx = static_cast<double>(right) / client_.width * current_->width();
  const double dy = static_cast<double>(down) / client_.height * current_->height();
  current_->moveTo(current_->centreX() - dx, current_->centreY() + dy);
  rememberVisible();
  return true;
}

bool ViewState2D::zoomTo(const RubberBand& band) {
  const double columns = std::abs(static_cast<double>(band.current.x) - band.press.x);
  const double rows = std::abs(static_cast<double>(band.current.y) - band.press.y);
  if (!canMap() || columns < 1 || rows < 1) {
    return false;
  }
  const double halfWidth = columns / client_.width * current_->width() / 2;
  const double halfHeight = rows / client_.height * current_->height() / 2;
  const double x = plottingX((static_cast<double>(band.press.x) + band.current.x) / 2);
  const double y = plottingY((static_cast<double>(band.press.y) + band.current.y) / 2);
  view({{x - halfWidth, x + halfWidth, y - halfHeight, y + halfHeight},
        2 * halfWidth,
        2 * halfHeight},
       0.0);
  return true;
}

PixelPoint ViewState2D::getPixelPoint(double x, double y) const {
  const double left = current_->centreX() - current_->width() / 2;
  const double top = current_->height() / 2 + current_->centreY();
  return {roundedPixel((x * xScale_ - left) / current_->width() * client_.width),
          roundedPixel(-((y * yScale_ - top) / current_->height()) * client_.height)};
}

Point ViewState2D::getPoint(PixelPoint pixel) const {
  return {plottingX(pixel.x) / xScale_, plottingY(pixel.y) / yScale_, 0.0};
}

Rect2 ViewState2D::getRectangle(const RubberBand& band) const {
  const Point press = getPoint(band.press);
  const Point current = getPoint(band.current);
  return Rect2{press.x, current.x, press.y, current.y}.ordered();
}

double ViewState2D::pixelSize() const {
  return client_.isEmpty() ? 0.0 : current_->height() / client_.height;
}

std::array<double, 7> ViewState2D::params() const {
  return {static_cast<double>(client_.width),
          static_cast<double>(client_.height),
          current_->width(),
          current_->height(),
          current_->halfHeight(),
          current_->centreX(),
          current_->centreY()};
}

bool ViewState2D::canMap() const { return !client_.isEmpty() && current_->showsAnything(); }

double ViewState2D::plottingX(double column) const {
  return (column - client_.width / 2.0) / client_.width * current_->width() + current_->centreX();
}

double ViewState2D::plottingY(double row) const {
  return current_->centreY() - (row - client_.height / 2.0) / client_.height * current_->height();
}

void ViewState2D::fitHomeTo(const Rect2& rectangle, float surplus) {
  home_->fit(rectangle, client_, surplus);
  homeIsUnfitted_ = client_.isEmpty();
}

void ViewState2D::clearHistory() {
  while (history_.head()) {
    const std::unique_ptr<CParamsVue2D> entry(history_.takeFirst());
  }
}

void ViewState2D::rememberVisible() { visible_ = current_->bounds(); }

}  // namespace zyn
