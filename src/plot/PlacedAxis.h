#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "plot/PlotLayout.h"
#include "plot/PlotMeasures.h"
#include "plot/TextPlacer.h"

namespace zyn {

/// What all axes of a graph are laid out by.
struct AxisContext {
  const PlotPage& page;
  const PlotTheme& theme;
  const PlotMeasures& measures;
  const TextPlacer& placer;

  /// By how much labels of an upright axis may reach beyond its ends: not as far as those of
  /// horizontal ones.
  double overhang() const;
};

/// Where an axis lies, in pixels along it.
struct AxisSpan {
  double from = 0.0;
  double to = 0.0;
  double first = 0.0;  ///< labels stay between these
  double last = 0.0;

  bool operator==(const AxisSpan&) const = default;
};

/// An axis while a graph is laid out. What belongs to it takes room outwards from its line: ticks
/// and labels, a row for its offset text where it needs one, its title. That of a bar of colours
/// has this on its inner side.
class PlacedAxis {
 public:
  PlacedAxis(const ShownAxis& shown, const AxisContext& context);

  const PlotAxis& axis() const { return *axis_; }
  AxisSide side() const { return axis_->side; }
  bool isUpright() const { return !isHorizontal(side()); }
  bool isVisible() const { return isVisible_; }
  bool hasLabels() const { return isVisible_ && areLabelsKept; }
  bool hasBar() const { return barWidth > 0 && isBarKept; }
  bool takesRoom() const { return hasLabels() || hasBar(); }
  bool hasTitle() const { return hasLabels() && isTitleKept && !title().empty(); }

  /// "Title (unit)".
  std::string title() const;
  TextStyle titleStyle() const;
  /// Cut where it is longer, but for its unit.
  LaidText titleWithin(double length) const;
  TextStyle labelStyle() const;
  DrawColour lineColour() const { return axis_->colour.value_or(context_.theme.axis); }

  const AxisScale& scale() const { return scale_; }
  const Ticks& ticks() const { return ticks_; }
  LaidText offset() const { return context_.placer.layOut(ticks_.offset, labelStyle()); }
  /// Of the labels, across an upright axis and along a horizontal one.
  double widestLabel() const { return widest_; }

  /// Gives it a length, and ticks.
  void stretch(const AxisSpan& span);

  /// Between which labels of a horizontal axis stand; what they may have above needs no room of
  /// its own.
  TextLine labelLine() const;
  double labelDepth() const;
  double titleDepth() const;
  /// Where its room ends, from the edge of the plot area.
  double end() const;

  double at = 0.0;           ///< of its line, from the edge of the plot area
  double offsetDepth = 0.0;  ///< of the row for the offset text
  double barWidth = 0.0;     ///< of its bar; 0 for those of the plot area
  bool isBarKept = true;
  bool areLabelsKept = true;
  bool isTitleKept = true;

 private:
  std::function<double(std::string_view)> labelExtents() const;
  TickRoom tickRoom() const;

  const PlotAxis* axis_;
  AxisContext context_;
  bool isVisible_;
  AxisScale scale_;
  AxisSpan span_{};
  Ticks ticks_{};
  double widest_ = 0.0;
};

}  // namespace zyn
