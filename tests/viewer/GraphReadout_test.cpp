#include "viewer/GraphReadout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zyn::viewer {
namespace {

constexpr double kMay2013 = 41395;  // the first
constexpr double kMinute = 1.0 / 1440;
constexpr ValueStyle kNumbers;

std::string dateText(double days, double resolution = 0) {
  return ValueStyle{.isDate = true, .resolution = resolution}.text(days);
}

std::string waitText(double days) { return ValueStyle{.isDate = true}.differenceText(days); }

TEST(GraphReadoutTest, PlacesAreValues) {
  EXPECT_EQ(placeText(1983.25, -0.5, {}, kNumbers), "x 1983.25  y -0.5");
  EXPECT_EQ(placeText(-0.0, 1e-9, {}, kNumbers), "x 0  y 1e-09");
  EXPECT_EQ(placeText(kMay2013, 2, 7.5, {.isDate = true}), "x 2013-05-01  y 2  right 7.5");
}

TEST(GraphReadoutTest, DatesAreToldAsFarAsTheyNeedBe) {
  EXPECT_EQ(dateText(kMay2013), "2013-05-01");
  EXPECT_EQ(dateText(kMay2013 + 0.5), "2013-05-01 12:00");
  EXPECT_EQ(dateText(kMay2013 + 0.5 + kMinute / 2), "2013-05-01 12:00:30");
  EXPECT_EQ(dateText(kMay2013 + 0.25 / 86400), "2013-05-01 00:00:00.250");
  EXPECT_EQ(dateText(-1.25), "1899-12-28 18:00");
  EXPECT_EQ(dateText(-693959), "0000-01-01");
}

TEST(GraphReadoutTest, DatesAreRoundedToWhatCanBeSeen) {
  EXPECT_EQ(dateText(kMay2013 + 0.4, 3), "2013-05-01");
  EXPECT_EQ(dateText(kMay2013 + 0.6, 3), "2013-05-02");
  EXPECT_EQ(dateText(kMay2013 + 1.0 / 7, 0.1), "2013-05-01 03:26");
  EXPECT_EQ(dateText(kMay2013 + 1.0 / 7, kMinute / 2), "2013-05-01 03:25:43");
  EXPECT_EQ(dateText(kMay2013 + 1.0 / 7), "2013-05-01 03:25:42.857");
}

TEST(GraphReadoutTest, WhatIsNoDateOrNumberIsTold) {
  EXPECT_EQ(dateText(1e12), "1e+12");
  EXPECT_EQ(dateText(std::nan("")), "-");
  EXPECT_EQ(kNumbers.text(std::nan("")), "-");
  EXPECT_EQ(waitText(std::nan("")), "-");
}

TEST(GraphReadoutTest, DifferencesOfDatesHaveUnits) {
  EXPECT_EQ(waitText(365), "365 d");
  EXPECT_EQ(waitText(-1.5), "-1.5 d");
  EXPECT_EQ(waitText(0.5), "12 h");
  EXPECT_EQ(waitText(15 * kMinute), "15 min");
  EXPECT_EQ(waitText(kMinute / 40), "1.5 s");
  EXPECT_EQ(waitText(0), "0 s");
  EXPECT_EQ(kNumbers.differenceText(-0.25), "-0.25");
}

TEST(GraphReadoutTest, PointsOfTracesHaveItsName) {
  EXPECT_EQ(traceText("JAN", 1983, 24.15, kNumbers), "JAN: 1983, 24.15");
  EXPECT_EQ(traceText("T", kMay2013, 2, {.isDate = true}), "T: 2013-05-01, 2");
}

TEST(GraphReadoutTest, CursorsTellPlacesValuesAndDifferences) {
  const CursorReadings numbers{{1983, 1984}, {24.15, 23.5}};
  EXPECT_EQ(cursorText("JAN", numbers, kNumbers), "JAN: 1983, 24.15; 1984, 23.5");
  EXPECT_EQ(differenceText(numbers, kNumbers), "difference: 1, -0.65");
  const CursorReadings dates{{kMay2013, kMay2013 + 31}, {5, std::nan("")}};
  EXPECT_EQ(cursorText("T", dates, {.isDate = true}), "T: 2013-05-01, 5; 2013-06-01, -");
  EXPECT_EQ(differenceText(dates, {.isDate = true}), "difference: 31 d, -");
}

TEST(GraphReadoutTest, ModesHaveWords) {
  EXPECT_EQ(graphModeText(1), "pan");
  EXPECT_EQ(graphModeText(3), "nearest point");
  EXPECT_EQ(graphModeText(4), "zoom to rectangle");
  EXPECT_EQ(graphModeText(2), "events only");
}

}  // namespace
}  // namespace zyn::viewer
