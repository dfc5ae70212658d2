#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zyn::test {

/// "⁻¹²" at the front; as much as there is of it.
inline int readRaised(std::string_view& text) {
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

inline Exact readNumber(const std::string& text) { return std::strtold(text.c_str(), nullptr); }

inline Exact powerOfTen(int exponent) {
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

inline NumberOffset readOffset(std::string_view text) {
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

inline std::size_t decimalsOf(const std::string& label) {
  const std::size_t point = label.find('.');
  return point == std::string::npos ? 0 : label.size() - point - 1;
}

inline bool isDecade(const std::string& label) {
  return label.find("10⁻") != std::string::npos ||
         (label.find("10") != std::string::npos && label.back() < 0);
}

/// "10⁻⁵", "2x10⁵"
inline Exact readDecade(const std::string& label) {
  std::string_view rest(label);
  const std::size_t times = rest.find('x');
  const Exact digit = times == std::string_view::npos ? 1 : readNumber(label);
  rest.remove_prefix((times == std::string_view::npos ? 0 : times + 1) + 2);
  return digit * powerOfTen(readRaised(rest));
}

/// A tick that was moved to the end which it missed by rounding.

inline Exact readPlainOrDecade(const std::string& label) {
  return isDecade(label) ? readDecade(label) : readNumber(label);
}

/// Whether all labels are 1 to 9 times a power of ten, with the same multiples of each.

/// A date read back, by the calendar of the standard library; none for years that this has not.
struct ReadDate {
  std::optional<Exact> days;
  Exact unit = 0;  ///< days of its last digit
};

inline ReadDate readDate(const std::string& label, const std::string& offset) {
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

}  // namespace zyn::test
