#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "graph/Ticks.h"

namespace zyn::test {

constexpr double kGreatestEnd = 1e308;

/// An axis with the room for its labels.
struct AxisCase {
  AxisScale scale;
  bool isUpright = false;
  double textScale = 1;
  TickRoom room{};
};

/// Characters of 0.55 em by 0.9 em.
inline double extentOf(std::string_view text, bool isUpright, double textScale) {
  constexpr double kEm = 12;
  const auto isCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  };
  const auto count = static_cast<double>(std::ranges::count_if(text, isCharacter));
  return textScale * kEm * (isUpright ? 0.9 : 0.55 * count);
}

/// Axes of every kind: ranges of 1e-300 to 1e300, offsets to 1e15 times as large, pictures of 120 x
/// 80 to 4000 x 3000, text of one to three times its size.
class RandomAxes {
 public:
  AxisCase next() {
    AxisCase made;
    do {
      made.scale.kind = static_cast<AxisKind>(whole(0, 2));
      chooseRange(made.scale);
    } while (!made.scale.isValid());
    made.isUpright = whole(0, 1) == 1;
    made.textScale = 1 + part() * 2;
    const double size =
        made.isUpright ? 80 * std::pow(3000.0 / 80, part()) : 120 * std::pow(4000.0 / 120, part());
    made.scale.pixelFrom = size * part() / 3;
    made.scale.pixelTo = size * (1 - part() / 3);
    if (made.isUpright) {
      std::swap(made.scale.pixelFrom, made.scale.pixelTo);
    }
    made.scale.isInverted = whole(0, 3) == 0;
    made.room = {.first = 0,
                 .last = size,
                 .gap = 5 * made.textScale,
                 .pitch = 60 * made.textScale,
                 .extentOf = [isUpright = made.isUpright, scale = made.textScale](auto text) {
                   return extentOf(text, isUpright, scale);
                 }};
    return made;
  }

 private:
  double part() { return std::uniform_real_distribution<double>(0, 1)(random_); }
  int whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  double sized(double least, double most) {
    return std::pow(10.0, least + (most - least) * part());
  }

  void chooseRange(AxisScale& scale) {
    double span = sized(-300, 300);
    double offset = whole(0, 3) == 0 ? 0 : (whole(0, 1) == 0 ? span : -span) * sized(-1, 15);
    if (scale.kind == AxisKind::kLog10) {
      scale.min = sized(-300, 300);
      scale.max = scale.min * sized(0, 10) * (whole(0, 1) == 0 ? sized(0, 300) : 1);
      if (whole(0, 3) == 0) {
        scale.max = scale.min + scale.min / sized(0, 15);
      }
      scale.max = std::min(scale.max, kGreatestEnd);
      return;
    }
    if (whole(0, 2) == 0 || (scale.kind == AxisKind::kDate && whole(0, 3) > 0)) {
      span = sized(-10, 7);
      offset = 2e6 * (part() - 0.5);
    }
    const bool hasRoundEnd = whole(0, 3) == 0;
    scale.min = std::clamp(hasRoundEnd ? std::round(offset / span) * span : offset, -kGreatestEnd,
                           kGreatestEnd);
    scale.max = std::clamp(scale.min + span, -kGreatestEnd, kGreatestEnd);
  }

  std::mt19937_64 random_{1};
};

inline std::string describe(const AxisCase& made, const Ticks& ticks) {
  std::ostringstream text;
  text.precision(17);
  text << static_cast<int>(made.scale.kind) << " [" << made.scale.min << ", " << made.scale.max
       << "] " << made.scale.length() << " pixels, text " << made.textScale
       << (made.isUpright ? " upright" : "") << ":";
  for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
    text << " \"" << ticks.labels[i] << "\" " << ticks.major[i] << ",";
  }
  text << " offset \"" << ticks.offset << "\"";
  return text.str();
}

}  // namespace zyn::test
