#include "common/ToolSizes.h"

#include <gtest/gtest.h>

namespace zyn::host {
namespace {

TEST(ToolSizesTest, AUsualToolSuitsThePath) {
  EXPECT_EQ(usualDiameter(108), 6);
  EXPECT_EQ(usualDiameter(107), 5);
  EXPECT_EQ(usualDiameter(0), 0.1);
  EXPECT_EQ(usualDiameter(1e6), 80);
}

TEST(ToolSizesTest, StepsLeadThroughAllAndEnd) {
  EXPECT_EQ(largerDiameter(6), 8);
  EXPECT_EQ(smallerDiameter(6), 5);
  EXPECT_EQ(largerDiameter(80), 80);
  EXPECT_EQ(smallerDiameter(0.1), 0.1);
}

}  // namespace
}  // namespace zyn::host
