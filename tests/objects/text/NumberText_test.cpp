#include "objects/text/NumberText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

namespace zyn {
namespace {

using Limits = std::numeric_limits<double>;

TEST(NumberText, HasTenDigitsAtMost) {
  EXPECT_EQ(numberText(0), "0");
  EXPECT_EQ(numberText(-0.0), "-0");
  EXPECT_EQ(numberText(1234.5), "1234.5");
  EXPECT_EQ(numberText(-7), "-7");
  EXPECT_EQ(numberText(0.1), "0.1");
  EXPECT_EQ(numberText(1.0 / 3), "0.3333333333");
  EXPECT_EQ(numberText(12345678901.0), "1.23456789e+10");
  EXPECT_EQ(numberText(1e-5), "1e-05");
  EXPECT_EQ(numberText(1e300), "1e+300");
  EXPECT_EQ(numberText(9999999999.6), "1e+10");
}

TEST(NumberText, OfWhatIsNoNumber) {
  EXPECT_EQ(numberText(Limits::infinity()), "inf");
  EXPECT_EQ(numberText(-Limits::infinity()), "-inf");
  EXPECT_EQ(numberText(Limits::quiet_NaN()), "nan");
  EXPECT_EQ(numberText(-Limits::quiet_NaN()), "nan");
}

TEST(NumberText, IsThatOfPrintf) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20'000; ++i) {
    const auto bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (!(value == value)) {
      continue;
    }
    char expected[80];
    std::snprintf(expected, sizeof expected, "%.10g", value);
    ASSERT_EQ(numberText(value), expected);
  }
}

}  // namespace
}  // namespace zyn
