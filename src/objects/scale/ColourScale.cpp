#include "objects/scale/ColourScale.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "objects/scale/PaletteTables.h"

namespace zyn {

namespace {

/// The values between which a place lies among equally spaced ones, and how far from the first.
struct Between {
  std::size_t first;
  std::size_t next;
  double part;

  Between(double place, std::size_t count) {
    const auto last = static_cast<double>(count - 1);
    const double position = std::clamp(place, 0.0, 1.0) * last;
    first = static_cast<std::size_t>(position);
    next = std::min(first + 1, count - 1);
    part = position - static_cast<double>(first);
  }

  double mix(double a, double b) const { return a + part * (b - a); }
};

ColourPalette::Colour colourIn(const PaletteTable& table, double place) {
  constexpr double kUnit = 1e6;
  const Between between(place, table.size());
  ColourPalette::Colour colour{};
  for (std::size_t i = 0; i < colour.size(); ++i) {
    colour[i] = between.mix(table[between.first][i] / kUnit, table[between.next][i] / kUnit);
  }
  return colour;
}

ColourPalette::Colour colourIn(const std::vector<ColourPalette::Colour>& own, double place) {
  const Between between(place, own.size());
  ColourPalette::Colour colour{};
  for (std::size_t i = 0; i < colour.size(); ++i) {
    colour[i] = between.mix(own[between.first][i], own[between.next][i]);
  }
  return colour;
}

void takeLess(std::optional<double>& least, double value) {
  least = least ? std::min(*least, value) : value;
}

/// Widened around where it is one value only.
ScaleRange spanOf(double least, double greatest) {
  constexpr double kMost = std::numeric_limits<double>::max();
  if (least < greatest) {
    return {least, greatest};
  }
  const double half = least == 0 ? 0.5 : std::abs(least) / 2;
  return {std::max(least - half, -kMost), std::min(least + half, kMost)};
}

/// Halves, so that the difference of any two is finite.
double placeBetween(double value, double first, double last) {
  const double length = last / 2 - first / 2;
  if (length == 0) {
    return value < first ? 0.0 : (value > first ? 1.0 : 0.5);
  }
  return (value / 2 - first / 2) / length;
}

}  // namespace

ColourPalette::Colour ColourPalette::at(double place) const {
  switch (kind_) {
    case kPlasma:
      return colourIn(kPlasmaTable, place);
    case kTurbo:
      return colourIn(kTurboTable, place);
    case kCoolWarm:
      return colourIn(kCoolWarmTable, place);
    case kGrey: {
      const double grey = std::clamp(place, 0.0, 1.0);
      return {grey, grey, grey};
    }
    case kOwn:
      return colourIn(own_, place);
    case kViridis:
      break;
  }
  return colourIn(kViridisTable, place);
}

void ValueExtent::include(double value) {
  if (!std::isfinite(value)) {
    return;
  }
  takeLess(least, value);
  greatest = greatest ? std::max(*greatest, value) : value;
  if (value > 0) {
    takeLess(leastPositive, value);
  }
}

void ValueExtent::include(const ValueExtent& other) {
  for (const auto& value : {other.least, other.greatest, other.leastPositive}) {
    if (value) {
      include(*value);
    }
  }
}

ScaleRange rangeOf(const ValueExtent& values, bool isLogarithmic) {
  if (isLogarithmic) {
    return values.leastPositive ? spanOf(*values.leastPositive, *values.greatest)
                                : ScaleRange{1, 10};
  }
  return values.least ? spanOf(*values.least, *values.greatest) : ScaleRange{0, 1};
}

std::optional<double> ColourScale::placeOf(double value) const {
  if (std::isnan(value)) {
    return std::nullopt;
  }
  if (!isLogarithmic) {
    return placeBetween(value, range.first, range.last);
  }
  if (!(value > 0 && range.first > 0 && range.last > 0)) {
    return std::nullopt;
  }
  return placeBetween(std::log10(value), std::log10(range.first), std::log10(range.last));
}

std::optional<double> ColourScale::valueAt(double place) const {
  if (!isLogarithmic) {
    return (1 - place) * range.first + place * range.last;
  }
  if (!(range.first > 0 && range.last > 0)) {
    return std::nullopt;
  }
  return std::pow(10.0, (1 - place) * std::log10(range.first) + place * std::log10(range.last));
}

ColourScale::Colour ColourScale::colourOf(double value) const {
  const std::optional<double> place = placeOf(value);
  if (!place) {
    return absent;
  }
  const ColourPalette::Colour colour = colourAtPlace(*place);
  return {colour[0], colour[1], colour[2], 1.0};
}

ColourPalette::Colour ColourScale::colourAtPlace(double place) const {
  if (bands == 0) {
    return palette.at(place);
  }
  if (bands == 1) {
    return palette.at(0.5);
  }
  const double last = bands - 1;
  return palette.at(std::clamp(std::floor(place * bands), 0.0, last) / last);
}

// OpenGL 1.1 takes powers of two; what lies below the last row is one colour there.
ScaleTexels::ScaleTexels(const ColourScale& scale) : scale_(scale) {
  constexpr std::int32_t kMostRows = 256;
  const auto [low, high] = std::minmax(scale.range.first, scale.range.last);
  if (scale.isLogarithmic && low > 0 && std::isfinite(high)) {
    top_ = high;
    while (rows_ < kMostRows && topOf(rows_ - 1) > low) {
      rows_ *= 2;
    }
  }
  rgba_.reserve(std::size_t{4} * kColumns * static_cast<std::size_t>(rows_));
  for (std::int32_t row = 0; row < rows_; ++row) {
    for (std::int32_t column = 0; column < kColumns; ++column) {
      for (const double component : colourAt(row, column)) {
        rgba_.push_back(static_cast<std::uint8_t>(std::lround(255 * component)));
      }
      rgba_.push_back(255);
    }
  }
}

double ScaleTexels::topOf(std::int32_t row) const { return std::ldexp(top_, -2 * row); }

std::int32_t ScaleTexels::rowFor(double greatest) const {
  std::int32_t row = 0;
  while (row + 1 < rows_ && topOf(row + 1) >= greatest) {
    ++row;
  }
  return row;
}

/// Of linear scales a band has a texel, the last one all that are left.
ColourPalette::Colour ScaleTexels::colourAt(std::int32_t row, std::int32_t column) const {
  if (hasRows()) {
    const bool isEnd = column + 1 == kColumns;
    const double value = topOf(row) * (isEnd ? 1 : (column + 0.5) / kColumns);
    return scale_.colourAtPlace(scale_.placeOf(value).value_or(0));
  }
  return isSmooth() ? scale_.palette.at(column / (kColumns - 1.0))
                    : scale_.colourAtPlace((column + 0.5) / scale_.bands);
}

double ScaleTexels::across(double value, std::int32_t row) const {
  if (hasRows()) {
    return value / topOf(row);
  }
  const double place = scale_.placeOf(value).value_or(0);
  return isSmooth() ? (place * (kColumns - 1) + 0.5) / kColumns : place * scale_.bands / kColumns;
}

ScaleTexels::Coordinate ScaleTexels::coordinateOf(double value, std::int32_t row) const {
  constexpr double kFar = 1e6;  // finite, where values are not
  return {static_cast<float>(std::clamp(across(value, row), -kFar, kFar)),
          (static_cast<float>(row) + 0.5F) / static_cast<float>(rows_)};
}

}  // namespace zyn
