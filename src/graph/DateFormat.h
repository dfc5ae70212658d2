#pragma once

#include <string>
#include <string_view>

#include "graph/CalendarTime.h"

namespace zyn {

/// A host's own way to write dates and times, with conversions as strftime has them: "%d.%m.%Y".
/// English names, whatever the locale.
///
/// %Y year, %y its last two digits, %C the others, %m month, %B %b %h its name, %d day, %e the same
/// with a space for a zero, %j day of the year, %A %a weekday, %u %w its number from Monday 1 or
/// Sunday 0, %H hour, %I of 12, %p AM or PM, %M minute, %S second, %L milliseconds, %f
/// microseconds, %F date, %T time, %R without seconds, %D %m/%d/%y, %% a percent sign.
class DateFormat {
 public:
  /// Throws std::invalid_argument that says what is wrong: no conversion, or an unknown one.
  explicit DateFormat(std::string_view format);

  std::string text(const CalendarTime& time) const;

 private:
  std::string format_;
};

/// A year with at least four digits: "0044"; from 10000 on with a sign, and below 0.
std::string yearText(std::int64_t year);

}  // namespace zyn
