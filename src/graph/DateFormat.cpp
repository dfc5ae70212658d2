#include "graph/DateFormat.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <stdexcept>

namespace zyn {

namespace {

constexpr std::string_view kConversions = "YyCmBbhdejAauwHIpMSLfFTRD";

constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                    "Friday", "Saturday", "Sunday"};
constexpr std::size_t kShortName = 3;

std::string padded(std::int64_t number, std::size_t width, char with = '0') {
  std::string digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), with) + digits : digits;
}

std::string two(std::int64_t number) { return padded(number, 2); }

std::string name(std::string_view whole, bool isShort) {
  return std::string(isShort ? whole.substr(0, kShortName) : whole);
}

std::string dateText(char conversion, const CalendarTime& time, const CivilTime& civil) {
  const std::int64_t century = floorDivide(civil.year, 100);
  switch (conversion) {
    case 'Y':
      return yearText(civil.year);
    case 'y':
      return two(civil.year - 100 * century);
    case 'C':
      return two(century);
    case 'm':
      return two(civil.month);
    case 'B':
    case 'b':
    case 'h':
      return name(kMonths.at(static_cast<std::size_t>(civil.month - 1)), conversion != 'B');
    case 'd':
      return two(civil.day);
    case 'e':
      return padded(civil.day, 2, ' ');
    case 'j':
      return padded(time.dayOfYear(), 3);
    case 'A':
    case 'a':
      return name(kWeekdays.at(static_cast<std::size_t>(time.weekday())), conversion != 'A');
    case 'u':
      return std::to_string(time.weekday() + 1);
    case 'w':
      return std::to_string((time.weekday() + 1) % 7);
    default:
      return {};
  }
}

std::string clockText(char conversion, const CivilTime& civil) {
  switch (conversion) {
    case 'H':
      return two(civil.hour);
    case 'I':
      return two((civil.hour + 11) % 12 + 1);
    case 'p':
      return civil.hour < 12 ? "AM" : "PM";
    case 'M':
      return two(civil.minute);
    case 'S':
      return two(civil.second);
    case 'L':
      return padded(civil.microsecond / 1000, 3);
    case 'f':
      return padded(civil.microsecond, 6);
    default:
      return {};
  }
}

/// What a conversion stands for that is made of others.
std::string_view expansion(char conversion) {
  switch (conversion) {
    case 'F':
      return "%Y-%m-%d";
    case 'T':
      return "%H:%M:%S";
    case 'R':
      return "%H:%M";
    case 'D':
      return "%m/%d/%y";
    default:
      return {};
  }
}

void write(std::string& text, std::string_view format, const CalendarTime& time,
           const CivilTime& civil) {
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      text += format[i];
      continue;
    }
    const char conversion = format[++i];
    if (conversion == '%') {
      text += '%';
    } else if (const std::string_view several = expansion(conversion); !several.empty()) {
      write(text, several, time, civil);
    } else {
      text += dateText(conversion, time, civil) + clockText(conversion, civil);
    }
  }
}

}  // namespace

std::string yearText(std::int64_t year) {
  const std::string digits = padded(std::abs(year), 4);
  return year < 0 ? '-' + digits : year > 9999 ? '+' + digits : digits;
}

DateFormat::DateFormat(std::string_view format) : format_(format) {
  bool hasConversion = false;
  for (std::size_t i = format.find('%'); i != std::string_view::npos; i = format.find('%', i + 2)) {
    if (i + 1 == format.size()) {
      throw std::invalid_argument("it ends within a conversion");
    }
    const char conversion = format[i + 1];
    const bool isPercent = conversion == '%';
    if (!isPercent && kConversions.find(conversion) == std::string_view::npos) {
      throw std::invalid_argument(std::string("%") + conversion +
                                  " is no conversion of a date or a time");
    }
    hasConversion = hasConversion || !isPercent;
  }
  if (!hasConversion) {
    throw std::invalid_argument("it has no conversion such as %Y");
  }
}

std::string DateFormat::text(const CalendarTime& time) const {
  std::string text;
  write(text, format_, time, time.civil());
  return text;
}

}  // namespace zyn
