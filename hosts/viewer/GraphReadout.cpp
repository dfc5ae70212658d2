#include "viewer/GraphReadout.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace zyn::viewer {

namespace {

constexpr double kDay = 86400000;  // milliseconds

std::string number(double value) {
  if (!std::isfinite(value)) {
    return "-";
  }
  char text[32] = {};
  std::snprintf(text, sizeof text, "%.6g", value + 0.0);  // + 0.0 shows a negative zero as 0
  return text;
}

/// "2013-05-01", with hours and minutes, seconds, milliseconds as far as they are told.
std::string dateText(double days, double resolution) {
  using namespace std::chrono;
  constexpr double kMostDays = 3e6;  // about as many as there are of years with four digits
  if (!(std::fabs(days) < kMostDays)) {
    return number(days);
  }
  constexpr int kUnits[] = {86400000, 60000, 1000, 1};
  const std::int64_t exact = std::llround(days * kDay);
  std::size_t last = 0;
  while (kUnits[last] > resolution * kDay && exact % kUnits[last] != 0) {
    ++last;
  }
  const double unit = kUnits[last];
  const milliseconds all(static_cast<std::int64_t>(std::round(days * kDay / unit) * unit));
  const sys_days date = sys_days(1899y / 12 / 30) + floor<std::chrono::days>(all);
  const year_month_day civil(date);
  const hh_mm_ss time(all - floor<std::chrono::days>(all));
  char text[64] = {};
  std::size_t length = static_cast<std::size_t>(
      std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(civil.year()),
                    static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day())));
  const auto add = [&](const char* format, auto value) {
    length += static_cast<std::size_t>(
        std::snprintf(text + length, sizeof text - length, format, static_cast<int>(value)));
  };
  if (last >= 1) {
    add(" %02d", time.hours().count());
    add(":%02d", time.minutes().count());
  }
  if (last >= 2) {
    add(":%02d", time.seconds().count());
  }
  if (last >= 3) {
    add(".%03d", time.subseconds().count());
  }
  return text;
}

}  // namespace

std::string ValueStyle::text(double value) const {
  return isDate && std::isfinite(value) ? dateText(value, resolution) : number(value);
}

std::string ValueStyle::differenceText(double difference) const {
  if (!isDate || !std::isfinite(difference)) {
    return number(difference);
  }
  struct Unit {
    double days;
    const char* name;
  };
  for (const Unit unit : {Unit{1, " d"}, Unit{1.0 / 24, " h"}, Unit{1.0 / 1440, " min"}}) {
    if (std::fabs(difference) >= unit.days) {
      return number(difference / unit.days) + unit.name;
    }
  }
  return number(difference * kDay / 1000) + " s";
}

std::string placeText(double x, double y, const std::optional<double>& right,
                      const ValueStyle& xStyle) {
  return "x " + xStyle.text(x) + "  y " + number(y) + (right ? "  right " + number(*right) : "");
}

std::string traceText(std::string_view trace, double x, double y, const ValueStyle& xStyle) {
  return std::string(trace) + ": " + xStyle.text(x) + ", " + number(y);
}

std::string differenceText(const CursorReadings& readings, const ValueStyle& xStyle) {
  const auto& [x, y] = readings;
  return "difference: " + xStyle.differenceText(x[1] - x[0]) + ", " + number(y[1] - y[0]);
}

std::string cursorText(std::string_view trace, const CursorReadings& readings,
                       const ValueStyle& xStyle) {
  const auto& [x, y] = readings;
  return traceText(trace, x[0], y[0], xStyle) + "; " + xStyle.text(x[1]) + ", " + number(y[1]);
}

std::string graphModeText(int mode) {
  switch (mode) {
    case 1:
      return "pan";
    case 3:
      return "nearest point";
    case 4:
      return "zoom to rectangle";
    default:
      return "events only";
  }
}

}  // namespace zyn::viewer
