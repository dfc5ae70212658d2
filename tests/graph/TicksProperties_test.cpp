// What holds for the ticks of any axis, over random ranges, sizes and scales of text; and where
// there are less than three, a search of its own over all steps finds no more.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <sstream>

#include "graph/Ticks.h"

namespace zyn::test {
namespace {

constexpr int kRanges = 100'000;
constexpr double kGreatest = 1e308;

struct Case {
  AxisScale scale;
  bool isUpright = false;
  double textScale = 1;
  TickRoom room{};
};

/// Characters of 0.55 em by 0.9 em.
double extentOf(std::string_view text, bool isUpright, double textScale) {
  constexpr double kEm = 12;
  const auto isCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  };
  const auto count = static_cast<double>(std::ranges::count_if(text, isCharacter));
  return textScale * kEm * (isUpright ? 0.9 : 0.55 * count);
}

class RandomCases {
 public:
  Case next() {
    Case made;
    do {
      made.scale.kind = static_cast<AxisKind>(whole(0, 2));
      chooseRange(made.scale);
    } while (!made.scale.isValid());
    made.isUpright = whole(0, 1) == 1;
    made.textScale = 1 + part() * 2;
    const double size =
        made.isUpright ? 80 * std::pow(3000.0 / 80, part()) : 120 * std::pow(4000.0 / 120, part());
    made.scale.pixelFrom = size * part() / 3;
    made.scale.pixelTo = size * (1 - part() / 3);
    if (made.isUpright) {
      std::swap(made.scale.pixelFrom, made.scale.pixelTo);
    }
    made.scale.isInverted = whole(0, 3) == 0;
    made.room = {.first = 0,
                 .last = size,
                 .gap = 5 * made.textScale,
                 .pitch = 60 * made.textScale,
                 .extentOf = [isUpright = made.isUpright, scale = made.textScale](auto text) {
                   return extentOf(text, isUpright, scale);
                 }};
    return made;
  }

 private:
  double part() { return std::uniform_real_distribution<double>(0, 1)(random_); }
  int whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  double sized(double least, double most) {
    return std::pow(10.0, least + (most - least) * part());
  }

  void chooseRange(AxisScale& scale) {
    double span = sized(-300, 300);
    double offset = whole(0, 3) == 0 ? 0 : (whole(0, 1) == 0 ? span : -span) * sized(-1, 15);
    if (scale.kind == AxisKind::kLog10) {
      scale.min = sized(-300, 300);
      scale.max = scale.min * sized(0, 10) * (whole(0, 1) == 0 ? sized(0, 300) : 1);
      if (whole(0, 3) == 0) {
        scale.max = scale.min + scale.min / sized(0, 15);
      }
      scale.max = std::min(scale.max, kGreatest);
      return;
    }
    if (whole(0, 2) == 0 || (scale.kind == AxisKind::kDate && whole(0, 3) > 0)) {
      span = sized(-10, 7);
      offset = 2e6 * (part() - 0.5);
    }
    const bool hasRoundEnd = whole(0, 3) == 0;
    scale.min =
        std::clamp(hasRoundEnd ? std::round(offset / span) * span : offset, -kGreatest, kGreatest);
    scale.max = std::clamp(scale.min + span, -kGreatest, kGreatest);
  }

  std::mt19937_64 random_{1};
};

std::string describe(const Case& made, const Ticks& ticks) {
  std::ostringstream text;
  text.precision(17);
  text << static_cast<int>(made.scale.kind) << " [" << made.scale.min << ", " << made.scale.max
       << "] " << made.scale.length() << " pixels, text " << made.textScale
       << (made.isUpright ? " upright" : "") << ":";
  for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
    text << " \"" << ticks.labels[i] << "\" " << ticks.major[i] << ",";
  }
  text << " offset \"" << ticks.offset << "\"";
  return text.str();
}

// Reading labels back.

