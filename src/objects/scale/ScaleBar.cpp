#include "objects/scale/ScaleBar.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "graph/Ticks.h"

namespace zyn {

namespace {

// In pixels.
constexpr double kEmHeight = 15;
constexpr double kTickLength = 5;
constexpr double kGap = 4;       ///< between tick and label, between bar and title
constexpr double kClosest = 20;  ///< of ticks
/// However long the bar.
constexpr double kMostTicks = 50;

/// Texts so many times as high as the picture show nothing that could be read.
constexpr double kTallest = 8;

/// A label beside the middle of its tick.
struct Label {
  double tick;  ///< pixels along the bar
  std::string text;
  TextBox box;  ///< pixels, from the start of the baseline
};

class Layout {
 public:
  Layout(const ScaleBar& bar, const ColourScale& scale, PlanePoint picture, double pixelScale,
         const FontMetrics& metrics)
      : bar_(bar), picture_(picture), scale_(pixelScale), metrics_(metrics) {
    made_.emHeight = std::round(kEmHeight * scale_);
    made_.lineWidth = std::max(1.0, std::round(scale_));
    placeBar();
    placeLabels(chooseLabels(scale));
    placeTitle();
  }

  BarLayout take() { return std::move(made_); }

 private:
  TextBox inPixels(const TextBox& box) const {
    const double em = made_.emHeight;
    return {em * box.left, em * box.right, em * box.bottom, em * box.top};
  }

  TextBox measure(std::string_view label) const {
    return inPixels(measureText(metrics_, label, metrics_.digits));
  }

  double length() const { return bar_.isUpright() ? made_.bar.height() : made_.bar.width(); }

  /// Whole pixels, so that its edges are sharp.
  void placeBar() {
    const double width = std::max(1.0, std::round(bar_.width * scale_));
    const double height = std::max(1.0, std::round(bar_.height * scale_));
    const PlanePoint anchor = anchorOf({0, width, 0, height}, bar_.reference);
    const double left = std::round(bar_.x * picture_.x - anchor.x);
    const double bottom = std::round(bar_.y * picture_.y - anchor.y);
    made_.bar = {left, left + width, bottom, bottom + height};
  }

  /// How much of the bar's length a label takes.
  double extentOf(const TextBox& box) const {
    return bar_.isUpright() ? box.height() : box.right - box.left;
  }

  /// The middles of the first and the last tick are half of it within the bar.
  AxisScale axisOf(const ColourScale& scale) const {
    const auto [low, high] = std::minmax({scale.range.first, scale.range.last});
    const double begin = bar_.isUpright() ? made_.bar.bottom : made_.bar.left;
    const double half = made_.lineWidth / 2;
    return {.kind = scale.isLogarithmic ? AxisKind::kLog10 : AxisKind::kLinear,
            .min = low,
            .max = high,
            .isInverted = scale.range.first > scale.range.last,
            .pixelFrom = begin + half,
            .pixelTo = begin + length() - half};
  }

  std::vector<Label> chooseLabels(const ColourScale& scale) const {
    const AxisScale axis = axisOf(scale);
    Ticks ticks = chooseLoneTicks(
        axis, {.first = kGap,
               .last = (bar_.isUpright() ? picture_.y : picture_.x) - kGap,
               .gap = kGap * scale_,
               .pitch = std::max(kClosest * scale_, length() / kMostTicks),
               .extentOf = [&](std::string_view text) { return extentOf(measure(text)); }});
    std::vector<Label> labels;
    for (std::size_t i = 0; i < ticks.major.size(); ++i) {
      const TextBox box = measure(ticks.labels[i]);
      // On a pixel of its own.
      const double tick =
          axis.pixelFrom + std::round(axis.pixelOf(ticks.major[i]) - axis.pixelFrom);
      labels.push_back({tick, std::move(ticks.labels[i]), box});
    }
    return labels;
  }

