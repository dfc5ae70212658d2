#include "view2d/PlotPlane.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/saturate.h"
#include "plotview/PlotNavigation.h"

namespace zyn {

namespace {

/// The least part of a range that one turn of the wheel leaves, whatever its acceleration.
constexpr double kLeastZoom = 1.0 / 64;

int roundedPixel(double pixel) { return saturatedInteger(std::floor(pixel + 0.5)); }

int pixelOn(const AxisScale& scale, double value, double height) {
  if (!scale.canShow(value)) {
    return 0;
  }
  const double pixel = scale.pixelOf(value);
  return roundedPixel(height > 0 ? height - pixel : pixel);
}

double spanOf(const AxisScale& scale) {
  return scale.coordinateOf(scale.max) - scale.coordinateOf(scale.min);
}

double middleOf(const AxisScale& scale) {
  return scale.coordinateOf(scale.max) / 2 + scale.coordinateOf(scale.min) / 2;
}

/// By a fraction of its size, or of its decades, half on each side; none where the axis cannot show
/// that.
std::optional<ValueRange> enlarged(const AxisScale& scale, double surplus) {
  if (!scale.isValid()) {
    return std::nullopt;
  }
  const double by = spanOf(scale) * surplus / 2;
  AxisScale wider = scale;
  wider.min = scale.coordinateOf(scale.min) - by;
  wider.max = scale.coordinateOf(scale.max) + by;
  if (scale.kind == AxisKind::kLog10) {
    wider.min = by == 0 ? scale.min : std::pow(10.0, wider.min);
    wider.max = by == 0 ? scale.max : std::pow(10.0, wider.max);
  }
  return wider.isValid() ? std::optional(ValueRange{wider.min, wider.max}) : std::nullopt;
}

}  // namespace

PlotPlane::Scales PlotPlane::scales() const {
  layOut_();
  return {frame_.layoutOf(*plot_.axis(AxisSide::kBottom)).scale,
          frame_.layoutOf(*plot_.axis(AxisSide::kLeft)).scale};
}

/// Model coordinates are those of the upper left corners of pixels.
PlanePoint PlotPlane::placeOf(PixelPoint pixel) const {
  return {static_cast<double>(pixel.x), frame_.page().height - pixel.y};
}

bool PlotPlane::show(const Rect2& range, double surplus) {
  PlotAxis& bottom = *plot_.axis(AxisSide::kBottom);
  PlotAxis& left = *plot_.axis(AxisSide::kLeft);
  const Rect2 ordered = range.ordered();
  const auto x = enlarged({bottom.kind, ordered.xMin, ordered.xMax}, surplus);
  const auto y = enlarged({left.kind, ordered.yMin, ordered.yMax}, surplus);
  if (!x || !y) {
    return false;
  }
  plot_.fixRange(bottom, *x);
  plot_.fixRange(left, *y);
  return true;
}

PixelPoint PlotPlane::getPixelPoint(double x, double y) const {
  const Scales axes = scales();
  return {pixelOn(axes.x, x, 0), pixelOn(axes.y, y, frame_.page().height)};
}

double PlotPlane::pixelSize() const {
  const AxisScale& scale = scales().y;
  return spanOf(scale) / scale.length();
}

std::array<double, 7> PlotPlane::params() const {
  const Scales axes = scales();
  const double height = spanOf(axes.y);
  return {frame_.page().width, frame_.page().height, spanOf(axes.x),  height,
          height / 2,          middleOf(axes.x),     middleOf(axes.y)};
}

Point PlotPlane::getPoint(PixelPoint pixel) const {
  const Scales axes = scales();
  const PlanePoint place = placeOf(pixel);
  return {axes.x.valueOf(place.x), axes.y.valueOf(place.y), 0.0};
}

Rect2 PlotPlane::getRectangle(const RubberBand& band) const {
  const Point press = getPoint(band.press);
  const Point current = getPoint(band.current);
  return Rect2{press.x, current.x, press.y, current.y}.ordered();
}

bool PlotPlane::turnWheel(PixelPoint mouse, int delta, const Wheel& wheel) {
  layOut_();
  const double change = wheel.turned(delta) / (4.0 * frame_.page().height);
  PlotNavigation navigation(plot_, frame_.layout());
  const PlanePoint at = placeOf(mouse);
  const Plot::Axis axis = navigation.axisAt(at);
  return navigation.zoom(at, std::max(1 + change, kLeastZoom), axis.get());
}

bool PlotPlane::pan(int right, int down) {
  layOut_();
  return PlotNavigation(plot_, frame_.layout())
      .pan({static_cast<double>(right), -static_cast<double>(down)});
}

bool PlotPlane::zoomTo(const RubberBand& band) {
  layOut_();
  const PlanePoint a = placeOf(band.press);
  const PlanePoint b = placeOf(band.current);
  return PlotNavigation(plot_, frame_.layout())
      .zoomTo({std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y)});
}

bool PlotPlane::takeHold(PixelPoint at) {
  layOut_();
  if (!mouse_.press(placeOf(at))) {
    return false;
  }
  if (mouse_.holdsAxis()) {
    plot_.pushHistory();
  }
  return true;
}

bool PlotPlane::dragHeld(PixelPoint from, PixelPoint to) {
  layOut_();
  const PlotMouse::Outcome outcome = mouse_.drag(placeOf(from), placeOf(to));
  if (outcome.movedCursor) {
    listener_.cursorMoved(*outcome.movedCursor);
  }
  return outcome.isChanged;
}

bool PlotPlane::letGo(PixelPoint at) {
  layOut_();
  const PlotMouse::Outcome outcome = mouse_.release(placeOf(at));
  if (outcome.clickedEntry) {
    const auto item = plot_.entries()[*outcome.clickedEntry].item;
    listener_.seriesHiddenOrShown(*item);
    listener_.seriesClicked(*item);
  }
  return outcome.isChanged;
}

void PlotPlane::click(PixelPoint at) {
  layOut_();
  if (const auto entry = mouse_.seriesAt(placeOf(at), listener_.clickReach())) {
    const auto item = plot_.entries()[*entry].item;
    listener_.seriesClicked(*item);
  }
}

bool PlotPlane::doubleClick(PixelPoint at) {
  layOut_();
  return mouse_.doubleClick(placeOf(at));
}

}  // namespace zyn
