#include "table/CellDate.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <string>

#include "common/Words.h"

namespace zyn::table {

namespace {

constexpr double kSecondsOfDay = 86400;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Takes a text apart from its beginning.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool isAtEnd() const { return rest_.empty(); }
  char front() const { return rest_.empty() ? '\0' : rest_.front(); }

  /// Passes the first of these signs that stands here.
  bool pass(std::string_view signs) {
    const bool found = !rest_.empty() && signs.find(rest_.front()) != signs.npos;
    rest_.remove_prefix(found ? 1 : 0);
    return found;
  }

  bool passBlanks() {
    const bool found = pass(" ");
    while (pass(" ")) {
    }
    return found;
  }

  std::string_view word() { return while_(isLetter); }
  std::string_view digits() { return while_(isDigit); }

 private:
  std::string_view while_(bool (*belongs)(char)) {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), belongs);
    const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest_;
};

/// The number that up to `most` digits make.
std::optional<int> numberOf(std::string_view digits, std::size_t most) {
  if (digits.empty() || digits.size() > most) {
    return std::nullopt;
  }
  int number = 0;
  for (const char digit : digits) {
    number = number * 10 + (digit - '0');
  }
  return number;
}

/// 1 for "Jan" and "January"; none for what is no name of a month.
std::optional<int> monthNamed(std::string_view word) {
  constexpr std::array<std::string_view, 12> kMonths = {
      "january", "february", "march",     "april",   "may",      "june",
      "july",    "august",   "september", "october", "november", "december"};
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (host::equalsIgnoringCase(word, kMonths[i]) ||
        host::equalsIgnoringCase(word, kMonths[i].substr(0, 3))) {
      return static_cast<int>(i + 1);
    }
  }
  return std::nullopt;
}

/// Four digits, or two of the years 1970 to 2069.
std::optional<int> yearOf(std::string_view digits, bool mayBeShort) {
  const auto year = numberOf(digits, 4);
  if (!year || (digits.size() != 4 && !(mayBeShort && digits.size() == 2))) {
    return std::nullopt;
  }
  return digits.size() == 4 ? *year : *year + (*year < 70 ? 2000 : 1900);
}

using Days = std::optional<double>;

Days daysOf(const std::optional<int>& year, const std::optional<int>& month,
            const std::optional<int>& day) {
  using namespace std::chrono;
  if (!year || !month || !day) {
    return std::nullopt;
  }
  const year_month_day date{std::chrono::year(*year),
                            std::chrono::month(static_cast<unsigned>(*month)),
                            std::chrono::day(static_cast<unsigned>(*day))};
  constexpr sys_days kFirst = sys_days(1899y / 12 / 30);
  return date.ok() ? Days((sys_days(date) - kFirst).count()) : std::nullopt;
}

CellDate certain(const Days& days) { return {days, days}; }

/// Behind a year: "-01-31", "-01".
CellDate restOfYear(Scanner& text, std::string_view year) {
  const char separator = text.front();
  if (!text.pass("-/.")) {
    return {};
  }
  const auto month = numberOf(text.digits(), 2);
  if (!text.pass({&separator, 1})) {
    return certain(separator == '-' ? daysOf(yearOf(year, false), month, 1) : std::nullopt);
  }
  return certain(daysOf(yearOf(year, false), month, numberOf(text.digits(), 2)));
}

/// Behind a day: "-Jan-2024", " January 2024".
CellDate restOfDay(Scanner& text, const std::optional<int>& day) {
  const auto month = monthNamed(text.word());
  text.pass(".,");
  text.pass("- ");
  return certain(daysOf(yearOf(text.digits(), false), month, day));
}

/// Behind a number of one or two digits.
CellDate restOfShort(Scanner& text, std::string_view digits) {
  const auto first = numberOf(digits, 2);
  const char separator = text.front();
  if (!text.pass("-/. ")) {
    return {};
  }
  text.passBlanks();
  if (isLetter(text.front()) || separator == ' ') {
    return restOfDay(text, first);
  }
  const auto second = numberOf(text.digits(), 2);
  if (!text.pass({&separator, 1})) {
    return {};
  }
  text.passBlanks();
  const auto year = yearOf(text.digits(), separator != '-');
  const Days dayFirst = daysOf(year, second, first);
  return {dayFirst, separator == '.' ? dayFirst : daysOf(year, first, second)};
}

