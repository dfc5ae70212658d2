#pragma once

#include <compare>
#include <cstdint>

namespace zyn {

/// A date and time of day by the Gregorian calendar, which goes on before its introduction: the
/// year 0 is that before the year 1. No zones, no daylight-saving time, no leap seconds.
struct CivilTime {
  std::int64_t year = 1899;
  int month = 12;  ///< 1 to 12
  int day = 30;    ///< 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int microsecond = 0;

  bool operator==(const CivilTime&) const = default;
};

/// A moment, exact to the microsecond: the whole days since 1899-12-30, which may be below 0, and
/// what of the day has passed. As a double the same number goes on evenly before that day: -1.25 is
/// 1899-12-28 18:00.
struct CalendarTime {
  static constexpr std::int64_t kPerSecond = 1'000'000;
  static constexpr std::int64_t kPerDay = 86'400 * kPerSecond;
  /// Days from 0 beyond which there is no calendar: the years 1,000,000,000 before and after.
  static constexpr double kFarthest = 365'200'000'000;

  std::int64_t day = 0;
  std::int64_t microsecond = 0;  ///< 0 to kPerDay - 1

  auto operator<=>(const CalendarTime&) const = default;

  /// Whether a number of days is a date.
  static bool isDate(double days) { return days >= -kFarthest && days <= kFarthest; }

  /// The nearest moment; only of dates.
  static CalendarTime of(double days);
  /// A day beyond the end of its month goes on in the next one.
  static CalendarTime of(const CivilTime& civil);

  double days() const;
  CivilTime civil() const;
  /// 0 Monday to 6 Sunday.
  int weekday() const;
  /// 1 to 366.
  int dayOfYear() const;
};

/// The quotient rounded down, also of numbers below 0.
constexpr std::int64_t floorDivide(std::int64_t number, std::int64_t by) {
  return number / by - (number % by < 0 ? 1 : 0);
}

}  // namespace zyn
