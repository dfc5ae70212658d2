#include "viewer/GraphReadout.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(GraphReadoutTest, PlacesAreValues) {
  EXPECT_EQ(placeText(1983.25, -0.5, false), "x 1983.25  y -0.5");
  EXPECT_EQ(placeText(-0.0, 1e-9, false), "x 0  y 1e-09");
}

TEST(GraphReadoutTest, OnLogarithmicAxesValuesArePowersOfTen) {
  EXPECT_EQ(placeText(3, -2, true), "x 1000  y 0.01");
  EXPECT_EQ(valueAt(2, true), 100);
  EXPECT_EQ(valueAt(2, false), 2);
}

TEST(GraphReadoutTest, PointsOfTracesHaveItsName) {
  EXPECT_EQ(traceText("JAN", 1983, 24.15, false), "JAN: 1983, 24.15");
  EXPECT_EQ(traceText("", 1, 2, true), ": 10, 100");
}

TEST(GraphReadoutTest, ModesHaveWords) {
  EXPECT_EQ(graphModeText(1), "pan");
  EXPECT_EQ(graphModeText(3), "nearest point");
  EXPECT_EQ(graphModeText(4), "zoom to rectangle");
  EXPECT_EQ(graphModeText(2), "events only");
}

}  // namespace
}  // namespace zyn::viewer