/// "January 31, 2024".
CellDate restOfMonth(Scanner& text, std::string_view name) {
  text.pass(".");
  if (!text.passBlanks()) {
    return {};
  }
  const auto day = numberOf(text.digits(), 2);
  text.pass(",");
  text.passBlanks();
  return certain(daysOf(yearOf(text.digits(), false), monthNamed(name), day));
}

CellDate readDate(Scanner& text) {
  if (isLetter(text.front())) {
    return restOfMonth(text, text.word());
  }
  const std::string_view digits = text.digits();
  return digits.size() > 2 ? restOfYear(text, digits) : restOfShort(text, digits);
}

/// What lies behind the point of seconds.
double fractionOf(std::string_view digits) {
  double fraction = 0;
  for (std::size_t i = digits.size(); i > 0; --i) {
    fraction = (fraction + (digits[i - 1] - '0')) / 10;
  }
  return fraction;
}

/// Hours of a whole day, from those of half a day where the text says which half.
std::optional<int> hourOfDay(Scanner& text, int hour) {
  Scanner behind = text;
  behind.passBlanks();
  const std::string_view half = behind.word();
  const bool isMorning = host::equalsIgnoringCase(half, "am");
  if (!isMorning && !host::equalsIgnoringCase(half, "pm")) {
    return hour < 24 ? std::optional(hour) : std::nullopt;
  }
  text = behind;
  return hour >= 1 && hour <= 12 ? std::optional(hour % 12 + (isMorning ? 0 : 12)) : std::nullopt;
}

/// Minutes by which the clock is before UTC.
std::optional<int> readOffset(Scanner& text) {
  if (text.isAtEnd() || text.pass("Z")) {
    return 0;
  }
  const int sign = text.front() == '-' ? -1 : 1;
  if (!text.pass("+-")) {
    return std::nullopt;
  }
  const std::string_view digits = text.digits();
  const auto hours = numberOf(digits.substr(0, 2), 2);
  const auto minutes = digits.size() == 4 ? numberOf(digits.substr(2), 2)
                       : text.pass(":")   ? numberOf(text.digits(), 2)
                                          : std::optional(0);
  const bool isRead = digits.size() == 2 || digits.size() == 4;
  return isRead && hours && minutes ? std::optional(sign * (*hours * 60 + *minutes)) : std::nullopt;
}

/// The time of day, up to the end of the text, in seconds.
std::optional<double> readTime(Scanner& text) {
  const auto written = numberOf(text.digits(), 2);
  if (!written || !text.pass(":")) {
    return std::nullopt;
  }
  const auto minute = numberOf(text.digits(), 2);
  double second = 0;
  if (text.pass(":")) {
    const auto whole = numberOf(text.digits(), 2);
    second = whole.value_or(60) + (text.pass(".,") ? fractionOf(text.digits()) : 0);
  }
  const auto hour = hourOfDay(text, *written);
  text.passBlanks();
  const auto offset = readOffset(text);
  if (!hour || !offset || minute.value_or(60) > 59 || second >= 60) {
    return std::nullopt;
  }
  return (*hour * 60 + *minute - *offset) * 60 + second;
}

}  // namespace

CellDate cellDate(std::string_view cell) {
  Scanner text(cell);
  CellDate date = readDate(text);
  if (date.isNone() || text.isAtEnd()) {
    return date;
  }
  const bool isApart = text.pass("T") || (text.pass(","), text.passBlanks());
  const auto time = isApart ? readTime(text) : std::nullopt;
  if (!time || !text.isAtEnd()) {
    return {};
  }
  for (Days* const days : {&date.dayFirst, &date.monthFirst}) {
    if (*days) {
      **days += *time / kSecondsOfDay;
    }
  }
  return date;
}

}  // namespace zyn::table
