#include "graph/CalendarTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>

namespace zyn::test {
namespace {

struct Row {
  double days;
  CivilTime civil;
};

/// By hand.
const Row kTable[] = {
    {0, {1899, 12, 30}},         {1, {1899, 12, 31}},         {2, {1900, 1, 1}},
    {60, {1900, 2, 28}},         {61, {1900, 3, 1}},  // no leap day in 1900
    {-1.25, {1899, 12, 28, 18}}, {-0.5, {1899, 12, 29, 12}},  {-363, {1899, 1, 1}},
    {25569, {1970, 1, 1}},       {25569.5, {1970, 1, 1, 12}}, {36526, {2000, 1, 1}},
    {36585, {2000, 2, 29}},      {36586, {2000, 3, 1}},       {45351, {2024, 2, 29}},
    {45657, {2024, 12, 31}},     {45658, {2025, 1, 1}},       {73109, {2100, 2, 28}},
    {73110, {2100, 3, 1}},  // nor in 2100
    {2958465, {9999, 12, 31}},   {2958466, {10000, 1, 1}},    {-657434, {100, 1, 1}},
    {-693593, {1, 1, 1}},        {-693594, {0, 12, 31}},      {-693899, {0, 3, 1}},
    {-693900, {0, 2, 29}},  // the year 0 is divisible by 400
};

TEST(CalendarTimeTest, KnowsTheCalendar) {
  for (const Row& row : kTable) {
    EXPECT_EQ(CalendarTime::of(row.days).civil(), row.civil) << row.days;
    EXPECT_EQ(CalendarTime::of(row.civil).days(), row.days);
  }
}

TEST(CalendarTimeTest, KnowsTheDaysOfWeeksAndYears) {
  EXPECT_EQ(CalendarTime::of(0).weekday(), 5);      // Saturday
  EXPECT_EQ(CalendarTime::of(2).weekday(), 0);      // Monday
  EXPECT_EQ(CalendarTime::of(-5).weekday(), 0);     // Monday
  EXPECT_EQ(CalendarTime::of(36585).weekday(), 1);  // Tuesday
  EXPECT_EQ(CalendarTime::of(36585).dayOfYear(), 60);
  EXPECT_EQ(CalendarTime::of(45657).dayOfYear(), 366);
  EXPECT_EQ(CalendarTime::of(2).dayOfYear(), 1);
}

TEST(CalendarTimeTest, AgreesWithTheStandardLibraryOverAllItsYears) {
  using std::chrono::days;
  using std::chrono::sys_days;
  using std::chrono::weekday;
  using std::chrono::year;
  using std::chrono::year_month_day;
  const sys_days epoch = year(1899) / 12 / 30;
  const std::int64_t first = (sys_days(year(-32767) / 1 / 1) - epoch).count();
  const std::int64_t last = (sys_days(year(32767) / 12 / 31) - epoch).count();
  for (std::int64_t day = first; day <= last; day += day % 1000 == 0 ? 1 : 7) {
    const sys_days expected = epoch + days(day);
    const year_month_day date(expected);
    const CalendarTime time{day, 0};
    const CivilTime civil = time.civil();
    ASSERT_TRUE(civil.year == static_cast<int>(date.year()) &&
                civil.month == static_cast<int>(static_cast<unsigned>(date.month())) &&
                civil.day == static_cast<int>(static_cast<unsigned>(date.day())))
        << day;
    ASSERT_EQ(CalendarTime::of(civil), time);
    ASSERT_EQ(time.weekday() + 1, static_cast<int>(weekday(expected).iso_encoding()));
  }
}

TEST(CalendarTimeTest, IsExactToTheMicrosecond) {
  std::mt19937_64 random(1);
  // Doubles tell microseconds apart until the year 2079.
  std::uniform_int_distribution<std::int64_t> day(-60000, 60000);
  std::uniform_int_distribution<std::int64_t> microsecond(0, CalendarTime::kPerDay - 1);
  for (int i = 0; i < 100000; ++i) {
    const CalendarTime time{day(random), microsecond(random)};
    ASSERT_EQ(CalendarTime::of(time.days()), time);
    ASSERT_EQ(CalendarTime::of(time.civil()), time);
  }
  EXPECT_EQ(CalendarTime::of(std::nextafter(1.0, 0.0)), (CalendarTime{1, 0}));
  EXPECT_EQ(CalendarTime::of(std::nextafter(0.0, -1.0)), (CalendarTime{0, 0}));
}

TEST(CalendarTimeTest, GoesOnFarBeyondHistory) {
  for (const double days : {CalendarTime::kFarthest, -CalendarTime::kFarthest}) {
    ASSERT_TRUE(CalendarTime::isDate(days));
    const CivilTime civil = CalendarTime::of(days).civil();
    EXPECT_GT(std::abs(civil.year), 999'000'000);
    EXPECT_EQ(CalendarTime::of(civil).days(), days);
    EXPECT_FALSE(CalendarTime::isDate(2 * days));
  }
  EXPECT_FALSE(CalendarTime::isDate(std::nan("")));
  // 400 years are always as long.
  EXPECT_EQ(CalendarTime::of(CivilTime{400'001'899, 12, 30}).days(), 146097e6);
  EXPECT_EQ(CalendarTime::of(CivilTime{-399'998'101, 12, 30}).days(), -146097e6);
}

TEST(CalendarTimeTest, QuotientsAreRoundedDown) {
  EXPECT_EQ(floorDivide(7, 2), 3);
  EXPECT_EQ(floorDivide(-7, 2), -4);
  EXPECT_EQ(floorDivide(-8, 2), -4);
}

}  // namespace
}  // namespace zyn::test
