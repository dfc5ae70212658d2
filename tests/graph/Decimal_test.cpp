#include "graph/Decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace zyn::test {
namespace {

TEST(DecimalTest, IsTheNearestDouble) {
  EXPECT_EQ((Decimal{3, -1}.value()), 0.3);
  EXPECT_EQ((Decimal{7, -1}.value()), 0.7);
  EXPECT_EQ((Decimal{-12, 2}.value()), -1200);
  EXPECT_EQ((Decimal{9007199254740993, 0}.value()), 9007199254740992.0);
  std::mt19937_64 random(1);
  std::uniform_int_distribution<std::int64_t> digits(-4'000'000'000'000'000'000,
                                                     4'000'000'000'000'000'000);
  std::uniform_int_distribution<int> exponent(-320, 285);
  for (int i = 0; i < 20000; ++i) {
    const Decimal number{digits(random) >> (i % 60), exponent(random)};
    const std::string text = std::to_string(number.digits) + "e" + std::to_string(number.exponent);
    EXPECT_EQ(number.value(), std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(DecimalTest, GoesToBothEndsOfTheDoubles) {
  EXPECT_EQ((Decimal{5, -324}.value()), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ((Decimal{17976931348623157, 292}.value()), std::numeric_limits<double>::max());
  EXPECT_EQ((Decimal{2, 308}.value()), std::numeric_limits<double>::infinity());
  EXPECT_EQ((Decimal{-2, 308}.value()), -std::numeric_limits<double>::infinity());
  EXPECT_EQ((Decimal{1, -324}.value()), 0.0);
  EXPECT_FALSE(std::signbit(Decimal{0, 5}.value()));
}

TEST(DecimalTest, IsWrittenOutExactly) {
  EXPECT_EQ((Decimal{0, 0}.text()), "0");
  EXPECT_EQ((Decimal{0, 3}.text()), "0");
  EXPECT_EQ((Decimal{0, -2}.text()), "0.00");
  EXPECT_EQ((Decimal{30, -2}.text()), "0.30");
  EXPECT_EQ((Decimal{-3, -1}.text()), "-0.3");
  EXPECT_EQ((Decimal{-3, -4}.text()), "-0.0003");
  EXPECT_EQ((Decimal{12345, -2}.text()), "123.45");
  EXPECT_EQ((Decimal{12, 3}.text()), "12000");
  EXPECT_EQ((Decimal{12, 3}.text(2)), "12000.00");
  EXPECT_EQ((Decimal{12, -1}.text(3)), "1.200");
}

TEST(DecimalTest, KnowsItsSize) {
  EXPECT_EQ((Decimal{0, -7}.magnitude()), 0);
  EXPECT_EQ((Decimal{1, -7}.magnitude()), -7);
  EXPECT_EQ((Decimal{-999, 0}.magnitude()), 2);
  EXPECT_EQ((Decimal{-1200, -2}.stripped()), (Decimal{-12, 0}));
  EXPECT_EQ((Decimal{0, -2}.stripped()), (Decimal{0, -2}));
}

TEST(DecimalTest, ExponentsAreRaised) {
  EXPECT_EQ(superscript(0), "⁰");
  EXPECT_EQ(superscript(-1234567890), "⁻¹²³⁴⁵⁶⁷⁸⁹⁰");
}

}  // namespace
}  // namespace zyn::test
