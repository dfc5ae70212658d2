#include "view2d/Graduations.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "objects/text/DigitFont.h"
#include "view2d/Multiples.h"

namespace zyn {

namespace {

/// Pixels between the lines of powers of ten below which some are left out.
constexpr double kClosestPowers = 4.0;
/// Pixels a decade from which its multiples by 2 and 5, and those by 2 to 9, are drawn.
constexpr double kRoomForSome = 25.0;
constexpr double kRoomForAll = 55.0;

/// By which an axis in decades may end before a graduation, in decades.
constexpr double kEndTolerance = 1e-6;

/// Multiples of a power of ten that are drawn or labelled together.
constexpr double kAll[] = {2, 3, 4, 5, 6, 7, 8, 9};
constexpr double kSome[] = {2, 3, 5};
constexpr double kFew[] = {2, 5};

using Multipliers = std::span<const double>;

/// The smallest of 1, 2, 5, 10, 20, 50, ... that is not below `least`.
double roundNumber(double least) {
  if (!(least > 1)) {
    return 1;
  }
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double number : {power, 2 * power, 5 * power}) {
    if (number >= least) {
      return number;
    }
  }
  return 10 * power;
}

std::vector<Graduation> multiplesOn(const FrameAxis& axis, double step) {
  const Multiples multiples = Multiples::between(axis.min, axis.max, step, axis.pixels());
  std::vector<Graduation> marks;
  marks.reserve(static_cast<std::size_t>(multiples.count()));
  for (int i = 0; i < multiples.count(); ++i) {
    marks.push_back({.position = axis.position(multiples.value(i)), .factor = multiples.factor(i)});
  }
  return marks;
}

/// The axis with its end, which is exclusive, moved to include it.
FrameAxis withEnd(const FrameAxis& decades, double step) {
  return {decades.min, decades.max + kEndTolerance * step, decades.unitsPerPixel};
}

std::vector<Graduation> powersOn(const FrameAxis& decades) {
  const double step = roundNumber(kClosestPowers * std::abs(decades.unitsPerPixel));
  std::vector<Graduation> powers = multiplesOn(withEnd(decades, step), step);
  for (Graduation& power : powers) {
    power.label = "10";
    power.exponent = numberText(power.factor * step);
  }
  return powers;
}

Multipliers drawnMultipliers(const FrameAxis& decades) {
  const double pixels = 1.0 / std::abs(decades.unitsPerPixel);
  if (pixels >= kRoomForAll) {
    return kAll;
  }
  return pixels >= kRoomForSome ? Multipliers(kFew) : Multipliers();
}

/// Whole decades of which the axis shows at least a part; none where they are too many for marks.
Multiples decadesOf(const FrameAxis& decades) {
  return Multiples::between(std::floor(decades.min), decades.max + kEndTolerance, 1.0,
                            decades.pixels());
}

std::vector<Graduation> multipliedPowersOn(const FrameAxis& decades) {
  const Multipliers multipliers = drawnMultipliers(decades);
  std::vector<Graduation> marks;
  if (multipliers.empty()) {
    return marks;
  }
  const Multiples powers = decadesOf(decades);
  for (int i = 0; i < powers.count(); ++i) {
    for (const double multiplier : multipliers) {
      const double place = powers.value(i) + std::log10(multiplier);
      if (place >= decades.min - kEndTolerance && place <= decades.max + kEndTolerance) {
        marks.push_back({.position = decades.position(place), .factor = multiplier});
      }
    }
  }
  return marks;
}

void labelWithValues(std::vector<Graduation>& marks, const FrameAxis& decades) {
  for (Graduation& mark : marks) {
    const double value = std::pow(10.0, decades.min + mark.position * decades.unitsPerPixel);
    mark.exponent.clear();
    mark.label = std::isnormal(value) ? numberText(value) : std::string();
  }
}

bool isAmong(double factor, Multipliers multipliers) {
  return std::ranges::find(multipliers, factor) != multipliers.end();
}

void takeLabel(Graduation& mark) {
  mark.label.clear();
  mark.exponent.clear();
}

/// Pixels that the largest label takes.
double largestExtent(const std::vector<Graduation>& marks, const LabelExtent& extent) {
  double largest = 0;
  for (const Graduation& mark : marks) {
    largest = std::max(largest, extent(mark));
  }
  return largest;
}

bool isMultiple(double factor, double of) { return std::fmod(factor, of) == 0; }

/// Equally spaced graduations keep every so many labels: those of round multiples, if there are
/// enough of them.
void thinEqual(std::vector<Graduation>& marks, const LabelExtent& extent, double gap) {
  if (marks.size() < 2) {
    return;
  }
  const double spacing = std::abs(marks[1].position - marks[0].position);
  const double every = roundNumber((largestExtent(marks, extent) + gap) / spacing);
  const auto stays = [&](const Graduation& mark) { return isMultiple(mark.factor, every); };
  const double first = std::ranges::count_if(marks, stays) >= 2 ? 0.0 : marks[0].factor;
  for (Graduation& mark : marks) {
    if (!isMultiple(mark.factor - first, every)) {
      takeLabel(mark);
    }
  }
}

/// Whether these multiples and the powers have room for their labels.
bool haveRoom(const Graduations& graduations, Multipliers multipliers, const LabelExtent& extent,
              double gap) {
  std::vector<const Graduation*> marks;
  for (const Graduation& power : graduations.big) {
    marks.push_back(&power);
  }
  for (const Graduation& mark : graduations.small) {
    if (isAmong(mark.factor, multipliers)) {
      marks.push_back(&mark);
    }
  }
  std::ranges::sort(marks, {}, &Graduation::position);
  return std::ranges::adjacent_find(marks, [&](const Graduation* a, const Graduation* b) {
           return b->position - a->position < (extent(*a) + extent(*b)) / 2 + gap;
         }) == marks.end();
}

/// Small graduations with labels are multiples of powers of ten.
void thinMultiplied(Graduations& graduations, const LabelExtent& extent, double gap) {
  Multipliers shown;
  for (const Multipliers multipliers : {Multipliers(kAll), Multipliers(kSome), Multipliers(kFew)}) {
    if (haveRoom(graduations, multipliers, extent, gap)) {
      shown = multipliers;
      break;
    }
  }
  for (Graduation& mark : graduations.small) {
    if (!isAmong(mark.factor, shown)) {
      takeLabel(mark);
    }
  }
}

}  // namespace

Graduations linearGraduations(const FrameAxis& axis, double bigStep, double smallStep) {
  Graduations graduations{.small = multiplesOn(axis, smallStep), .big = multiplesOn(axis, bigStep)};
  for (Graduation& mark : graduations.big) {
    mark.label = numberText(mark.factor * bigStep);
  }
  return graduations;
}

Graduations decadeGraduations(const FrameAxis& axis) {
  Graduations graduations{.small = multipliedPowersOn(axis), .big = powersOn(axis)};
  if (graduations.big.size() < 2) {
    labelWithValues(graduations.small, axis);
    labelWithValues(graduations.big, axis);
  }
  return graduations;
}

void thinLabels(Graduations& graduations, const LabelExtent& extent, double gap) {
  thinEqual(graduations.big, extent, gap);
  thinMultiplied(graduations, extent, gap);
}

}  // namespace zyn
