#pragma once

#include "core/PixelBox.h"
#include "core/PlanePoint.h"
#include "plotview/Plot.h"

namespace zyn {

/// How the user moves a graph that is laid out: pixels of its picture, from the lower left corner.
/// Each tells whether a range has changed; ranges that an axis cannot show stay as they were.
class PlotNavigation {
 public:
  PlotNavigation(Plot& plot, const PlotLayout& layout) : plot_(plot), layout_(layout) {}

  /// The axis that takes the mouse at a place; null for none.
  Plot::Axis axisAt(const PlanePoint& at) const;

  /// Moves what is shown; by one axis only, if one is given.
  bool pan(const PlanePoint& by, const PlotAxis* only = nullptr);

  /// Shows `factor` times as much about a place that stays; by one axis only, if one is given.
  bool zoom(const PlanePoint& about, double factor, const PlotAxis* only = nullptr);

  /// Shows the rectangle; the ranges there were are kept.
  bool zoomTo(const PixelBox& box);

  const AxisScale& scaleOf(const PlotAxis& axis) const;

 private:
  template <class Move>
  bool moveAxes(const PlotAxis* only, Move move);

  Plot& plot_;
  const PlotLayout& layout_;
};

}  // namespace zyn
