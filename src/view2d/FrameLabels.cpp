#include "view2d/FrameLabels.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zyn {

namespace {

/// Distances in pixels.
constexpr double kBelowAxis = 10.0;
constexpr double kClearOfTicks = 7.0;  ///< the least distance below the axis, for want of room
constexpr double kLeftOfAxis = 10.0;
constexpr double kRightOfAxis = 3.0;
constexpr double kAboveLine = 3.0;
constexpr double kInset = 1.0;  ///< from the edges of the visible area
constexpr double kHalfAxis = 1.0;

/// Puts labels where nothing is yet.
class Placer {
 public:
  Placer(const FrameArea& area, const std::vector<PixelBox>& boxes)
      : area_(area), room_(area.visible.shrunk(kInset)), taken_(boxes) {
    const double x = area.tipX();
    const double y = area.tipY();
    taken_.push_back({std::min(0.0, x), std::max(0.0, x), -kHalfAxis, kHalfAxis});
    taken_.push_back({-kHalfAxis, kHalfAxis, std::min(0.0, y), std::max(0.0, y)});
  }

  const FrameArea& area() const { return area_; }
  const PixelBox& room() const { return room_; }

  PixelBox boxOf(const Graduation& graduation, double left, double bottom) const {
    return {left, left + area_.font.width(graduation), bottom,
            bottom + area_.font.height(graduation)};
  }

  bool isFree(const PixelBox& box) const {
    return room_.holds(box) &&
           std::ranges::none_of(taken_, [&](const PixelBox& other) { return box.overlaps(other); });
  }

  void place(const Graduation& graduation, const PixelBox& box) {
    if (!isFree(box)) {
      return;
    }
    taken_.push_back(box);
    const double exponent = area_.font.textWidth(graduation.exponent, area_.font.exponentSize);
    labels_.push_back({graduation.label,
                       graduation.exponent,
                       box,
                       {box.right - exponent, box.bottom + area_.font.exponentRise()}});
  }

  std::vector<PlacedLabel> takeLabels() { return std::move(labels_); }

 private:
  const FrameArea& area_;
  PixelBox room_;
  std::vector<PixelBox> taken_;
  std::vector<PlacedLabel> labels_;
};

double baselineBelow(const Placer& placer) {
  const double height = placer.area().font.digitHeight();
  const double baseline = std::max(-kBelowAxis - height, placer.room().bottom);
  return baseline <= -kClearOfTicks - height ? baseline : kAboveLine;
}

void placeX(const Graduation& graduation, Placer& placer) {
  const PixelBox& room = placer.room();
  const double width = placer.area().font.width(graduation);
  const double left = std::clamp(graduation.position - width / 2, room.left,
                                 std::max(room.left, room.right - width));
  placer.place(graduation, placer.boxOf(graduation, left, baselineBelow(placer)));
}

void placeY(const Graduation& graduation, Placer& placer) {
  const FrameArea& area = placer.area();
  const double halfHeight = area.font.digitHeight() / 2;
  const double middle = graduation.position - halfHeight;
  const double left = -kLeftOfAxis - area.font.width(graduation);
  if (left >= area.visible.left) {
    placer.place(graduation, placer.boxOf(graduation, std::max(left, placer.room().left), middle));
    return;
  }
  // Lines and the horizontal axis go through the middle of a graduation: the label stands on them.
  const bool isCrossed = area.isRuled || std::abs(graduation.position) < halfHeight + kHalfAxis;
  placer.place(graduation, placer.boxOf(graduation, kRightOfAxis,
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
                                     const FrameArea& area, const std::vector<PixelBox>& boxes) {
  Placer placer(area, boxes);
  placeAll(x, [&](const Graduation& graduation) { placeX(graduation, placer); });
  placeAll(y, [&](const Graduation& graduation) { placeY(graduation, placer); });
  return placer.takeLabels();
}

}  // namespace zyn
