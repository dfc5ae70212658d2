#include "graph/CalendarTime.h"

#include <cmath>

namespace zyn {

namespace {

constexpr std::int64_t kDaysOf400Years = 146'097;
constexpr std::int64_t kDaysOf100Years = 36'524;
constexpr std::int64_t kDaysOf4Years = 1'461;
/// From 0000-03-01 to 1899-12-30. Years counted from March have their leap day at their end.
constexpr std::int64_t kDaysToEpoch = 693'899;

/// Days from 1 March to the first day of a month, 0 being March: months of 31, 30, 31, 30, 31.
constexpr std::int64_t daysBeforeMonth(std::int64_t fromMarch) { return (153 * fromMarch + 2) / 5; }

std::int64_t dayNumber(std::int64_t year, int month, int day) {
  const std::int64_t fromMarch = (month + 9) % 12;
  const std::int64_t marchYear = month <= 2 ? year - 1 : year;
  const std::int64_t leapDays =
      floorDivide(marchYear, 4) - floorDivide(marchYear, 100) + floorDivide(marchYear, 400);
  return 365 * marchYear + leapDays + daysBeforeMonth(fromMarch) + day - 1 - kDaysToEpoch;
}

}  // namespace

CalendarTime CalendarTime::of(double days) {
  const double whole = std::floor(days);
  const auto passed =
      static_cast<std::int64_t>(std::llround((days - whole) * static_cast<double>(kPerDay)));
  const auto day = static_cast<std::int64_t>(whole);
  return passed == kPerDay ? CalendarTime{day + 1, 0} : CalendarTime{day, passed};
}

CalendarTime CalendarTime::of(const CivilTime& civil) {
  const std::int64_t seconds = (civil.hour * 60LL + civil.minute) * 60 + civil.second;
  return {dayNumber(civil.year, civil.month, civil.day), seconds * kPerSecond + civil.microsecond};
}

double CalendarTime::days() const {
  // Counted back from the end of the day where that is nearer to 0, and exact there.
  const std::int64_t whole = day < 0 ? day + 1 : day;
  const std::int64_t passed = day < 0 ? microsecond - kPerDay : microsecond;
  return static_cast<double>(whole) + static_cast<double>(passed) / static_cast<double>(kPerDay);
}

CivilTime CalendarTime::civil() const {
  const std::int64_t fromMarch0 = day + kDaysToEpoch;
  const std::int64_t cycle = floorDivide(fromMarch0, kDaysOf400Years);
  const std::int64_t ofCycle = fromMarch0 - cycle * kDaysOf400Years;
  // Whole years: each fourth is a day longer but each hundredth, and the last day is a leap day.
  const std::int64_t ofYears = (ofCycle - ofCycle / (kDaysOf4Years - 1) +
                                ofCycle / kDaysOf100Years - ofCycle / (kDaysOf400Years - 1)) /
                               365;
  const std::int64_t ofYear = ofCycle - (365 * ofYears + ofYears / 4 - ofYears / 100);
  const std::int64_t fromMarch = (5 * ofYear + 2) / 153;
  CivilTime civil;
  civil.month = static_cast<int>((fromMarch + 2) % 12 + 1);
  civil.day = static_cast<int>(ofYear - daysBeforeMonth(fromMarch) + 1);
  civil.year = 400 * cycle + ofYears + (civil.month <= 2 ? 1 : 0);
  const std::int64_t seconds = microsecond / kPerSecond;
  civil.hour = static_cast<int>(seconds / 3600);
  civil.minute = static_cast<int>(seconds / 60 % 60);
  civil.second = static_cast<int>(seconds % 60);
  civil.microsecond = static_cast<int>(microsecond % kPerSecond);
  return civil;
}

int CalendarTime::weekday() const {
  constexpr std::int64_t kOfDay0 = 5;  // 1899-12-30 was a Saturday
  const std::int64_t days = day + kOfDay0;
  return static_cast<int>(days - 7 * floorDivide(days, 7));
}

int CalendarTime::dayOfYear() const {
  return static_cast<int>(day - dayNumber(civil().year, 1, 1)) + 1;
}

}  // namespace zyn
