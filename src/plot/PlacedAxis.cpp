#include "plot/PlacedAxis.h"

#include <algorithm>
#include <cmath>
#include <variant>

namespace zyn {

namespace {

/// Distances between ticks in em heights, and how many an axis has at most, about.
constexpr double kPitch = 6;
constexpr double kClosePitch = 3.5;
constexpr double kMostTicks = 12;
constexpr double kMostUprightTicks = 10;
constexpr double kMinorPitch = 8;  ///< in pixels of a screen
/// Between labels, in em heights.
constexpr double kGap = 0.5;
constexpr double kUprightGap = 0.25;

}  // namespace

double AxisContext::overhang() const {
  const TextStyle style{.emHeight = measures.emHeight};
  const double accents = placer.lineOf(style).top - placer.digitsOf(style).top;
  return std::max(0.0, measures.tick + measures.gap - std::ceil(accents) - 1);
}

PlacedAxis::PlacedAxis(const ShownAxis& shown, const AxisContext& context)
    : axis_(shown.axis),
      context_(context),
      isVisible_(shown.isVisible),
      scale_{.kind = axis_->kind,
             .min = shown.range.min,
             .max = shown.range.max,
             .isInverted = axis_->isInverted} {}

std::string PlacedAxis::title() const {
  if (axis_->title.empty() || axis_->unit.empty()) {
    return axis_->title + axis_->unit;
  }
  return axis_->title + " (" + axis_->unit + ")";
}

LaidText PlacedAxis::titleWithin(double length) const {
  const TextPlacer& placer = context_.placer;
  const TextStyle style = titleStyle();
  if (placer.widthOf(title(), style) > length && !axis_->title.empty() && !axis_->unit.empty()) {
    const std::string unit = " (" + axis_->unit + ")";
    const double left = length - placer.widthOf("0" + unit, style);
    const LaidText cut = placer.layOutWithin(left, axis_->title, style);
    if (!cut.isEmpty()) {
      return placer.layOutWithin(length, cut.drawn.text + unit, style);
    }
  }
  return placer.layOutWithin(length, title(), style);
}

TextStyle PlacedAxis::titleStyle() const {
  return {.emHeight = context_.measures.axisTitleEm,
          .colour = axis_->colour.value_or(context_.theme.text)};
}

TextStyle PlacedAxis::labelStyle() const {
  return {.emHeight = context_.measures.emHeight,
          .colour = axis_->colour.value_or(context_.theme.text)};
}

/// How much of the axis a label takes: its width or, beside an upright one, as much as its line is
/// high about the middle of the digits, which is at the tick.
std::function<double(std::string_view)> PlacedAxis::labelExtents() const {
  const TextStyle style = labelStyle();
  if (!isUpright()) {
    return [style, &placer = context_.placer](std::string_view label) {
      return placer.widthOf(label, style);
    };
  }
  const TextLine digits = context_.placer.digitsOf(style);
  const TextLine line = context_.placer.lineOf(style);
  const double high = 2 * std::max(line.top - digits.middle(), digits.middle() - line.bottom);
  return [high, low = digits.height()](std::string_view label) {
    return isPlainNumber(label) ? low : high;
  };
}

/// Ticks of logarithmic axes may lie closer: those between powers of ten make them readable.
TickRoom PlacedAxis::tickRoom() const {
  const double em = context_.measures.emHeight;
  const bool isClose = isUpright() || axis_->kind == AxisKind::kLog10;
  const double most = isUpright() ? kMostUprightTicks : kMostTicks;
  return {.first = span_.first,
          .last = span_.last,
          .gap = em * (isUpright() ? kUprightGap : kGap),
          .pitch = std::max(em * (isClose ? kClosePitch : kPitch), scale_.length() / most),
          .minorPitch = kMinorPitch * context_.measures.scale,
          .extentOf = labelExtents()};
}

void PlacedAxis::stretch(const AxisSpan& span) {
  if (span == span_) {
    return;
  }
  span_ = span;
  scale_.pixelFrom = span.from;
  scale_.pixelTo = span.to;
  ticks_ = chooseTicks(scale_, tickRoom(), axis_->tickFormat);
  const TextStyle style = labelStyle();
  widest_ = 0;
  for (const std::string& label : ticks_.labels) {
    widest_ = std::max(widest_, context_.placer.widthOf(label, style));
  }
}

TextLine PlacedAxis::labelLine() const {
  TextLine line = context_.placer.digitsOf(labelStyle());
  if (!std::holds_alternative<std::monostate>(axis_->tickFormat)) {
    line.bottom = context_.placer.lineOf(labelStyle()).bottom;
  }
  return line;
}

/// Beside an upright axis in steps, so that the plot area stays where it is while ranges change.
double PlacedAxis::labelDepth() const {
  if (!hasLabels()) {
    return 0;
  }
  const PlotMeasures& measures = context_.measures;
  const double step = measures.emHeight / 2;
  const double depth = isUpright() ? std::ceil(widest_ / step) * step : labelLine().height();
  return std::ceil(measures.tick + measures.gap + depth);
}

double PlacedAxis::titleDepth() const {
  return hasTitle()
             ? std::ceil(context_.measures.gap + context_.placer.lineOf(titleStyle()).height())
             : 0;
}

double PlacedAxis::end() const { return at + labelDepth() + offsetDepth + titleDepth(); }

}  // namespace zyn