/// "⁻¹²" at the front; as much as there is of it.
int readRaised(std::string_view& text) {
  static constexpr std::array<std::string_view, 11> kRaised{"⁰", "¹", "²", "³", "⁴", "⁵",
                                                            "⁶", "⁷", "⁸", "⁹", "⁻"};
  std::string plain;
  for (bool goesOn = true; goesOn;) {
    goesOn = false;
    for (std::size_t i = 0; i < kRaised.size(); ++i) {
      if (text.starts_with(kRaised.at(i))) {
        plain += i == 10 ? '-' : static_cast<char>('0' + i);
        text.remove_prefix(kRaised.at(i).size());
        goesOn = true;
      }
    }
  }
  return std::atoi(plain.c_str());
}

/// Exact to the last digit of a label: of 64 binary digits, offsets to 1e15 leave these.
using Exact = long double;

Exact readNumber(const std::string& text) { return std::strtold(text.c_str(), nullptr); }

Exact powerOfTen(int exponent) {
  constexpr int kLeast = -700;
  static const std::vector<Exact> powers = [] {
    std::vector<Exact> all;
    for (int power = kLeast; power <= -kLeast; ++power) {
      all.push_back(readNumber("1e" + std::to_string(power)));
    }
    return all;
  }();
  return powers.at(static_cast<std::size_t>(exponent - kLeast));
}

struct NumberOffset {
  int power = 0;
  Exact added = 0;
};

NumberOffset readOffset(std::string_view text) {
  NumberOffset offset;
  if (text.starts_with("x10")) {
    text.remove_prefix(3);
    offset.power = readRaised(text);
  }
  if (const std::size_t sign = text.find_first_of("+-"); sign != std::string_view::npos) {
    offset.added = readNumber(std::string(text.substr(sign)));
  }
  return offset;
}

std::size_t decimalsOf(const std::string& label) {
  const std::size_t point = label.find('.');
  return point == std::string::npos ? 0 : label.size() - point - 1;
}

bool isDecade(const std::string& label) {
  return label.find("10⁻") != std::string::npos ||
         (label.find("10") != std::string::npos && label.back() < 0);
}

/// "10⁻⁵", "2x10⁵"
Exact readDecade(const std::string& label) {
  std::string_view rest(label);
  const std::size_t times = rest.find('x');
  const Exact digit = times == std::string_view::npos ? 1 : readNumber(label);
  rest.remove_prefix((times == std::string_view::npos ? 0 : times + 1) + 2);
  return digit * powerOfTen(readRaised(rest));
}

/// A tick that was moved to the end which it missed by rounding.
bool isEnd(const AxisScale& scale, double value) {
  return value == scale.min || value == scale.max;
}

bool isNearest(Exact number, double value) {
  const auto nearest = static_cast<double>(number);
  return nearest == value || std::nextafter(nearest, value) == value;
}

bool isRoundStep(Exact step) {
  const int exponent = static_cast<int>(std::floor(std::log10(step) + 1e-9L));
  const Exact digit = step / powerOfTen(exponent);
  return std::ranges::any_of(std::array<Exact, 3>{1, 2, 5},
                             [&](Exact round) { return std::abs(digit - round) < 1e-6L; });
}

void expectNumbers(const Case& made, const Ticks& ticks) {
  const NumberOffset offset = readOffset(ticks.offset);
  const Exact unit = powerOfTen(offset.power);
  std::vector<Exact> digits;
  for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
    ASSERT_EQ(decimalsOf(ticks.labels[i]), decimalsOf(ticks.labels[0]));
    digits.push_back(readNumber(ticks.labels[i]));
    const Exact number = digits.back() * unit + offset.added;
    const Exact last = unit * powerOfTen(-static_cast<int>(decimalsOf(ticks.labels[i])));
    const bool isClose = std::abs(number - static_cast<Exact>(ticks.major[i])) <= last / 2;
    ASSERT_TRUE(isNearest(number, ticks.major[i]) || (isEnd(made.scale, ticks.major[i]) && isClose))
        << ticks.labels[i];
  }
  for (std::size_t i = 1; i < digits.size(); ++i) {
    const Exact step = digits[i] - digits[i - 1];
    ASSERT_TRUE(isRoundStep(step));
    ASSERT_NEAR(static_cast<double>(step / (digits[1] - digits[0])), 1, 1e-9);
  }
}

