#include "graph/AxisScale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zyn {

namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();
/// How many lengths of the axis away a value may be; keeps pixels finite.
constexpr double kFarthest = 1e200;

/// Where a value lies between two others: 0 at the first, 1 at the second.
double linearPart(double value, double from, double to) {
  if (std::isfinite(to - from) && std::isfinite(value - from)) {
    return (value - from) / (to - from);
  }
  return (value / 2 - from / 2) / (to / 2 - from / 2);
}

}  // namespace

bool AxisScale::isValid() const {
  return std::isfinite(min) && std::isfinite(max) && min < max && canShow(min);
}

bool AxisScale::canShow(double value) const {
  return std::isfinite(value) && (kind != AxisKind::kLog10 || value > 0);
}

double AxisScale::length() const { return std::abs(pixelTo - pixelFrom); }

double AxisScale::coordinateOf(double value) const {
  return kind == AxisKind::kLog10 ? std::log10(value) : value;
}

/// Differences of logarithms lose the digits by which such ends differ.
bool AxisScale::isWithinAnOctave() const { return max / 2 <= min; }

double AxisScale::partOf(double value) const {
  if (kind != AxisKind::kLog10) {
    return linearPart(value, min, max);
  }
  if (value == max) {
    return 1;
  }
  if (!isWithinAnOctave()) {
    return linearPart(std::log10(value), std::log10(min), std::log10(max));
  }
  const bool isNear = value / 4 < min && min / 4 < value;
  const double distance =
      isNear ? std::log1p((value - min) / min) : std::log(value) - std::log(min);
  return distance / std::log1p((max - min) / min);
}

double AxisScale::valueAt(double part) const {
  if (part == 0 || part == 1) {
    return part == 0 ? min : max;
  }
  if (kind != AxisKind::kLog10) {
    return std::clamp(std::lerp(min, max, part), -kGreatest, kGreatest);
  }
  const double value = isWithinAnOctave()
                           ? min * std::exp(part * std::log1p((max - min) / min))
                           : std::pow(10.0, std::lerp(std::log10(min), std::log10(max), part));
  const bool isInside = part > 0 && part < 1;
  return std::clamp(value, isInside ? min : kLeast, isInside ? max : kGreatest);
}

double AxisScale::pixelOf(double value) const {
  const double part = std::clamp(partOf(value), -kFarthest, kFarthest);
  return isInverted ? std::lerp(pixelTo, pixelFrom, part) : std::lerp(pixelFrom, pixelTo, part);
}

double AxisScale::valueOf(double pixel) const {
  if (pixelFrom == pixelTo) {
    return min;
  }
  return valueAt(isInverted ? linearPart(pixel, pixelTo, pixelFrom)
                            : linearPart(pixel, pixelFrom, pixelTo));
}

}  // namespace zyn
