// What holds for the ticks of any axis, over random ranges, sizes and scales of text; and where
// there are less than three, a search of its own over all steps finds no more.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include "graph/LabelReader.h"
#include "graph/RandomAxes.h"
#include "graph/TickSearch.h"
#include "graph/Ticks.h"

namespace zyn::test {
namespace {

constexpr int kRanges = 100'000;

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

void expectNumbers(const AxisCase& made, const Ticks& ticks) {
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

bool expectDecades(const AxisCase& made, const Ticks& ticks) {
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

bool isAmong(Exact step, std::initializer_list<Exact> steps) {
  return std::ranges::any_of(steps, [&](Exact one) { return std::abs(step / one - 1) < 1e-5L; });
}

void expectDates(const AxisCase& made, const Ticks& ticks) {
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

void expectOrder(const AxisCase& made, const Ticks& ticks) {
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

void expectRoom(const AxisCase& made, const Ticks& ticks) {
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

void expectSteps(const AxisCase& made, const Ticks& ticks) {
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

TEST(TicksPropertiesTest, HoldForAnyAxis) {
  RandomAxes cases;
  int few = 0;
  for (int i = 0; i < kRanges && !testing::Test::HasFailure(); ++i) {
    const AxisCase made = cases.next();
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
  RandomAxes cases;
  int same = 0;
  for (int i = 0; i < 300; ++i) {
    const AxisCase made = cases.next();
    const Ticks ticks = chooseTicks(made.scale, made.room);
    const bool isSearched = made.scale.kind != AxisKind::kDate || std::abs(made.scale.max) < 9e6;
    if (isSearched) {
      EXPECT_EQ(mostTicks(made) >= 3, ticks.major.size() >= 3) << describe(made, ticks);
      ++same;
    }
  }
  EXPECT_GT(same, 150);
}

}  // namespace
}  // namespace zyn::test