Exact readPlainOrDecade(const std::string& label) {
  return isDecade(label) ? readDecade(label) : readNumber(label);
}

/// Whether all labels are 1 to 9 times a power of ten, with the same multiples of each.
bool expectDecades(const Case& made, const Ticks& ticks) {
  std::vector<int> digits;
  std::vector<int> powers;
  for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
    const Exact number = readPlainOrDecade(ticks.labels[i]);
    const int power = static_cast<int>(std::floor(std::log10(number) + 1e-12L));
    const Exact digit = number / powerOfTen(power);
    if (std::abs(digit - std::round(digit)) > 1e-9L) {
      return false;
    }
    digits.push_back(static_cast<int>(std::round(digit)));
    powers.push_back(power);
    EXPECT_TRUE(isNearest(number, ticks.major[i]) || isEnd(made.scale, ticks.major[i]));
  }
  const std::set<int> kinds(digits.begin(), digits.end());
  if (kinds == std::set<int>{1}) {
    for (std::size_t i = 2; i < powers.size(); ++i) {
      EXPECT_EQ(powers[i] - powers[i - 1], powers[1] - powers[0]);
    }
    return true;
  }
  const bool isSome = std::ranges::includes(std::set<int>{1, 2, 5}, kinds);
  for (std::size_t i = 1; i < digits.size(); ++i) {
    const int before = digits[i - 1];
    const int next = isSome ? (before == 1 ? 2 : before == 2 ? 5 : 10) : before + 1;
    if (digits[i] + (powers[i] > powers[i - 1] ? 9 : 0) !=
        (next == 10 && digits[i] != 1 ? -1 : next)) {
      return false;
    }
  }
  return true;
}

// Reading dates back, by the calendar of the standard library.

struct ReadDate {
  std::optional<Exact> days;
  Exact unit = 0;  ///< days of its last digit
};

ReadDate readDate(const std::string& label, const std::string& offset) {
  std::string text = label;
  const auto count = [](const std::string& of, char what) { return std::ranges::count(of, what); };
  const bool isTime = count(label, ':') > 0 || count(label, '.') > 0;
  if (!offset.empty()) {
    const bool isMinuteOff = count(offset, ':') > 0;
    const bool isDayOff = offset.find('-', 1) != std::string::npos;
    text = offset + (isMinuteOff ? ":" : isDayOff ? " " : "-") + label;
  }
  ReadDate read;
  const std::size_t dash = text.find('-', 1);
  const long long year = std::stoll(text);
  if (std::abs(year) > 32000) {
    return read;
  }
  unsigned month = 1;
  unsigned day = 1;
  read.unit = 366;
  std::string rest = dash == std::string::npos ? "" : text.substr(dash + 1);
  if (!rest.empty()) {
    month = static_cast<unsigned>(std::stoi(rest));
    read.unit = 31;
  }
  if (rest.size() >= 5) {
    day = static_cast<unsigned>(std::stoi(rest.substr(3)));
    read.unit = 1;
  }
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(year)),
                                         std::chrono::month(month), std::chrono::day(day));
  if (!date.ok()) {
    ADD_FAILURE() << text;
    return read;
  }
  const std::chrono::sys_days epoch = std::chrono::year(1899) / 12 / 30;
  Exact days = static_cast<Exact>((std::chrono::sys_days(date) - epoch).count());
  if (rest.size() >= 11) {
    const std::string clock = rest.substr(6);
    const Exact seconds = clock.size() > 5 ? readNumber(clock.substr(6)) : 0;
    days += (std::stoi(clock) * 3600 + std::stoi(clock.substr(3)) * 60 + seconds) / 86400;
    read.unit = clock.size() > 5 ? powerOfTen(-static_cast<int>(decimalsOf(clock))) / 86400
                                 : Exact(1) / 1440;
  }
  EXPECT_TRUE(!isTime || rest.size() >= 11) << text;
  read.days = days;
  return read;
}

