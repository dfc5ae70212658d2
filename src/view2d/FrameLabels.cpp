#include "view2d/FrameLabels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "objects/DigitFont.h"

namespace zyn {

namespace {

/// Distances in pixels.
constexpr double kBelowAxis = 16.0;     ///< to the baseline
constexpr double kClearOfTicks = 13.0;  ///< the least for the baseline, where there is no room
constexpr double kLeftOfAxis = 10.0;
constexpr double kRightOfAxis = 3.0;
constexpr double kAboveLine = 3.0;
constexpr double kHalfHeight = 3.0;
constexpr double kInset = 1.0;  ///< from the edges of the visible area
constexpr double kHalfAxis = 1.0;

constexpr double kExponentGap = 1.0;
constexpr double kExponentRise = 4.0;

/// Puts labels where nothing is yet.
class Placer {
 public:
  Placer(const FrameArea& area, const std::vector<FrameBox>& boxes)
      : room_(area.visible.shrunk(kInset)), taken_(boxes) {
    const double x = area.tipX();
    const double y = area.tipY();
    taken_.push_back({std::min(0.0, x), std::max(0.0, x), -kHalfAxis, kHalfAxis});
    taken_.push_back({-kHalfAxis, kHalfAxis, std::min(0.0, y), std::max(0.0, y)});
  }

  const FrameBox& room() const { return room_; }

  bool isFree(const FrameBox& box) const {
    return room_.holds(box) &&
           std::ranges::none_of(taken_, [&](const FrameBox& other) { return box.overlaps(other); });
  }

  void place(const Graduation& graduation, const FrameBox& box) {
    if (!isFree(box)) {
      return;
    }
    taken_.push_back(box);
    labels_.push_back({graduation.label,
                       graduation.exponent,
                       box,
                       {box.right - digitTextWidth(graduation.exponent, PlacedLabel::kExponentSize),
                        box.bottom + kExponentRise}});
  }

  std::vector<PlacedLabel> takeLabels() { return std::move(labels_); }

 private:
  FrameBox room_;
  std::vector<FrameBox> taken_;
  std::vector<PlacedLabel> labels_;
};

FrameBox boxOf(const Graduation& graduation, double left, double bottom) {
  return {left, left + labelWidth(graduation), bottom, bottom + labelHeight(graduation)};
}

double baselineBelow(const FrameBox& room) {
  const double baseline = std::max(-kBelowAxis, room.bottom);
  return baseline <= -kClearOfTicks ? baseline : kAboveLine;
}

void placeX(const Graduation& graduation, Placer& placer) {
  const double width = labelWidth(graduation);
  const double left = std::clamp(graduation.position - width / 2, placer.room().left,
                                 std::max(placer.room().left, placer.room().right - width));
  placer.place(graduation, boxOf(graduation, left, baselineBelow(placer.room())));
}

void placeY(const Graduation& graduation, const FrameArea& area, Placer& placer) {
  const double middle = graduation.position - kHalfHeight;
  const double left = -kLeftOfAxis - labelWidth(graduation);
  if (left >= area.visible.left) {
    placer.place(graduation, boxOf(graduation, std::max(left, placer.room().left), middle));
    return;
  }
  // Lines and the horizontal axis go through the middle of a graduation: the label stands on them.
  const bool isCrossed = area.isRuled || std::abs(graduation.position) < kHalfHeight + kHalfAxis;
  placer.place(graduation, boxOf(graduation, kRightOfAxis,
                                 isCrossed ? graduation.position + kAboveLine : middle));
}

template <class Place>
void placeAll(const Graduations& graduations, Place place) {
  for (const std::vector<Graduation>* const marks : {&graduations.big, &graduations.small}) {
    for (const Graduation& graduation : *marks) {
      if (!graduation.label.empty()) {
        place(graduation);
      }
    }
  }
}

}  // namespace

std::vector<PlacedLabel> placeLabels(const Graduations& x, const Graduations& y,
                                     const FrameArea& area, const std::vector<FrameBox>& boxes) {
  Placer placer(area, boxes);
  placeAll(x, [&](const Graduation& graduation) { placeX(graduation, placer); });
  placeAll(y, [&](const Graduation& graduation) { placeY(graduation, area, placer); });
  return placer.takeLabels();
}

double labelWidth(const Graduation& graduation) {
  const int width = digitTextWidth(graduation.label, PlacedLabel::kSize);
  return graduation.exponent.empty()
             ? width
             : width + kExponentGap +
                   digitTextWidth(graduation.exponent, PlacedLabel::kExponentSize);
}

double labelHeight(const Graduation& graduation) {
  return graduation.exponent.empty() ? digitHeight(PlacedLabel::kSize)
                                     : kExponentRise + digitHeight(PlacedLabel::kExponentSize);
}

}  // namespace zyn
