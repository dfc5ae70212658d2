#include "plotview/AxisReading.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "graph/CalendarTime.h"
#include "graph/DateFormat.h"
#include "graph/NumberFormat.h"

namespace zyn {

namespace {

constexpr const char* kNone = "\u2013";
/// Larger values, or more decimals, are written with an exponent.
constexpr double kLargest = 1e7;
constexpr double kMostDecimals = 6;
/// On logarithmic axes, where a pixel is a part of the value.
constexpr double kMostDigits = 15;

int clamped(double digits, double least, double most) {
  return static_cast<int>(std::clamp(std::isfinite(digits) ? digits : least, least, most));
}

std::string formatOf(const AxisScale& scale) {
  const double largest = std::max(std::abs(scale.min), std::abs(scale.max));
  if (scale.kind == AxisKind::kLog10) {
    const double decades = std::log10(scale.max) - std::log10(scale.min);
    const double perPixel = std::pow(10, decades / scale.length()) - 1;
    const double digits = std::ceil(-std::log10(perPixel)) + 1;
    return "%." + std::to_string(clamped(digits, 3, kMostDigits)) + "g";
  }
  const double perPixel = scale.max / scale.length() - scale.min / scale.length();
  const double decimals = std::ceil(-std::log10(perPixel));
  if (largest < kLargest && !(decimals > kMostDecimals)) {
    return "%." + std::to_string(clamped(decimals, 0, kMostDecimals)) + "f";
  }
  const double digits = decimals + std::floor(std::log10(largest));
  return "%." + std::to_string(clamped(digits, 2, kMostDigits)) + "e";
}

std::string durationOf(double days) {
  constexpr std::int64_t kDay = 86400;
  const auto seconds = static_cast<std::int64_t>(std::llround(std::abs(days) * kDay));
  std::string text = days < 0 && seconds > 0 ? "-" : "";
  if (seconds >= kDay) {
    text += std::to_string(seconds / kDay) + " d ";
  }
  const auto add = [&text](std::int64_t part, const char* behind) {
    text += part < 10 ? "0" : "";
    text += std::to_string(part);
    text += behind;
  };
  add(seconds / 3600 % 24, ":");
  add(seconds / 60 % 60, ":");
  add(seconds % 60, "");
  return text;
}

}  // namespace

AxisReading::AxisReading(const PlotAxis& axis, const AxisLayout& layout)
    : scale_(layout.scale),
      unit_(axis.unit.empty() ? "" : " " + axis.unit),
      format_(formatOf(layout.scale)) {}

/// Never "-0".
std::string AxisReading::number(double value) const {
  std::string text = NumberFormat(format_).text(value);
  if (text.starts_with('-') && text.find_first_of("123456789") == std::string::npos) {
    text.erase(0, 1);
  }
  text += unit_;
  return text;
}

std::string AxisReading::text(const std::optional<double>& value) const {
  if (!value || !std::isfinite(*value)) {
    return kNone;
  }
  if (scale_.kind == AxisKind::kDate && CalendarTime::isDate(*value)) {
    return DateFormat("%F %T").text(CalendarTime::of(*value));
  }
  return number(*value);
}

std::string AxisReading::difference(const std::optional<double>& from,
                                    const std::optional<double>& to) const {
  if (!from || !to || !std::isfinite(*to - *from)) {
    return kNone;
  }
  const double between = *to - *from;
  const bool isTime =
      scale_.kind == AxisKind::kDate && CalendarTime::isDate(*from) && CalendarTime::isDate(*to);
  return isTime ? durationOf(between) : number(between);
}

}  // namespace zyn
