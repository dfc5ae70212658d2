#include "graph/TickLabels.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace zyn::test {
namespace {

using Texts = std::vector<std::string>;
using Unit = CalendarStep::Unit;

std::vector<Decimal> marksOf(std::int64_t first, std::int64_t step, int count, int exponent) {
  std::vector<Decimal> marks;
  for (int i = 0; i < count; ++i) {
    marks.push_back({first + i * step, exponent});
  }
  return marks;
}

void expectLabels(const TickLabels& labels, const Texts& texts, const std::string& offset) {
  EXPECT_EQ(labels.texts, texts);
  EXPECT_EQ(labels.offset, offset);
}

TickLabels numbers(const std::vector<Decimal>& marks, Notation notation = Notation::kFull) {
  return numberLabels(marks, notation);
}

TEST(TickLabelsTest, NumbersHaveTheDecimalsOfTheStep) {
  expectLabels(numbers(marksOf(-2, 2, 4, -1)), {"-0.2", "0.0", "0.2", "0.4"}, "");
  expectLabels(numbers(marksOf(95, 5, 3, 0)), {"95", "100", "105"}, "");
  expectLabels(numbers(marksOf(0, 2, 3, 5)), {"0", "200000", "400000"}, "");
  expectLabels(numbers(marksOf(2014, 1, 3, 0)), {"2014", "2015", "2016"}, "");
}

TEST(TickLabelsTest, FarFromOneTheyShareAPowerOfTen) {
  expectLabels(numbers(marksOf(0, 5, 3, 6)), {"0", "5", "10"}, "x10⁶");
  expectLabels(numbers(marksOf(0, 1, 3, 8)), {"0", "100", "200"}, "x10⁶");
  expectLabels(numbers(marksOf(0, 5, 3, -7)), {"0.0", "0.5", "1.0"}, "x10⁻⁶");
  expectLabels(numbers(marksOf(-1, 1, 3, 308)), {"-100", "0", "100"}, "x10³⁰⁶");
}

TEST(TickLabelsTest, FarFromZeroTheyShareAnOffset) {
  expectLabels(numbers(marksOf(10000000, 2, 3, -1)), {"0.0", "0.2", "0.4"}, "+1e6");
  expectLabels(numbers(marksOf(12345671, 1, 3, -1)), {"0.1", "0.2", "0.3"}, "+1234567");
  expectLabels(numbers(marksOf(-12345673, 1, 3, -1)), {"-0.3", "-0.2", "-0.1"}, "-1234567");
  expectLabels(numbers(marksOf(9999998, 1, 4, -1)), {"-0.2", "-0.1", "0.0", "0.1"}, "+1e6");
  expectLabels(numbers(marksOf(1000000000000000, 5, 3, -1)), {"0.0", "0.5", "1.0"}, "+1e14");
}

TEST(TickLabelsTest, AnOffsetMayComeAfterAPowerOfTen) {
  expectLabels(numbers(marksOf(1000000000000, 2, 3, -21)), {"0", "2", "4"}, "x10⁻²¹ +1e-9");
}

TEST(TickLabelsTest, ShortOnesShareMore) {
  expectLabels(numbers(marksOf(0, 5, 3, 5), Notation::kShort), {"0.0", "0.5", "1.0"}, "x10⁶");
  expectLabels(numbers(marksOf(123456, 1, 3, 0), Notation::kShort), {"6", "7", "8"}, "+123450");
}

TEST(TickLabelsTest, LoneOnesHaveTheirOwnPower) {
  expectLabels(numbers(marksOf(0, 5, 4, 8), Notation::kAlone), {"0", "0.5e9", "1.0e9", "1.5e9"},
               "");
  expectLabels(numbers(marksOf(1, 1, 2, -9), Notation::kAlone), {"1e-9", "2e-9"}, "");
  expectLabels(numbers(marksOf(0, 5, 2, -2), Notation::kAlone), {"0.00", "0.05"}, "");
}

TEST(TickLabelsTest, DecadesAreWrittenOutOrRaised) {
  const std::vector<Decimal> near{{1, -2}, {1, -1}, {1, 0}, {1, 1}};
  expectLabels(decadeLabels(near, Notation::kFull), {"0.01", "0.1", "1", "10"}, "");
  const std::vector<Decimal> far{{1, 0}, {2, 5}, {1, 6}, {5, -12}};
  expectLabels(decadeLabels(far, Notation::kFull), {"10⁰", "2x10⁵", "10⁶", "5x10⁻¹²"}, "");
  expectLabels(decadeLabels(far, Notation::kAlone), {"1e0", "2e5", "1e6", "5e-12"}, "");
}

TickLabels dates(const std::vector<CivilTime>& times, const CalendarStep& step,
                 Notation notation = Notation::kFull) {
  std::vector<CalendarTime> marks;
  for (const CivilTime& time : times) {
    marks.push_back(CalendarTime::of(time));
  }
  return calendarLabels(marks, step, notation);
}

TEST(TickLabelsTest, DatesAreAsPreciseAsTheStep) {
  expectLabels(dates({{2020, 1, 1}, {2030, 1, 1}}, {Unit::kYear, 10}), {"2020", "2030"}, "");
  expectLabels(dates({{2020, 1, 1}, {2020, 4, 1}}, {Unit::kMonth, 3}), {"2020-01", "2020-04"}, "");
  expectLabels(dates({{2024, 2, 29}, {2024, 3, 1}}, {Unit::kDay, 1}), {"2024-02-29", "2024-03-01"},
               "");
  expectLabels(dates({{2024, 2, 29}, {2024, 3, 1}}, {Unit::kDay, 1}, Notation::kShort),
               {"02-29", "03-01"}, "2024");
  expectLabels(dates({{2023, 12, 31}, {2024, 1, 1}}, {Unit::kDay, 1}, Notation::kShort),
               {"2023-12-31", "2024-01-01"}, "");
}

TEST(TickLabelsTest, TimesOfOneDayShareItsDate) {
  constexpr std::int64_t kSecond = CalendarTime::kPerSecond;
  const CalendarStep sixHours{Unit::kMicrosecond, 21600 * kSecond};
  const CalendarStep tenth{Unit::kMicrosecond, kSecond / 10};
  expectLabels(dates({{2024, 2, 29, 6}, {2024, 2, 29, 12}}, sixHours), {"06:00", "12:00"},
               "2024-02-29");
  expectLabels(dates({{2024, 2, 29, 18}, {2024, 3, 1}}, sixHours),
               {"2024-02-29 18:00", "2024-03-01 00:00"}, "");
  expectLabels(dates({{2024, 2, 29, 18}, {2024, 3, 1}}, sixHours, Notation::kShort),
               {"02-29 18:00", "03-01 00:00"}, "2024");
  const std::vector<CivilTime> seconds{{2024, 2, 29, 6, 7, 8, 900'000}, {2024, 2, 29, 6, 7, 9}};
  expectLabels(dates(seconds, tenth), {"06:07:08.9", "06:07:09.0"}, "2024-02-29");
  expectLabels(dates(seconds, tenth, Notation::kShort), {"08.9", "09.0"}, "2024-02-29 06:07");
  expectLabels(dates({{0, 1, 1, 6, 0, 59}, {0, 1, 1, 6, 1}}, {Unit::kMicrosecond, kSecond},
                     Notation::kShort),
               {"06:00:59", "06:01:00"}, "0000-01-01");
}

TEST(TickLabelsTest, FormatsAreOfTheAxis) {
  EXPECT_TRUE(std::holds_alternative<std::monostate>(tickFormat(AxisKind::kDate, "")));
  EXPECT_TRUE(std::holds_alternative<NumberFormat>(tickFormat(AxisKind::kLog10, "%g")));
  EXPECT_TRUE(std::holds_alternative<DateFormat>(tickFormat(AxisKind::kDate, "%H:%M")));
  EXPECT_THROW(tickFormat(AxisKind::kLinear, "%Y"), std::invalid_argument);
  EXPECT_THROW(tickFormat(AxisKind::kDate, "%g"), std::invalid_argument);
}

}  // namespace
}  // namespace zyn::test