bool isAmong(Exact step, std::initializer_list<Exact> steps) {
  return std::ranges::any_of(steps, [&](Exact one) { return std::abs(step / one - 1) < 1e-5L; });
}

void expectDates(const Case& made, const Ticks& ticks) {
  std::vector<Exact> days;
  Exact unit = 0;
  for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
    const ReadDate read = readDate(ticks.labels[i], ticks.offset);
    if (!read.days) {
      return;
    }
    days.push_back(*read.days);
    unit = read.unit;
    const Exact error = std::abs(*read.days - static_cast<Exact>(ticks.major[i]));
    constexpr Exact kRounding = 2e-19L;  // of a day and its parts as read above
    ASSERT_TRUE(isNearest(*read.days, ticks.major[i]) || error <= kRounding ||
                (isEnd(made.scale, ticks.major[i]) && error <= unit / 2))
        << ticks.labels[i];
  }
  for (std::size_t i = 1; i < days.size(); ++i) {
    const Exact step = days[i] - days[i - 1];
    const Exact seconds = step * 86400;
    if (unit == 366) {
      ASSERT_TRUE(isRoundStep(std::round(step / 365.2425L)));
    } else if (unit == 31) {
      const Exact months = std::round(step / 30.44L);
      ASSERT_TRUE(months == 1 || months == 3 || months == 6);
    } else if (step >= 0.99L) {
      ASSERT_TRUE(step == 1 || step == 2 || step == 7 || step == 14);
    } else if (seconds >= 0.99L) {
      ASSERT_TRUE(isAmong(seconds, {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200,
                                    10800, 21600, 43200}));
    } else {
      ASSERT_TRUE(isRoundStep(std::round(seconds * 1e6L)));
    }
  }
}

void expectOrder(const Case& made, const Ticks& ticks) {
  const auto isInside = [&](double value) {
    return value >= made.scale.min && value <= made.scale.max;
  };
  for (const std::vector<double>* values : {&ticks.major, &ticks.minor}) {
    ASSERT_TRUE(std::ranges::all_of(*values, isInside));
    ASSERT_EQ(std::ranges::adjacent_find(*values, std::greater_equal<>()), values->end());
  }
  std::vector<double> common;
  std::ranges::set_intersection(ticks.major, ticks.minor, std::back_inserter(common));
  ASSERT_TRUE(common.empty());
}

void expectRoom(const Case& made, const Ticks& ticks) {
  ASSERT_EQ(ticks.labels.size(), ticks.major.size());
  ASSERT_EQ(ticks.labelPixels.size(), ticks.major.size());
  std::vector<std::pair<double, double>> boxes;
  for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
    const std::string& label = ticks.labels[i];
    ASSERT_FALSE(label.empty());
    ASSERT_TRUE(i == 0 || label != ticks.labels[i - 1]);
    ASSERT_FALSE(label[0] == '-' && label.find_first_not_of("-0.") == std::string::npos);
    const double half = extentOf(label, made.isUpright, made.textScale) / 2;
    const double middle = ticks.labelPixels[i];
    ASSERT_GE(middle - half, made.room.first - 1e-9);
    ASSERT_LE(middle + half, made.room.last + 1e-9);
    ASSERT_LE(std::abs(made.scale.pixelOf(ticks.major[i]) - middle), half + 1e-9);
    boxes.emplace_back(middle - half, middle + half);
  }
  std::ranges::sort(boxes);
  for (std::size_t i = 1; i < boxes.size(); ++i) {
    ASSERT_GE(boxes[i].first - boxes[i - 1].second, made.room.gap - 1e-9);
  }
}

