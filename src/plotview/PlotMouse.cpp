#include "plotview/PlotMouse.h"

#include <algorithm>
#include <cmath>

#include "plot/SeriesReading.h"
#include "plotview/PlotNavigation.h"

namespace zyn {

namespace {

/// So close to a cursor the mouse takes hold of it, in pixels of a screen.
constexpr double kReach = 4;

}  // namespace

std::optional<std::size_t> PlotMouse::cursorAt(const PlanePoint& at) const {
  const PixelBox& area = frame_.layout().area;
  if (!plot_.hasCursors || !area.holds(at.x, at.y)) {
    return std::nullopt;
  }
  const AxisScale& scale = frame_.layoutOf(*plot_.axis(AxisSide::kBottom)).scale;
  std::optional<std::size_t> nearest;
  double least = kReach * frame_.page().pixelScale;
  for (std::size_t number = 0; number < plot_.cursors.size(); ++number) {
    const double value = plot_.cursorValue(number);
    const double away = scale.canShow(value) ? std::abs(scale.pixelOf(value) - at.x) : least + 1;
    if (away <= least) {
      nearest = number;
      least = away;
    }
  }
  return nearest;
}

bool PlotMouse::press(const PlanePoint& at) {
  letGo();
  legendEntry_ = frame_.legendEntryAt(at);
  if (!legendEntry_) {
    cursor_ = cursorAt(at);
  }
  if (!legendEntry_ && !cursor_) {
    axis_ = PlotNavigation(plot_, frame_.layout()).axisAt(at);
  }
  return legendEntry_ || cursor_ || axis_;
}

PlotMouse::Outcome PlotMouse::drag(const PlanePoint& from, const PlanePoint& to) {
  if (axis_) {
    return {plot_.has(*axis_) &&
            PlotNavigation(plot_, frame_.layout()).pan(to - from, axis_.get())};
  }
  if (cursor_) {
    const PixelBox& area = frame_.layout().area;
    const AxisScale& scale = frame_.layoutOf(*plot_.axis(AxisSide::kBottom)).scale;
    const double value = scale.valueOf(std::clamp(to.x, area.left, area.right));
    if (std::isfinite(value) && plot_.cursors[*cursor_] != value) {
      plot_.cursors[*cursor_] = value;
      plot_.changed();
      return {true, cursor_};
    }
  }
  return {};
}

PlotMouse::Outcome PlotMouse::release(const PlanePoint& at) {
  Outcome outcome;
  if (legendEntry_ && frame_.legendEntryAt(at) == legendEntry_ &&
      *legendEntry_ < plot_.entries().size()) {
    PlotItem& item = *plot_.entries()[*legendEntry_].item;
    item.show(!item.isVisible());
    plot_.changed();
    outcome = {true, {}, legendEntry_};
  }
  letGo();
  return outcome;
}

bool PlotMouse::doubleClick(const PlanePoint& at) {
  const Plot::Axis axis = PlotNavigation(plot_, frame_.layout()).axisAt(at);
  if (axis) {
    plot_.setAuto(*axis, true);
  }
  return axis != nullptr;
}

std::optional<std::size_t> PlotMouse::seriesAt(const PlanePoint& at, double reach) const {
  std::optional<std::size_t> nearest;
  for (std::size_t i = 0; i < plot_.entries().size(); ++i) {
    const Plot::Entry& entry = plot_.entries()[i];
    const auto series = entry.item->series();
    if (!series || !series->isVisible || !frame_.layout().area.holds(at.x, at.y)) {
      continue;
    }
    if (const auto away = distanceTo(*series, at, frame_.placeOf(entry), reach)) {
      nearest = i;
      reach = *away;
    }
  }
  return nearest;
}

}  // namespace zyn
