#include "plotview/AxisReading.h"

#include <gtest/gtest.h>

#include <limits>

namespace zyn::test {
namespace {

AxisReading readingOn(AxisKind kind, double min, double max, const char* unit = "",
                      bool isInverted = false) {
  PlotAxis axis;
  axis.unit = unit;
  AxisLayout layout;
  layout.scale = {kind, min, max, isInverted, 50, 450};
  return AxisReading(axis, layout);
}

TEST(AxisReadingTest, NumbersHaveDecimalsForAPixelAndTheUnit) {
  const AxisReading reading = readingOn(AxisKind::kLinear, -10, 10, "N");
  EXPECT_EQ(reading.text(-10.2604), "-10.26 N");
  EXPECT_EQ(reading.text(3.0), "3.00 N");
  EXPECT_EQ(reading.text(-0.001), "0.00 N");
  EXPECT_EQ(reading.difference(3.0, -1.5), "-4.50 N");
  EXPECT_EQ(readingOn(AxisKind::kLinear, -10, 10, "N", true).text(3.0), "3.00 N");
  EXPECT_EQ(readingOn(AxisKind::kLinear, 0, 40000).text(1234.5), "1234");
}

TEST(AxisReadingTest, LargeAndSmallOnesHaveExponents) {
  EXPECT_EQ(readingOn(AxisKind::kLinear, 0, 4e9).text(1.25e9), "1.25e+09");
  EXPECT_EQ(readingOn(AxisKind::kLinear, 0, 4e-9, "F").text(1.25e-9), "1.25e-09 F");
  EXPECT_EQ(readingOn(AxisKind::kLog10, 1e-3, 1e6, "Pa").text(1234.5), "1.23e+03 Pa");
}

TEST(AxisReadingTest, WhatThereIsNotIsADash) {
  const AxisReading reading = readingOn(AxisKind::kLinear, 0, 1, "s");
  EXPECT_EQ(reading.text(std::nullopt), "\u2013");
  EXPECT_EQ(reading.text(std::numeric_limits<double>::quiet_NaN()), "\u2013");
  EXPECT_EQ(reading.difference(1.0, std::nullopt), "\u2013");
}

TEST(AxisReadingTest, BetweenDatesThereAreDurations) {
  const AxisReading reading = readingOn(AxisKind::kDate, 45000, 45010);
  EXPECT_EQ(reading.text(45000.25), "2023-03-15 06:00:00");
  EXPECT_EQ(reading.difference(45000.0, 45003.25), "3 d 06:00:00");
  EXPECT_EQ(reading.difference(45000.5, 45000.0), "-12:00:00");
}

}  // namespace
}  // namespace zyn::test
