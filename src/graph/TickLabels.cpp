#include "graph/TickLabels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace zyn {

namespace {

/// Digits up to which numbers are written out.
constexpr int kMostDigits = 7;
constexpr int kMostDigitsShort = 4;
/// Powers of ten that a logarithmic axis writes out, if it shows no others.
constexpr int kLeastPower = -4;
constexpr int kMostPower = 5;

bool isAnyZero(const Decimal& mark) { return mark.digits == 0; }

Decimal largest(std::span<const Decimal> marks) {
  Decimal found;
  for (const Decimal& mark : marks) {
    if (std::abs(mark.digits) > std::abs(found.digits)) {
      found = mark;
    }
  }
  return found;
}

/// Digits of the longest, zeros in front of a step's first decimal and behind whole numbers too.
int writtenDigits(const Decimal& mark) {
  return std::max(mark.magnitude(), 0) + 1 + mark.decimals();
}

/// The number next to all marks that has the fewest digits, as digits at the marks' exponent.
std::int64_t commonOffset(std::span<const Decimal> marks) {
  const std::int64_t first = marks.front().digits;
  const std::int64_t last = marks.back().digits;
  std::int64_t unit = 1;
  while (unit < last - first) {
    unit *= 10;
  }
  const std::int64_t below = floorDivide(first, unit) * unit;
  return last > below + unit || below < 0 ? below + unit : below;
}

/// "+1e6", "-1234567".
std::string signedText(const Decimal& offset) {
  const Decimal shortest = offset.stripped();
  const int power = shortest.magnitude();
  const std::string scientific =
      Decimal{shortest.digits, shortest.exponent - power}.text() + "e" + std::to_string(power);
  const bool isWritten = power <= 2 * kMostDigits && power >= -kMostDigits;
  const std::string plain = isWritten ? shortest.text() : scientific;
  std::string text = offset.digits > 0 ? "+" : "";
  return text.append(plain.size() <= scientific.size() ? plain : scientific);
}

std::vector<std::string> textsTimesPower(std::span<const Decimal> marks, int power) {
  std::vector<std::string> texts;
  for (const Decimal& mark : marks) {
    const Decimal scaled{mark.digits, mark.exponent - power};
    texts.push_back(scaled.text(scaled.decimals()));
  }
  return texts;
}

/// "1.5e9" each; 0 is so whatever the power.
TickLabels scientificLabels(std::span<const Decimal> marks) {
  const int power = largest(marks).magnitude();
  TickLabels labels{textsTimesPower(marks, power), {}};
  for (std::size_t i = 0; i < marks.size(); ++i) {
    labels.texts[i] = isAnyZero(marks[i]) ? "0" : labels.texts[i] + "e" + std::to_string(power);
  }
  return labels;
}

void append(std::string& text, const std::string& more) {
  if (!text.empty() && !more.empty()) {
    text += ' ';
  }
  text += more;
}

std::string decadeText(const Decimal& mark, bool isWritten, Notation notation) {
  if (isWritten) {
    return mark.text();
  }
  if (notation == Notation::kAlone) {
    return std::to_string(mark.digits) + "e" + std::to_string(mark.exponent);
  }
  const std::string power = "10" + superscript(mark.exponent);
  return mark.digits == 1 ? power : std::to_string(mark.digits) + "x" + power;
}

std::string two(int number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string monthDayText(const CivilTime& civil) { return two(civil.month) + "-" + two(civil.day); }

std::string dateText(const CivilTime& civil) {
  return yearText(civil.year) + "-" + monthDayText(civil);
}

/// Decimals of seconds that multiples of so many microseconds have.
int secondDecimals(std::int64_t microseconds) {
  int decimals = 6;
  for (std::int64_t rest = microseconds; decimals > 0 && rest % 10 == 0; rest /= 10) {
    --decimals;
  }
  return decimals;
}

std::string minuteText(const CivilTime& civil) { return two(civil.hour) + ":" + two(civil.minute); }

std::string secondText(const CivilTime& civil, std::int64_t step) {
  const std::int64_t microseconds = civil.second * CalendarTime::kPerSecond + civil.microsecond;
  const int decimals = secondDecimals(step);
  Decimal seconds{microseconds, -6};
  for (; seconds.exponent < -decimals; ++seconds.exponent) {
    seconds.digits /= 10;
  }
  std::string text = civil.second < 10 ? "0" : "";
  return text.append(seconds.text());
}

/// What of the marks' dates and times is the same in all.
struct CommonParts {
  bool isYear = true;
  bool isDay = true;
  bool isMinute = true;
};

CommonParts commonParts(const std::vector<CivilTime>& times) {
  CommonParts common;
  const CivilTime& first = times.front();
  for (const CivilTime& time : times) {
    common.isYear = common.isYear && time.year == first.year;
    common.isDay = common.isDay && common.isYear && monthDayText(time) == monthDayText(first);
    common.isMinute = common.isMinute && common.isDay && minuteText(time) == minuteText(first);
  }
  return common;
}

TickLabels timeLabels(const std::vector<CivilTime>& times, std::int64_t step, Notation notation) {
  constexpr std::int64_t kMinute = 60 * CalendarTime::kPerSecond;
  const CommonParts common = commonParts(times);
  const CivilTime& first = times.front();
  const bool isShort = notation == Notation::kShort;
  const bool hasDay = notation == Notation::kAlone || !common.isDay;
  const bool hasYear = hasDay && !(isShort && common.isYear);
  const bool hasMinute = !(isShort && common.isMinute && step < kMinute);
  TickLabels labels;
  for (const CivilTime& time : times) {
    std::string text = hasYear ? dateText(time) : hasDay ? monthDayText(time) : "";
    std::string clock = hasMinute ? minuteText(time) : "";
    if (step < kMinute) {
      clock += clock.empty() ? "" : ":";
      clock += secondText(time, step);
    }
    append(text, clock);
    labels.texts.push_back(std::move(text));
  }
  labels.offset = !hasDay ? dateText(first) : !hasYear ? yearText(first.year) : "";
  if (!hasMinute) {
    append(labels.offset, minuteText(first));
  }
  return labels;
}

}  // namespace

TickLabels numberLabels(std::span<const Decimal> marks, Notation notation) {
  const int most = notation == Notation::kShort ? kMostDigitsShort : kMostDigits;
  const Decimal longest = largest(marks);
  if (writtenDigits(longest) <= most) {
    return {textsTimesPower(marks, 0), {}};
  }
  if (notation == Notation::kAlone) {
    return scientificLabels(marks);
  }
  std::vector<Decimal> rest(marks.begin(), marks.end());
  std::string offset;
  const bool isLong = longest.magnitude() - longest.exponent >= most;
  if (const std::int64_t common = commonOffset(marks); isLong && marks.size() > 1 && common != 0) {
    offset = signedText({common, longest.exponent});
    for (Decimal& mark : rest) {
      mark.digits -= common;
    }
  }
  const Decimal longestRest = largest(rest);
  int power = 0;
  if (writtenDigits(longestRest) > most) {
    power = static_cast<int>(3 * floorDivide(longestRest.magnitude(), 3));
  }
  TickLabels labels{textsTimesPower(rest, power), {}};
  if (power != 0) {
    labels.offset = "x10" + superscript(power);
  }
  append(labels.offset, offset);
  return labels;
}

TickLabels decadeLabels(std::span<const Decimal> marks, Notation notation) {
  const bool isWritten = std::ranges::all_of(marks, [](const Decimal& mark) {
    return mark.exponent >= kLeastPower && mark.exponent <= kMostPower;
  });
  TickLabels labels;
  for (const Decimal& mark : marks) {
    labels.texts.push_back(decadeText(mark, isWritten, notation));
  }
  return labels;
}

TickLabels calendarLabels(std::span<const CalendarTime> marks, const CalendarStep& step,
                          Notation notation) {
  std::vector<CivilTime> times;
  for (const CalendarTime& mark : marks) {
    times.push_back(mark.civil());
  }
  if (step.unit == CalendarStep::Unit::kMicrosecond) {
    return timeLabels(times, step.count, notation);
  }
  const bool isShort = step.unit == CalendarStep::Unit::kDay && notation == Notation::kShort &&
                       commonParts(times).isYear;
  TickLabels labels{{}, isShort ? yearText(times.front().year) : ""};
  for (const CivilTime& time : times) {
    labels.texts.push_back(step.unit == CalendarStep::Unit::kYear ? yearText(time.year)
                           : step.unit == CalendarStep::Unit::kMonth
                               ? yearText(time.year) + "-" + two(time.month)
                           : isShort ? monthDayText(time)
                                     : dateText(time));
  }
  return labels;
}

TickFormat tickFormat(AxisKind kind, std::string_view format) {
  if (format.empty()) {
    return {};
  }
  if (kind == AxisKind::kDate) {
    return DateFormat(format);
  }
  return NumberFormat(format);
}

}  // namespace zyn
