#include "graph/CalendarSteps.h"

#include <cmath>
#include <utility>

#include "graph/NumberSteps.h"

namespace zyn {

namespace {

constexpr double kDaysOfYear = 365.2425;
constexpr std::int64_t kMonday = 2;  // 1900-01-01
constexpr std::int64_t kFirstYear = 1900;
constexpr std::int64_t kMonths = 12;

constexpr std::int64_t weekStart(std::int64_t count) { return count % 7 == 0 ? kMonday : 0; }

std::vector<CalendarStep> makeSteps() {
  using Unit = CalendarStep::Unit;
  constexpr std::int64_t kSecond = CalendarTime::kPerSecond;
  constexpr std::int64_t kYears = 1'000'000'000;
  std::vector<CalendarStep> steps;
  for (std::int64_t power = 1; power < kSecond; power *= 10) {
    for (const std::int64_t digit : {1, 2, 5}) {
      steps.push_back({Unit::kMicrosecond, digit * power});
    }
  }
  for (const std::int64_t unit : {kSecond, 60 * kSecond}) {
    for (const std::int64_t count : {1, 2, 5, 10, 15, 30}) {
      steps.push_back({Unit::kMicrosecond, count * unit});
    }
  }
  for (const std::int64_t hours : {1, 2, 3, 6, 12}) {
    steps.push_back({Unit::kMicrosecond, hours * 3600 * kSecond});
  }
  for (const std::int64_t days : {1, 2, 7, 14}) {
    steps.push_back({Unit::kDay, days});
  }
  for (const std::int64_t months : {1, 3, 6}) {
    steps.push_back({Unit::kMonth, months});
  }
  for (std::int64_t power = 1; power < kYears; power *= 10) {
    for (const std::int64_t digit : {1, 2, 5}) {
      steps.push_back({Unit::kYear, digit * power});
    }
  }
  return steps;
}

}  // namespace

std::span<const CalendarStep> calendarSteps() {
  static const std::vector<CalendarStep> steps = makeSteps();
  return steps;
}

double CalendarStep::days() const {
  const auto number = static_cast<double>(count);
  switch (unit) {
    case Unit::kMicrosecond:
      return number / static_cast<double>(CalendarTime::kPerDay);
    case Unit::kDay:
      return number;
    case Unit::kMonth:
      return number * kDaysOfYear / kMonths;
    default:
      return number * kDaysOfYear;
  }
}

bool CalendarStep::divides(const CalendarStep& other) const {
  if (unit == other.unit) {
    return other.count % count == 0;
  }
  if (unit == Unit::kMicrosecond) {
    return other.unit == Unit::kDay;
  }
  return unit == Unit::kMonth && other.unit == Unit::kYear && kMonths * other.count % count == 0;
}

CalendarTime CalendarStep::at(std::int64_t index) const {
  switch (unit) {
    case Unit::kMicrosecond: {
      const std::int64_t perDay = CalendarTime::kPerDay / count;
      const std::int64_t day = floorDivide(index, perDay);
      return {day, (index - day * perDay) * count};
    }
    case Unit::kDay:
      return {index * count + weekStart(count), 0};
    case Unit::kMonth: {
      const std::int64_t months = index * count;
      const std::int64_t year = floorDivide(months, kMonths);
      return CalendarTime::of(CivilTime{
          .year = year, .month = static_cast<int>(months - year * kMonths) + 1, .day = 1});
    }
    default:
      return CalendarTime::of(CivilTime{.year = index * count, .month = 1, .day = 1});
  }
}

/// Of a moment that surely lies before.
std::int64_t CalendarStep::indexBefore(double days) const {
  constexpr double kIrregular = 4;  // days by which months and years differ from their mean
  constexpr double kRounding = 4;
  const auto whole = [](double steps) { return static_cast<std::int64_t>(std::floor(steps)); };
  switch (unit) {
    case Unit::kMicrosecond: {
      const std::int64_t perDay = CalendarTime::kPerDay / count;
      return whole(days * static_cast<double>(perDay) - kRounding);
    }
    case Unit::kDay:
      return whole(days / static_cast<double>(count)) - 2;
    default: {
      const double years = (days - kIrregular) / kDaysOfYear + static_cast<double>(kFirstYear);
      return whole(years * (unit == Unit::kMonth ? kMonths : 1) / static_cast<double>(count)) - 1;
    }
  }
}

std::vector<CalendarTime> CalendarStep::within(const ValueRange& range) const {
  std::vector<CalendarTime> marks;
  if (days() < resolutionOf(range)) {
    return marks;
  }
  const double tolerance = kEndTolerance * days();
  for (std::int64_t index = indexBefore(range.min);; ++index) {
    const CalendarTime mark = at(index);
    const double place = mark.days();
    if (place > range.max + tolerance) {
      return marks;
    }
    if (place >= range.min - tolerance) {
      marks.push_back(mark);
    }
  }
}

}  // namespace zyn
