#include "core/saturate.h"

#include <gtest/gtest.h>

namespace zyn::test {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(SaturateTest, IntegersKeepTheWholePart) {
  EXPECT_EQ(saturatedInteger(2.9), 2);
  EXPECT_EQ(saturatedInteger(-2.9), -2);
  EXPECT_EQ(saturatedInteger(-0.0), 0);
  EXPECT_EQ(saturatedInteger(2147483646.5), kMax - 1);
  EXPECT_EQ(saturatedInteger(-2147483647.5), kMin + 1);
}

TEST(SaturateTest, IntegersEndAtTheEndsOfTheirRange) {
  for (const double large : {2147483647.0, 2147483648.0, 1e300, kInfinity}) {
    EXPECT_EQ(saturatedInteger(large), kMax) << large;
    EXPECT_EQ(saturatedInteger(-large - 1), kMin) << large;
  }
  EXPECT_EQ(saturatedInteger(kNaN), 0);
}

TEST(SaturateTest, FloatsGoToInfinity) {
  EXPECT_EQ(saturatedFloat(0.1), 0.1F);
  EXPECT_EQ(saturatedFloat(-0.1), -0.1F);
  EXPECT_EQ(saturatedFloat(1e39), std::numeric_limits<float>::infinity());
  EXPECT_EQ(saturatedFloat(-1e39), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(saturatedFloat(-kInfinity), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(saturatedFloat(1e-60), 0.0F);
  EXPECT_TRUE(std::isnan(saturatedFloat(kNaN)));
}

}  // namespace
}  // namespace zyn::test
