#include "table/CellDate.h"

#include <gtest/gtest.h>

namespace zyn::table {
namespace {

/// Days from 1899-12-30 to the last of January 2024.
constexpr double kDay = 45322;
constexpr double kHour = 1.0 / 24;

void expectCertain(const char* cell, double days) {
  const CellDate date = cellDate(cell);
  ASSERT_FALSE(date.isNone()) << cell;
  EXPECT_EQ(date.dayFirst, date.monthFirst) << cell;
  EXPECT_NEAR(date.dayFirst.value_or(0), days, 1e-9) << cell;
}

TEST(CellDateTest, ReadsWhatEverybodyWrites) {
  for (const char* const cell :
       {"2024-01-31", "2024/01/31", "2024/1/31", "2024.01.31", "31.01.2024", "31.1.2024",
        "31.01.24", "31. 1. 2024", "31-Jan-2024", "31 January 2024", "31. Jan 2024", "31 JAN 2024",
        "Jan 31, 2024", "January 31 2024"}) {
    expectCertain(cell, kDay);
  }
  expectCertain("2024-01", kDay - 30);
  expectCertain("1899-12-30", 0);
  expectCertain("1899-12-28", -2);
  expectCertain("01.05.69", 61849);
  expectCertain("01.05.70", 25689);
  expectCertain("29.02.2000", 36585);
}

TEST(CellDateTest, SlashesAndHyphensMayMeanTwo) {
  const CellDate european = cellDate("31/01/2024");
  EXPECT_EQ(european.dayFirst, kDay);
  EXPECT_EQ(european.monthFirst, std::nullopt);
  const CellDate american = cellDate("1/31/24");
  EXPECT_EQ(american.dayFirst, std::nullopt);
  EXPECT_EQ(american.monthFirst, kDay);
  const CellDate either = cellDate("01-02-2024");
  EXPECT_EQ(either.dayFirst, kDay + 1);
  EXPECT_EQ(either.monthFirst, kDay - 29);
}

TEST(CellDateTest, ReadsTimes) {
  for (const char* const cell :
       {"2024-01-31T13:30", "2024-01-31 13:30:00", "31.01.2024 13:30", "31.01.2024, 13:30",
        "2024-01-31 1:30 PM", "2024-01-31 1:30:00pm", "2024-01-31T13:30Z",
        "2024-01-31T15:30:00+02:00", "2024-01-31T08:30-0500", "2024-01-31T14:30:00.000+01"}) {
    expectCertain(cell, kDay + 13.5 * kHour);
  }
  expectCertain("2024-01-31 12:00 AM", kDay);
  expectCertain("2024-01-31 12:00 PM", kDay + 0.5);
  expectCertain("2024-01-31 00:00:00.25", kDay + 0.25 / 86400);
  expectCertain("2024-01-31 00:00:01,5", kDay + 1.5 / 86400);
  expectCertain("1899-12-28 18:00", -1.25);
}

TEST(CellDateTest, RefusesEverythingElse) {
  for (const char* const cell : {"",
                                 "5",
                                 "2024",
                                 "2024-13-01",
                                 "2024-02-30",
                                 "31.02.2024",
                                 "2024/01",
                                 "32/32/2024",
                                 "24-01-31",
                                 "1/2",
                                 "1.2",
                                 "12:30",
                                 "2024-01-31 24:00",
                                 "2024-01-31 12:60",
                                 "2024-01-31 12:00:60",
                                 "2024-01-31 13:00 PM",
                                 "2024-01-31T12",
                                 "2024-01-31x12:00",
                                 "2024-01-31 12:00 noon",
                                 "2024-01-31 ",
                                 "20240-01-31",
                                 "31 Jam 2024",
                                 "Jan 2024",
                                 "2024-01-31-",
                                 "31.01/2024",
                                 "-2024-01-31",
                                 "2024-01-31T12:00+1",
                                 "2024-01-31T12:00+01:"}) {
    EXPECT_TRUE(cellDate(cell).isNone()) << cell;
  }
}

}  // namespace
}  // namespace zyn::table