void expectSteps(const Case& made, const Ticks& ticks) {
  const bool hasDays = ticks.offset.ends_with('d');
  if (made.scale.kind == AxisKind::kDate && !hasDays) {
    expectDates(made, ticks);
  } else if (made.scale.kind == AxisKind::kLog10 && ticks.offset.empty() &&
             (std::ranges::any_of(ticks.labels, isDecade) || expectDecades(made, ticks))) {
    ASSERT_TRUE(expectDecades(made, ticks));
  } else {
    if (made.scale.kind == AxisKind::kLog10) {
      ASSERT_LE(made.scale.max / 10, made.scale.min);
    }
    expectNumbers(made, ticks);
  }
}

// All steps that there are, one after the other, and the most ticks of any whose labels have room.

std::size_t sizeWithRoom(const Case& made, const std::vector<double>& values,
                         const TickLabels& labels) {
  double end = -std::numeric_limits<double>::infinity();
  std::vector<std::pair<double, std::string>> placed;
  for (std::size_t i = 0; i < values.size(); ++i) {
    placed.emplace_back(made.scale.pixelOf(values[i]), labels.texts[i]);
  }
  std::ranges::sort(placed);
  for (const auto& [pixel, label] : placed) {
    const double extent = extentOf(label, made.isUpright, made.textScale);
    if (extent > made.room.last - made.room.first) {
      return 0;
    }
    const double begin = std::clamp(pixel - extent / 2, made.room.first, made.room.last - extent);
    if (begin < end + made.room.gap + 1e-6) {
      return 0;
    }
    end = begin + extent;
  }
  for (std::size_t i = 1; i < labels.texts.size(); ++i) {
    if (labels.texts[i] == labels.texts[i - 1]) {
      return 0;
    }
  }
  return values.size();
}

template <class Mark, class LabelsOf>
std::size_t mostOf(const Case& made, const std::vector<Mark>& marks,
                   const std::vector<double>& values, const LabelsOf& labelsOf) {
  // Those of one character each have no room either.
  const double least = extentOf("1", made.isUpright, made.textScale) + made.room.gap;
  const auto count = static_cast<double>(values.size());
  if (values.empty() || count * least > made.room.last - made.room.first + made.room.gap) {
    return 0;
  }
  return std::max(sizeWithRoom(made, values, labelsOf(marks, Notation::kFull)),
                  sizeWithRoom(made, values, labelsOf(marks, Notation::kShort)));
}

bool isInRange(const AxisScale& scale, double value) {
  return value >= scale.min && value <= scale.max;
}

std::size_t mostNumbers(const Case& made) {
  const AxisScale& scale = made.scale;
  const Exact span = static_cast<Exact>(scale.max) - static_cast<Exact>(scale.min);
  const double size = std::max(std::abs(scale.min), std::abs(scale.max));
  const Exact grain = static_cast<Exact>(size) - std::nextafter(size, 0.0);
  const auto labelsOf = [&](const std::vector<Decimal>& marks, Notation notation) {
    return numberLabels(marks, notation);
  };
  std::size_t most = 0;
  for (int exponent = -322; exponent <= 308; ++exponent) {
    for (const int digit : {1, 2, 5}) {
      const Exact step = digit * powerOfTen(exponent);
      if (span / step > scale.length() || step > 2 * span || step < grain) {
        continue;
      }
      std::vector<Decimal> marks;
      std::vector<double> values;
      const auto first =
          static_cast<std::int64_t>(std::floor(static_cast<Exact>(scale.min) / step));
      const auto count = static_cast<std::int64_t>(span / step) + 2;
      for (std::int64_t factor = first; factor <= first + count; ++factor) {
        const auto value = static_cast<double>(static_cast<Exact>(factor) * step);
        if (isInRange(scale, value)) {
          marks.push_back({factor * digit, exponent});
          values.push_back(value);
        }
      }
      most = std::max(most, mostOf(made, marks, values, labelsOf));
    }
  }
  return most;
}

