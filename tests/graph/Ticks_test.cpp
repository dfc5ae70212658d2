#include "graph/Ticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace zyn::test {
namespace {

using Texts = std::vector<std::string>;

/// Characters 7 pixels wide and 12 high.
TickRoom roomOf(const AxisScale& scale, bool isUpright) {
  const auto [first, last] = std::minmax({scale.pixelFrom, scale.pixelTo});
  return {.first = first - 30,
          .last = last + 30,
          .gap = 6,
          .pitch = 60,
          .extentOf = [isUpright](std::string_view text) {
            const auto isCharacter = [](char byte) {
              return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
            };
            return isUpright ? 12.0
                             : 7.0 * static_cast<double>(std::ranges::count_if(text, isCharacter));
          }};
}

AxisScale scaleOf(AxisKind kind, double min, double max, double pixels = 400) {
  return {.kind = kind, .min = min, .max = max, .pixelFrom = 50, .pixelTo = 50 + pixels};
}

Ticks ticksOf(AxisKind kind, double min, double max, double pixels = 400,
              const TickFormat& format = {}) {
  const AxisScale scale = scaleOf(kind, min, max, pixels);
  return chooseTicks(scale, roomOf(scale, false), format);
}

struct Row {
  double min;
  double max;
  Texts labels;
  std::string offset{};
  double pixels = 400;
};

void expectRows(AxisKind kind, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const Ticks ticks = ticksOf(kind, row.min, row.max, row.pixels);
    EXPECT_EQ(ticks.labels, row.labels) << row.min << " to " << row.max;
    EXPECT_EQ(ticks.offset, row.offset) << row.min << " to " << row.max;
  }
}

TEST(TicksTest, OfNumbers) {
  expectRows(AxisKind::kLinear,
             {{0, 1, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}},
              {-0.3, 0.3, {"-0.3", "-0.2", "-0.1", "0.0", "0.1", "0.2", "0.3"}},
              {0, 100, {"0", "20", "40", "60", "80", "100"}},
              {3, 19, {"4", "6", "8", "10", "12", "14", "16", "18"}, "", 600},
              {0, 1e6, {"0", "200000", "400000", "600000", "800000", "1000000"}, "", 500},
              {0, 3e7, {"0", "5", "10", "15", "20", "25", "30"}, "x10⁶"},
              {2014, 2020, {"2014", "2015", "2016", "2017", "2018", "2019", "2020"}, "", 500},
              {1e6, 1e6 + 0.5, {"0.0", "0.1", "0.2", "0.3", "0.4", "0.5"}, "+1e6"},
              {1e15, 1e15 + 1, {"0.0", "0.5", "1.0"}, "+1e15"},
              {1e-300, 2e-300, {"1.0", "1.2", "1.4", "1.6", "1.8", "2.0"}, "x10⁻³⁰⁰"},
              {-1e308, 1e308, {"-100", "-50", "0", "50", "100"}, "x10³⁰⁶"},
              {0, 5e-323, {"0", "10", "20", "30", "40", "50"}, "x10⁻³²⁴"}});
}

TEST(TicksTest, OfDecades) {
  expectRows(AxisKind::kLog10,
             {{0.01, 1000, {"0.01", "0.1", "1", "10", "100", "1000"}},
              {1e-12, 1e12, {"10⁻¹⁰", "10⁻⁵", "10⁰", "10⁵", "10¹⁰"}},
              {1e-300, 1e300, {"10⁻³⁰⁰", "10⁻²⁰⁰", "10⁻¹⁰⁰", "10⁰", "10¹⁰⁰", "10²⁰⁰", "10³⁰⁰"}},
              {3, 60, {"5", "10", "20", "50"}},
              {1, 100, {"1", "2", "5", "10", "20", "50", "100"}, "", 2000},
              {2.1, 2.9, {"2.2", "2.4", "2.6", "2.8"}},
              {1e9, 1e9 + 1, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}, "+1e9"}});
}

