#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "graph/LabelReader.h"
#include "graph/RandomAxes.h"
#include "graph/Ticks.h"

namespace zyn::test {

// All steps that there are, one after the other, and the most ticks of any whose labels have room.

inline std::size_t sizeWithRoom(const AxisCase& made, const std::vector<double>& values,
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
inline std::size_t mostOf(const AxisCase& made, const std::vector<Mark>& marks,
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

inline bool isInRange(const AxisScale& scale, double value) {
  return value >= scale.min && value <= scale.max;
}

inline std::size_t mostNumbers(const AxisCase& made) {
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

inline std::size_t mostDecades(const AxisCase& made) {
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

/// Walks through all days, and through the months and years of the standard library.
class DateSearch {
 public:
  using Unit = CalendarStep::Unit;

  explicit DateSearch(const AxisCase& made) : made_(made), scale_(made.scale) {
    searchParts();
    searchDays();
    searchMonths();
  }

  std::size_t most() const { return most_; }

 private:
  static constexpr double kPerDay = 864e8;
  double span() const { return scale_.max - scale_.min; }

  void tryStep(const CalendarStep& step, const std::vector<CalendarTime>& marks) {
    std::vector<CalendarTime> inside;
    std::vector<double> values;
    for (const CalendarTime& mark : marks) {
      const double value =
          static_cast<double>(mark.day) + static_cast<double>(mark.microsecond) / kPerDay;
      if (isInRange(scale_, value)) {
        inside.push_back(mark);
        values.push_back(value);
      }
    }
    most_ = std::max(most_, mostOf(made_, inside, values, [&](const auto& all, Notation notation) {
                       return calendarLabels(all, step, notation);
                     }));
  }

  void searchParts() {
    std::vector<std::int64_t> parts;
    for (std::int64_t power = 1; power < 1'000'000; power *= 10) {
      parts.insert(parts.end(), {power, 2 * power, 5 * power});
    }
    for (const std::int64_t second :
         {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200}) {
      parts.push_back(second * 1'000'000);
    }
    const double size = std::max(std::abs(scale_.min), std::abs(scale_.max));
    for (const std::int64_t part : parts) {
      const double step = static_cast<double>(part) / kPerDay;
      if (span() / step <= scale_.length() && step <= 2 * span() &&
          step >= size - std::nextafter(size, 0)) {
        tryStep({Unit::kMicrosecond, part}, partsOfDays(part));
      }
    }
  }

  /// Some more than lie in the range.
  std::vector<CalendarTime> partsOfDays(std::int64_t part) const {
    const double perDay = kPerDay / static_cast<double>(part);
    const auto first = static_cast<std::int64_t>(std::floor(scale_.min));
    std::vector<CalendarTime> marks;
    for (std::int64_t day = first; day <= first + static_cast<std::int64_t>(span()) + 1; ++day) {
      const double passed = (scale_.min - static_cast<double>(day)) * perDay;
      const auto from = std::max<std::int64_t>(0, static_cast<std::int64_t>(passed) - 2);
      const double count = span() * perDay + 5;
      for (std::int64_t i = from;
           i * part < CalendarTime::kPerDay && static_cast<double>(i - from) < count; ++i) {
        marks.push_back({day, i * part});
      }
    }
    return marks;
  }

  void searchDays() {
    constexpr double kMost = 40000;
    constexpr std::int64_t kMonday = 2;
    for (const std::int64_t step : {1, 2, 7, 14}) {
      std::vector<CalendarTime> marks;
      const std::int64_t start = step % 7 == 0 ? kMonday : 0;
      for (double day = std::floor(scale_.min); span() < kMost && day <= scale_.max; ++day) {
        if ((static_cast<std::int64_t>(day) - start) % step == 0) {
          marks.push_back({static_cast<std::int64_t>(day), 0});
        }
      }
      tryStep({Unit::kDay, step}, marks);
    }
  }

  void searchMonths() {
    const auto yearOf = [](double date) {
      return static_cast<int>(std::floor(date / 365.2425)) + 1900;
    };
    const std::chrono::sys_days epoch = std::chrono::year(1899) / 12 / 30;
    std::array<std::vector<CalendarTime>, 3> months;
    std::array<std::vector<CalendarTime>, 20> years;
    for (int year = yearOf(scale_.min) - 1; year <= yearOf(scale_.max) + 1; ++year) {
      for (unsigned month = 1; month <= 12; ++month) {
        const std::chrono::sys_days date = std::chrono::year(year) / std::chrono::month(month) / 1;
        const CalendarTime mark{(date - epoch).count(), 0};
        for (std::size_t i = 0; i < months.size(); ++i) {
          if (month % kMonths.at(i) == 1 % kMonths.at(i)) {
            months.at(i).push_back(mark);
          }
        }
        for (std::size_t i = 0; month == 1 && i < years.size(); ++i) {
          const int step = std::array{1, 2, 5}.at(i % 3) * static_cast<int>(std::pow(10, i / 3));
          if (year % step == 0) {
            years.at(i).push_back(mark);
          }
        }
      }
    }
    for (std::size_t i = 0; i < months.size(); ++i) {
      tryStep({Unit::kMonth, kMonths.at(i)}, months.at(i));
    }
    for (const auto& marks : years) {
      tryStep({Unit::kYear, 1}, marks);
    }
  }

  static constexpr std::array<unsigned, 3> kMonths{1, 3, 6};

  const AxisCase& made_;
  const AxisScale& scale_;
  std::size_t most_ = 0;
};

/// Not searched beyond the years of the standard library. Where there is no calendar, days are
/// numbers.
inline std::size_t mostDates(const AxisCase& made) {
  constexpr double kEnd = 1e7;
  const AxisScale& scale = made.scale;
  const bool hasCalendar = CalendarTime::isDate(scale.min) && CalendarTime::isDate(scale.max) &&
                           scale.max - scale.min >= 5e-6 / 86400;
  if (!hasCalendar) {
    return mostNumbers(made);
  }
  return scale.min < -kEnd || scale.max > kEnd ? 0 : DateSearch(made).most();
}

inline std::size_t mostTicks(const AxisCase& made) {
  switch (made.scale.kind) {
    case AxisKind::kLinear:
      return mostNumbers(made);
    case AxisKind::kLog10:
      return mostDecades(made);
    default:
      return mostDates(made);
  }
}

}  // namespace zyn::test
