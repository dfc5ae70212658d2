#include "graph/DateFormat.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <random>
#include <stdexcept>

namespace zyn::test {
namespace {

std::string text(const char* format, const CivilTime& civil) {
  return DateFormat(format).text(CalendarTime::of(civil));
}

const CivilTime kLeapDay{2024, 2, 29, 15, 4, 5, 67'890};

TEST(DateFormatTest, WritesDatesAndTimes) {
  EXPECT_EQ(text("%d.%m.%Y", kLeapDay), "29.02.2024");
  EXPECT_EQ(text("%A %e. %B %Y, %j", kLeapDay), "Thursday 29. February 2024, 060");
  EXPECT_EQ(text("%a %b %h %C %y %u %w", kLeapDay), "Thu Feb Feb 20 24 4 4");
  EXPECT_EQ(text("%I:%M:%S %p", kLeapDay), "03:04:05 PM");
  EXPECT_EQ(text("%FT%T.%L", kLeapDay), "2024-02-29T15:04:05.067");
  EXPECT_EQ(text("%R %f", kLeapDay), "15:04 067890");
  EXPECT_EQ(text("%D%%", kLeapDay), "02/29/24%");
  EXPECT_EQ(text("%I %p", {1899, 12, 30}), "12 AM");
  EXPECT_EQ(text("%I %p", {1899, 12, 30, 12}), "12 PM");
}

TEST(DateFormatTest, YearsHaveFourDigitsAtLeast) {
  EXPECT_EQ(yearText(44), "0044");
  EXPECT_EQ(yearText(0), "0000");
  EXPECT_EQ(yearText(9999), "9999");
  EXPECT_EQ(yearText(10000), "+10000");
  EXPECT_EQ(yearText(-44), "-0044");
  EXPECT_EQ(text("%y", {-1, 1, 1}), "99");
}

TEST(DateFormatTest, RefusesWhatItDoesNotKnow) {
  for (const char* bad : {"", "date", "%%", "%", "%Y-%", "%Q", "%n", "%s", "%Ey", "%-d", "%5Y"}) {
    EXPECT_THROW(DateFormat{bad}, std::invalid_argument) << bad;
  }
}

TEST(DateFormatTest, AgreesWithStrftime) {
  std::mt19937_64 random(1);
  std::uniform_int_distribution<std::int64_t> day(-690'000, 2'900'000);
  std::uniform_int_distribution<std::int64_t> second(0, 86'399);
  constexpr const char* kFormat =
      "%Y %y %C %m %B %b %h %d %e %j %A %a %u %w %H %I %p %M %S %F %T %R %D %%";
  for (int i = 0; i < 20000; ++i) {
    const CalendarTime time{day(random), second(random) * CalendarTime::kPerSecond};
    const CivilTime civil = time.civil();
    std::tm broken{};
    broken.tm_year = static_cast<int>(civil.year - 1900);
    broken.tm_mon = civil.month - 1;
    broken.tm_mday = civil.day;
    broken.tm_hour = civil.hour;
    broken.tm_min = civil.minute;
    broken.tm_sec = civil.second;
    const std::time_t seconds = timegm(&broken);
    std::tm whole{};
    gmtime_r(&seconds, &whole);
    std::array<char, 300> expected{};
    std::strftime(expected.data(), expected.size(), kFormat, &whole);
    if (civil.year >= 1000) {  // it writes earlier years without their zeros
      ASSERT_EQ(DateFormat(kFormat).text(time), expected.data());
    }
  }
}

}  // namespace
}  // namespace zyn::test