  void placeLabels(const std::vector<Label>& labels) {
    double deepest = 0;
    for (const Label& label : labels) {
      deepest = std::max(deepest,
                         bar_.isUpright() ? label.box.right - label.box.left : label.box.height());
    }
    const double room = deepest + (kTickLength + kGap) * scale_;
    isFlipped_ = bar_.isUpright()
                     ? made_.bar.right + room > picture_.x && made_.bar.left - room >= 0
                     : made_.bar.bottom - room < 0 && made_.bar.top + room <= picture_.y;
    for (const Label& label : labels) {
      placeTick(label.tick);
      placeLabel(label);
    }
    labelRoom_ = labels.empty() ? 0.0 : room;
  }

  void placeTick(double middle) {
    const double from = middle - made_.lineWidth / 2;
    const double to = from + made_.lineWidth;
    const double length = std::round(kTickLength * scale_);
    const PixelBox& bar = made_.bar;
    if (bar_.isUpright()) {
      const double left = isFlipped_ ? bar.left - length : bar.right;
      made_.ticks.push_back({left, left + length, from, to});
    } else {
      const double bottom = isFlipped_ ? bar.top : bar.bottom - length;
      made_.ticks.push_back({from, to, bottom, bottom + length});
    }
  }

  void placeLabel(const Label& label) {
    const double away = (kTickLength + kGap) * scale_;
    const double at = label.tick;
    const PixelBox& bar = made_.bar;
    if (bar_.isUpright()) {
      const double x = isFlipped_ ? bar.left - away : bar.right + away;
      addText({label.text, nullptr, {}}, label.box, {x, at}, isFlipped_ ? 6 : 8);
    } else {
      const double y = isFlipped_ ? bar.top + away : bar.bottom - away;
      addText({label.text, nullptr, {}}, label.box, {at, y}, isFlipped_ ? 5 : 7);
    }
  }

  /// Above the bar; below it where there is no room.
  void placeTitle() {
    if (!bar_.title) {
      return;
    }
    const TextBox box = inPixels(bar_.title->box(bar_.title->text));
    // Labels of an upright bar reach beyond its ends by half their height.
    const double end = metrics_.digits.height() * made_.emHeight / 2;
    const double gap = 2 * kGap * scale_;
    const PixelBox& bar = made_.bar;
    const double above = bar.top + gap + (bar_.isUpright() ? end : isFlipped_ ? labelRoom_ : 0);
    const double below = bar.bottom - gap - (bar_.isUpright() ? end : isFlipped_ ? 0 : labelRoom_);
    const bool isAbove = above + box.height() <= picture_.y || below - box.height() < 0;
    addText({{}, bar_.title, {}}, box, {(bar.left + bar.right) / 2, isAbove ? above : below},
            isAbove ? 5 : 7);
  }

  /// Held by a point of its box, but moved into the picture; whole pixels, so that equal texts look
  /// alike.
  void addText(BarText text, const TextBox& box, PlanePoint at, std::int32_t reference) {
    if (!(made_.emHeight <= kTallest * picture_.y)) {
      return;
    }
    const PlanePoint start = at - anchorOf(box, reference);
    const auto within = [](double value, double low, double high) {
      return std::round(std::max(std::min(value, high), low));
    };
    text.start = {within(start.x, kGap - box.left, picture_.x - kGap - box.right),
                  within(start.y, kGap - box.bottom, picture_.y - kGap - box.top)};
    made_.texts.push_back(std::move(text));
  }

  const ScaleBar& bar_;
  PlanePoint picture_;
  double scale_;
  const FontMetrics& metrics_;
  BarLayout made_;
  bool isFlipped_ = false;  ///< labels on the left, or above
  double labelRoom_ = 0.0;  ///< pixels from the bar that they take
};

}  // namespace

BarLayout layOutBar(const ScaleBar& bar, const ColourScale& scale, PlanePoint picture,
                    double pixelScale, const FontMetrics& metrics) {
  return Layout(bar, scale, picture, pixelScale, metrics).take();
}

}  // namespace zyn