TEST(TicksTest, OfDates) {
  expectRows(
      AxisKind::kDate,
      {{36526,
        36531,
        {"2000-01-01", "2000-01-02", "2000-01-03", "2000-01-04", "2000-01-05", "2000-01-06"},
        "",
        900},
       {36580, 36590, {"02-24", "02-26", "02-28", "03-01", "03-03", "03-05"}, "2000"},
       {45000, 45000.5, {"00:00", "03:00", "06:00", "09:00", "12:00"}, "2023-03-15", 300},
       {45000, 45000.001, {"00:00:00", "00:00:30", "00:01:00"}, "2023-03-15", 300},
       {45000.25, 45000.25 + 5.0 / 86400, {"00", "02", "04"}, "2023-03-15 06:00", 120},
       {45000, 45365, {"2023-04", "2023-07", "2023-10", "2024-01"}},
       {44927, 46753, {"2023", "2024", "2025", "2026", "2027", "2028"}},
       {-700000, 700000, {"0000", "1000", "2000", "3000"}},
       {-2, 2, {"1899-12-28", "1899-12-29", "1899-12-30", "1899-12-31", "1900-01-01"}, "", 600},
       {59, 62, {"1900-02-27", "1900-02-28", "1900-03-01", "1900-03-02"}, "", 600},
       {73108, 73111, {"2100-02-27", "2100-02-28", "2100-03-01", "2100-03-02"}, "", 600},
       {0, 1e13, {"0", "2", "4", "6", "8", "10"}, "x10¹² d"},
       {1, 1 + 1e-12, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}, "x10⁻¹² +1 d"}});
}

TEST(TicksTest, WeeksBeginOnMondayAndMonthsOnTheirFirstDay) {
  EXPECT_EQ(ticksOf(AxisKind::kDate, 45350, 45380, 600).labels,
            (Texts{"2024-03-04", "2024-03-11", "2024-03-18", "2024-03-25"}));
  EXPECT_EQ(ticksOf(AxisKind::kDate, 45292, 45470, 600).labels,
            (Texts{"2024-01", "2024-02", "2024-03", "2024-04", "2024-05", "2024-06"}));
  EXPECT_EQ(ticksOf(AxisKind::kDate, 45292, 45470, 600).major,
            (std::vector<double>{45292, 45323, 45352, 45383, 45413, 45444}));
}

TEST(TicksTest, EndsThatWereCalculatedHaveTheirTicks) {
  const Ticks ticks = ticksOf(AxisKind::kLinear, 0.1 * 3, 1, 600);
  EXPECT_EQ(ticks.labels.front(), "0.3");
  EXPECT_EQ(ticks.major.front(), 0.1 * 3);
  EXPECT_EQ(ticksOf(AxisKind::kLinear, 1e-17, 1).labels.front(), "0.0");
  EXPECT_EQ(ticksOf(AxisKind::kLinear, 0, std::nextafter(0.7, 0.0), 600).labels.back(), "0.7");
  EXPECT_EQ(ticksOf(AxisKind::kLog10, std::nextafter(1.0, 2.0), std::nextafter(1000.0, 0.0))
                .labels.size(),
            4U);
  const double eight = 45000 + 8.0 / 24;
  EXPECT_EQ(ticksOf(AxisKind::kDate, std::nextafter(eight, 50000), eight + 0.5).labels.front(),
            "08:00");
}

TEST(TicksTest, InvertedAxesHaveTheSame) {
  AxisScale scale = scaleOf(AxisKind::kLinear, 0, 1);
  const Ticks upwards = chooseTicks(scale, roomOf(scale, false));
  scale.isInverted = true;
  const Ticks downwards = chooseTicks(scale, roomOf(scale, false));
  EXPECT_EQ(downwards.major, upwards.major);
  EXPECT_EQ(downwards.minor, upwards.minor);
  EXPECT_EQ(downwards.labels, upwards.labels);
  EXPECT_EQ(downwards.labelPixels.front(), upwards.labelPixels.back());
}

TEST(TicksTest, MinorOnesDivideTheMajorOnes) {
  const auto expectMinor = [](const Ticks& ticks, const std::vector<double>& first) {
    ASSERT_GE(ticks.minor.size(), first.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
      EXPECT_DOUBLE_EQ(ticks.minor[i], first[i]);
    }
  };
  expectMinor(ticksOf(AxisKind::kLinear, 0, 100), {2, 4, 6, 8, 10, 12, 14, 16, 18, 22});
  expectMinor(ticksOf(AxisKind::kLinear, 0, 100, 250), {5, 10, 15, 20, 25, 30, 35, 40, 45, 55});
  expectMinor(ticksOf(AxisKind::kLog10, 1, 1000, 600), {2, 3, 4, 5, 6, 7, 8, 9, 20, 30});
  expectMinor(ticksOf(AxisKind::kLog10, 1, 1000, 150), {2, 5, 20, 50});
  expectMinor(ticksOf(AxisKind::kLog10, 1e-12, 1e12), {1e-12, 1e-11, 1e-9, 1e-8});
  expectMinor(ticksOf(AxisKind::kDate, 45000, 45365), {45047, 45078, 45139});
}

TEST(TicksTest, MinorOnesKeepApart) {
  for (const AxisKind kind : {AxisKind::kLinear, AxisKind::kDate}) {
    for (int length = 40; length < 400; length += 7) {
      const AxisScale scale = scaleOf(kind, 40000, 40000 + 3 * length, length);
      TickRoom room = roomOf(scale, false);
      room.pitch = 20;
      const Ticks ticks = chooseTicks(scale, room);
      for (std::size_t i = 1; i < ticks.minor.size(); ++i) {
        const double gap = scale.pixelOf(ticks.minor[i]) - scale.pixelOf(ticks.minor[i - 1]);
        EXPECT_GE(gap, room.minorPitch) << length;
      }
    }
  }
}