std::size_t mostDecades(const Case& made) {
  const std::array<std::vector<int>, 3> kinds{{{1}, {1, 2, 5}, {1, 2, 3, 4, 5, 6, 7, 8, 9}}};
  const auto labelsOf = [&](const std::vector<Decimal>& marks, Notation notation) {
    return decadeLabels(marks, notation);
  };
  std::size_t most = 0;
  for (const std::vector<int>& digits : kinds) {
    for (const int every : {1, 2, 3, 5, 10, 20, 30, 50, 100, 200}) {
      std::vector<Decimal> marks;
      std::vector<double> values;
      for (int exponent = -320; exponent <= 308; ++exponent) {
        for (const int digit : digits) {
          const auto value = static_cast<double>(digit * powerOfTen(exponent));
          if (exponent % every == 0 && isInRange(made.scale, value)) {
            marks.push_back({digit, exponent});
            values.push_back(value);
          }
        }
      }
      if (every == 1 || digits.size() == 1) {
        most = std::max(most, mostOf(made, marks, values, labelsOf));
      }
    }
  }
  return made.scale.max / 10 <= made.scale.min ? std::max(most, mostNumbers(made)) : most;
}

/// Walks through the years of the standard library; not searched for ranges beyond these. Where
/// there is no calendar, days are numbers.
std::size_t mostDates(const Case& made) {
  using Unit = CalendarStep::Unit;
  const AxisScale& scale = made.scale;
  constexpr double kEnd = 1e7;
  if (!CalendarTime::isDate(scale.min) || !CalendarTime::isDate(scale.max) ||
      scale.max - scale.min < 5e-6 / 86400) {
    return mostNumbers(made);
  }
  if (scale.min < -kEnd || scale.max > kEnd) {
    return 0;
  }
  std::size_t most = 0;
  const auto tryStep = [&](const CalendarStep& step, const std::vector<CalendarTime>& marks) {
    std::vector<CalendarTime> inside;
    std::vector<double> values;
    for (const CalendarTime& mark : marks) {
      const double value =
          static_cast<double>(mark.day) + static_cast<double>(mark.microsecond) / 864e8;
      if (isInRange(scale, value)) {
        inside.push_back(mark);
        values.push_back(value);
      }
    }
    most = std::max(most, mostOf(made, inside, values, [&](const auto& all, Notation notation) {
                      return calendarLabels(all, step, notation);
                    }));
  };
  const double span = scale.max - scale.min;
  std::vector<std::int64_t> parts;
  for (std::int64_t power = 1; power < 1'000'000; power *= 10) {
    parts.insert(parts.end(), {power, 2 * power, 5 * power});
  }
  for (const std::int64_t second :
       {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200}) {
    parts.push_back(second * 1'000'000);
  }
  const double size = std::max(std::abs(scale.min), std::abs(scale.max));
  for (const std::int64_t part : parts) {
    const double step = static_cast<double>(part) / 864e8;
    if (span / step <= scale.length() && step <= 2 * span &&
        step >= size - std::nextafter(size, 0)) {
      std::vector<CalendarTime> marks;
      const auto first = static_cast<std::int64_t>(std::floor(scale.min));
      for (std::int64_t day = first; day <= first + static_cast<std::int64_t>(span) + 1; ++day) {
        const double passed = (scale.min - static_cast<double>(day)) * 864e8;
        const auto from = std::max<std::int64_t>(
            0, static_cast<std::int64_t>(passed / static_cast<double>(part)) - 2);
        const auto until = (span + 1e-12) * 864e8 / static_cast<double>(part) + 5;
        for (std::int64_t i = from;
             i * part < 86'400'000'000 && static_cast<double>(i - from) < until; ++i) {
          marks.push_back({day, i * part});
        }
      }
      tryStep({Unit::kMicrosecond, part}, marks);
    }
  }
  std::array<std::vector<CalendarTime>, 4> days;
  std::array<std::vector<CalendarTime>, 3> months;
  std::vector<std::vector<CalendarTime>> years(20);
  if (span < 40000) {
    for (auto day = static_cast<std::int64_t>(std::floor(scale.min));
         static_cast<double>(day) <= scale.max; ++day) {
      const CalendarTime mark{day, 0};
      days[0].push_back(mark);
      if (day % 2 == 0) {
        days[1].push_back(mark);
      }
      if (((day - 2) % 7 + 7) % 7 == 0) {
        days[2].push_back(mark);
      }
      if (((day - 2) % 14 + 14) % 14 == 0) {
        days[3].push_back(mark);
      }
    }
  }
  const std::chrono::sys_days epoch = std::chrono::year(1899) / 12 / 30;
  const auto yearOf = [](double date) {
    return static_cast<int>(std::floor(date / 365.2425)) + 1900;
  };
  for (int year = yearOf(scale.min) - 1; year <= yearOf(scale.max) + 1; ++year) {
    for (const unsigned month : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 11U, 12U}) {
      const std::chrono::sys_days date = std::chrono::year(year) / std::chrono::month(month) / 1;
      const CalendarTime mark{(date - epoch).count(), 0};
      if (!isInRange(scale, static_cast<double>(mark.day))) {
        continue;
      }
      months[0].push_back(mark);
      if (month % 3 == 1) {
        months[1].push_back(mark);
      }
      if (month % 6 == 1) {
        months[2].push_back(mark);
      }
      for (std::size_t i = 0; i < years.size() && month == 1; ++i) {
        const int step = std::array{1, 2, 5}.at(i % 3) * static_cast<int>(std::pow(10, i / 3));
        if (year % step == 0) {
          years[i].push_back(mark);
        }
      }
    }
  }
  for (std::size_t i = 0; i < days.size(); ++i) {
    tryStep({Unit::kDay, std::array{1, 2, 7, 14}.at(i)}, days.at(i));
  }
  for (std::size_t i = 0; i < months.size(); ++i) {
    tryStep({Unit::kMonth, std::array{1, 3, 6}.at(i)}, months.at(i));
  }
  for (const auto& marks : years) {
    tryStep({Unit::kYear, 1}, marks);
  }
  return most;
}

