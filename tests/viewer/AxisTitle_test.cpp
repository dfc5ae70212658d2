#include "viewer/AxisTitle.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(AxisTitleTest, UnitsStandInBrackets) {
  const auto split = [](const char* name) {
    const AxisTitle title = axisTitle(name);
    return title.name + '|' + title.unit;
  };
  EXPECT_EQ(split("Temperature [K]"), "Temperature|K");
  EXPECT_EQ(split("Temperatur (\u00b0C)"), "Temperatur|\u00b0C");
  EXPECT_EQ(split("Flow (m3/h)"), "Flow|m3/h");
  EXPECT_EQ(split("JAN"), "JAN|");
  EXPECT_EQ(split("sin(x) of it"), "sin(x) of it|");
  EXPECT_EQ(split("[K]"), "[K]|");
  EXPECT_EQ(split("T[]"), "T|");
  EXPECT_EQ(split(""), "|");
}

TEST(AxisTitleTest, AsTextTheUnitStandsBehindTheName) {
  EXPECT_EQ(axisTitle("T [K]").text(), "T (K)");
  EXPECT_EQ(axisTitle("JAN").text(), "JAN");
}

}  // namespace
}  // namespace zyn::viewer
