#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graph/AxisScale.h"
#include "graph/CalendarTime.h"

namespace zyn {

/// A step of the calendar: so many of a unit, counted so that it always falls on the same moments:
/// parts of a day from midnight, weeks from Monday, months from January, years from the year 0.
struct CalendarStep {
  enum class Unit { kMicrosecond, kDay, kMonth, kYear };

  Unit unit = Unit::kDay;
  std::int64_t count = 1;  ///< divides a day, or a year

  bool operator==(const CalendarStep&) const = default;

  /// How long it is, in the mean.
  double days() const;

  /// Whether so many of it are always the other one: days are not, of months.
  bool divides(const CalendarStep& other) const;

  /// The moments of the step in a range of dates; none of a step so small that neighbours would be
  /// the same double.
  std::vector<CalendarTime> within(const ValueRange& range) const;

 private:
  CalendarTime at(std::int64_t index) const;
  std::int64_t indexBefore(double days) const;
};

/// From a microsecond to 500,000,000 years, shortest first.
std::span<const CalendarStep> calendarSteps();

}  // namespace zyn
