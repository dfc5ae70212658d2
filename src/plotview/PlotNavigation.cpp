#include "plotview/PlotNavigation.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zyn {

namespace {

/// What lies between two pixels of an axis, in order.
ValueRange between(const AxisScale& scale, double first, double last) {
  const double a = scale.valueOf(first);
  const double b = scale.valueOf(last);
  return {std::min(a, b), std::max(a, b)};
}

}  // namespace

Plot::Axis PlotNavigation::axisAt(const PlanePoint& at) const {
  for (std::size_t i = 0; i < layout_.axes.size(); ++i) {
    const PixelBox& box = layout_.axes[i].box;
    if (!box.isEmpty() && box.holds(at.x, at.y)) {
      return plot_.axes()[i];
    }
  }
  return nullptr;
}

const AxisScale& PlotNavigation::scaleOf(const PlotAxis& axis) const {
  std::size_t i = 0;
  while (plot_.axes()[i].get() != &axis) {
    ++i;
  }
  return layout_.axes[i].scale;
}

template <class Move>
bool PlotNavigation::moveAxes(const PlotAxis* only, Move move) {
  bool isMoved = false;
  const std::vector<Plot::Axis> axes = plot_.axes();
  for (std::size_t i = 0; i < axes.size(); ++i) {
    if (only && axes[i].get() != only) {
      continue;
    }
    const AxisScale& scale = layout_.axes[i].scale;
    const ValueRange range = move(scale, isHorizontal(axes[i]->side));
    const bool isShown = AxisScale{scale.kind, range.min, range.max}.isValid();
    if (isShown && !(range == ValueRange{scale.min, scale.max})) {
      plot_.fixRange(*axes[i], range);
      isMoved = true;
    }
  }
  return isMoved;
}

bool PlotNavigation::pan(const PlanePoint& by, const PlotAxis* only) {
  const bool movesX = by.x != 0 && (!only || isHorizontal(only->side));
  if (movesX) {
    plot_.suspendFollowing();
  }
  return moveAxes(only, [&by](const AxisScale& scale, bool isX) {
    const double pixels = isX ? by.x : by.y;
    return pixels == 0 ? ValueRange{scale.min, scale.max}
                       : between(scale, scale.pixelFrom - pixels, scale.pixelTo - pixels);
  });
}

bool PlotNavigation::zoom(const PlanePoint& about, double factor, const PlotAxis* only) {
  return moveAxes(only, [&about, factor](const AxisScale& scale, bool isX) {
    const double stays = isX ? about.x : about.y;
    return between(scale, stays + factor * (scale.pixelFrom - stays),
                   stays + factor * (scale.pixelTo - stays));
  });
}

bool PlotNavigation::zoomTo(const PixelBox& box) {
  if (box.isEmpty()) {
    return false;
  }
  plot_.pushHistory();
  plot_.suspendFollowing();
  return moveAxes(nullptr, [&box](const AxisScale& scale, bool isX) {
    return isX ? between(scale, box.left, box.right) : between(scale, box.bottom, box.top);
  });
}

}  // namespace zyn
