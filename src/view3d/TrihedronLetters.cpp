#include "view3d/TrihedronLetters.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <vector>

namespace zyn {

namespace {

// Lengths in parts of an axis.
constexpr double kLetterHeight = 0.36;
constexpr double kLetterPixels = 9.0;  ///< at least
constexpr double kStroke = 0.06;
constexpr double kStrokePixels = 1.3;

/// On the screen, axes shorter than this point to the viewer or away.
constexpr double kShort = 0.25;

/// Of a circle around a letter, in parts of its height.
constexpr double kLetterRadius = 0.62;

/// From a point to an axis.
double distanceToAxis(const PlanePoint& point, const PlanePoint& tip) {
  const double square = tip.x * tip.x + tip.y * tip.y;
  const double along =
      square > 0 ? std::clamp((point.x * tip.x + point.y * tip.y) / square, 0.0, 1.0) : 0.0;
  return lengthOf(point - along * tip);
}

class Letters {
 public:
  Letters(const std::array<PlanePoint, 3>& tips, double pixel)
      : tips_(tips),
        height_(std::max(kLetterHeight, kLetterPixels * pixel)),
        stroke_(std::max(kStroke, kStrokePixels * pixel)) {}

  /// Puts the letter to the first place that is clear of all that stands, or to the clearest.
  LetterPlacement place(const PlanePoint& tip) {
    PlanePoint best;
    double mostRoom = -std::numeric_limits<double>::infinity();
    for (const PlanePoint& candidate : placesFor(tip)) {
      const double room = roomAt(candidate);
      if (room > mostRoom + kSame) {
        mostRoom = room;
        best = candidate;
      }
      if (room > -kSame) {
        break;
      }
    }
    standing_.push_back(best);
    return {best.x, best.y, height_, stroke_};
  }

 private:
  static constexpr double kSame = 1e-9;

  double reach() const { return kAxisHeadRadius + kLetterRadius * height_; }

  /// The best first: beside the tip, on the side of the axis that looks into the view, the other
  /// side, and places around the tip, ever farther away.
  std::vector<PlanePoint> placesFor(const PlanePoint& tip) const {
    std::vector<PlanePoint> places;
    const double length = lengthOf(tip);
    if (length < kShort) {
      const double away = -std::numbers::sqrt2 / 2 * (kAxisHeadRadius + reach());
      places.push_back(withinView({away, away}));
    } else {
      const double side = (tip.x >= tip.y ? reach() : -reach()) / length;
      places.push_back(withinView({0.8 * tip.x - side * tip.y, 0.8 * tip.y + side * tip.x}));
      places.push_back(withinView({0.8 * tip.x + side * tip.y, 0.8 * tip.y - side * tip.x}));
    }
    constexpr int kTurns = 24;
    for (const double farther : {1.0, 1.5, 2.2, 3.2, 4.5}) {
      for (int turn = 0; turn < kTurns; ++turn) {
        const double angle = std::atan2(tip.y, tip.x) + 2 * std::numbers::pi * turn / kTurns;
        places.push_back(
            withinView(tip + farther * reach() * PlanePoint{std::cos(angle), std::sin(angle)}));
      }
    }
    return places;
  }

  PlanePoint withinView(const PlanePoint& point) const {
    const double margin = -1 + (height_ + stroke_) / 2;
    return {std::max(point.x, margin), std::max(point.y, margin)};
  }

  /// What is left between a letter there and what stands; negative where they touch.
  double roomAt(const PlanePoint& point) const {
    const double radius = kLetterRadius * height_;
    double room = std::numeric_limits<double>::infinity();
    for (const PlanePoint& tip : tips_) {
      room = std::min(room, distanceToAxis(point, tip) - radius - kAxisHeadRadius);
    }
    for (const PlanePoint& letter : standing_) {
      const PlanePoint apart = point - letter;
      room = std::min(room, std::max(std::abs(apart.x) - kLetterAspect * height_ - stroke_,
                                     std::abs(apart.y) - height_ - stroke_));
    }
    return room;
  }

  const std::array<PlanePoint, 3>& tips_;
  double height_;
  double stroke_;
  std::vector<PlanePoint> standing_;
};

}  // namespace

std::array<LetterPlacement, 3> placeLetters(const std::array<PlanePoint, 3>& tips, double pixel) {
  std::array<std::size_t, 3> order{0, 1, 2};
  std::ranges::stable_sort(order, std::greater<>(),
                           [&](std::size_t axis) { return lengthOf(tips[axis]); });
  std::array<LetterPlacement, 3> placements;
  Letters letters(tips, pixel);
  for (const std::size_t axis : order) {
    placements[axis] = letters.place(tips[axis]);
  }
  return placements;
}

}  // namespace zyn