TEST(TicksTest, BetweenMonthsThereAreNoDays) {
  EXPECT_TRUE(ticksOf(AxisKind::kDate, 45292, 45382, 900).minor.size() > 80) << "between weeks";
  const Ticks months = ticksOf(AxisKind::kDate, 45292, 45382, 300);
  EXPECT_EQ(months.labels, (Texts{"2024-01", "2024-02", "2024-03"}));
  EXPECT_TRUE(months.minor.empty());
  const Ticks quarters = ticksOf(AxisKind::kDate, 45000, 45365);
  EXPECT_EQ(quarters.minor.size(), 8U) << "months";
}

TEST(TicksTest, LabelsAreMovedIntoTheRoom) {
  const AxisScale scale = scaleOf(AxisKind::kLinear, 0, 1);
  TickRoom room = roomOf(scale, false);
  room.first = 50;
  room.last = 450;
  const Ticks ticks = chooseTicks(scale, room);
  ASSERT_EQ(ticks.labels.size(), 6U);
  EXPECT_EQ(ticks.labelPixels.front(), 50 + 21 / 2.0);
  EXPECT_EQ(ticks.labelPixels[1], 130);
  EXPECT_EQ(ticks.labelPixels.back(), 450 - 21 / 2.0);
}

TEST(TicksTest, FormatsThatWriteNeighboursAlikeGetLargerSteps) {
  const Ticks ticks =
      ticksOf(AxisKind::kLinear, 0, 5, 900, tickFormat(AxisKind::kLinear, "%.0f mm"));
  EXPECT_EQ(ticks.labels, (Texts{"0 mm", "1 mm", "2 mm", "3 mm", "4 mm", "5 mm"}));
  EXPECT_EQ(ticks.offset, "");
  EXPECT_EQ(ticksOf(AxisKind::kLinear, -1, 1, 400, tickFormat(AxisKind::kLinear, "%.1f")).labels,
            (Texts{"-1.0", "-0.5", "0.0", "0.5", "1.0"}));
  EXPECT_EQ(
      ticksOf(AxisKind::kDate, 36526, 36526 + 50, 900, tickFormat(AxisKind::kDate, "%b %Y")).labels,
      (Texts{"Jan 2000", "Feb 2000"}));
}

TEST(TicksTest, NoneWithoutRoomOrRange) {
  const double nan = std::nan("");
  EXPECT_TRUE(ticksOf(AxisKind::kLinear, 1, 1).major.empty());
  EXPECT_TRUE(ticksOf(AxisKind::kLinear, nan, 1).major.empty());
  EXPECT_TRUE(ticksOf(AxisKind::kLog10, 0, 1).major.empty());
  EXPECT_TRUE(ticksOf(AxisKind::kLinear, 0, 1, 0).major.empty());
  const AxisScale scale = scaleOf(AxisKind::kLinear, 0, 1);
  TickRoom room = roomOf(scale, false);
  room.last = room.first + 5;
  EXPECT_TRUE(chooseTicks(scale, room).major.empty());
  EXPECT_TRUE(chooseTicks(scale, room).minor.empty());
}

TEST(TicksTest, NeitherGapsNorLengthsMakeThemEndless) {
  AxisScale scale = scaleOf(AxisKind::kLinear, 0, 1);
  TickRoom room = roomOf(scale, false);
  room.gap = room.pitch = 0;
  EXPECT_GE(chooseTicks(scale, room).major.size(), 3U);
  room = roomOf(scale, false);
  scale.pixelTo = room.last = 1e300;
  EXPECT_LE(chooseTicks(scale, room).major.size(), 100'001U);
}

TEST(TicksTest, LoneLabelsTellEverything) {
  const AxisScale scale = scaleOf(AxisKind::kLinear, 0, 2e9);
  const Ticks ticks = chooseLoneTicks(scale, roomOf(scale, false));
  EXPECT_EQ(ticks.labels, (Texts{"0", "0.5e9", "1.0e9", "1.5e9", "2.0e9"}));
  EXPECT_EQ(ticks.offset, "");
  const AxisScale decades = scaleOf(AxisKind::kLog10, 1e-12, 1e12);
  EXPECT_EQ(chooseLoneTicks(decades, roomOf(decades, false)).labels,
            (Texts{"1e-10", "1e-5", "1e0", "1e5", "1e10"}));
}

}  // namespace
}  // namespace zyn::test