std::size_t mostTicks(const Case& made) {
  switch (made.scale.kind) {
    case AxisKind::kLinear:
      return mostNumbers(made);
    case AxisKind::kLog10:
      return mostDecades(made);
    default:
      return mostDates(made);
  }
}

TEST(TicksPropertiesTest, HoldForAnyAxis) {
  RandomCases cases;
  int few = 0;
  for (int i = 0; i < kRanges && !testing::Test::HasFailure(); ++i) {
    const Case made = cases.next();
    const Ticks ticks = chooseTicks(made.scale, made.room);
    expectOrder(made, ticks);
    expectRoom(made, ticks);
    expectSteps(made, ticks);
    if (ticks.major.size() < 3) {
      ++few;
      EXPECT_LT(mostTicks(made), 3U);
    }
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << describe(made, ticks);
    }
  }
  // Pictures of 120 by 80 with text of three times its size have no room for them.
  EXPECT_LT(few, kRanges / 3);
}

/// The search finds as many as three where the chooser does: it would not pass if it found nothing.
TEST(TicksPropertiesTest, TheSearchFindsThemToo) {
  RandomCases cases;
  int same = 0;
  for (int i = 0; i < 300; ++i) {
    const Case made = cases.next();
    const Ticks ticks = chooseTicks(made.scale, made.room);
    if (made.scale.kind != AxisKind::kDate) {
      EXPECT_EQ(mostTicks(made) >= 3, ticks.major.size() >= 3) << describe(made, ticks);
      ++same;
    }
  }
  EXPECT_GT(same, 150);
}

}  // namespace
}  // namespace zyn::test
