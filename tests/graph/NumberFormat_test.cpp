#include "graph/NumberFormat.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

namespace zyn::test {
namespace {

std::string text(const char* format, double value) { return NumberFormat(format).text(value); }

TEST(NumberFormatTest, WritesANumberWithinItsText) {
  EXPECT_EQ(text("%.2f kg", 1.5), "1.50 kg");
  EXPECT_EQ(text("%g", 1e6), "1e+06");
  EXPECT_EQ(text("%5d|", 42), "   42|");
  EXPECT_EQ(text("%.1f %%", 12.34), "12.3 %");
  EXPECT_EQ(text("100%% of %-6.3gm", 0.25), "100% of 0.25  m");
  EXPECT_EQ(text("%.1lf µm", 2.0), "2.0 µm");
  EXPECT_EQ(text("%X", 255.0), "FF");
  EXPECT_EQ(text("%#x", 255.0), "0xff");
  EXPECT_EQ(text("%a", 1.5), "0x1.8p+0");
}

TEST(NumberFormatTest, WholeNumbersAreRounded) {
  EXPECT_EQ(text("%d", 2.6), "3");
  EXPECT_EQ(text("%i", -2.6), "-3");
  EXPECT_EQ(text("%u", 0.4), "0");
  EXPECT_EQ(text("%d", 1e300).size(), 301U);
  EXPECT_EQ(text("%x", 0x1p100), std::string("1").append(25, '0'));
  EXPECT_EQ(text("%x", -31.0), "-1f");
}

TEST(NumberFormatTest, ZeroHasNoSign) {
  EXPECT_EQ(text("%.1f", -0.04), "0.0");
  EXPECT_EQ(text("%g", -0.0), "0");
  EXPECT_EQ(text("%d", -0.4), "0");
  EXPECT_EQ(text("%.0e", -0.0), "0e+00");
  EXPECT_EQ(text("%+.1f", -0.01), "+0.0");
  EXPECT_EQ(text("%.2f", -0.01), "-0.01");
}

TEST(NumberFormatTest, WhatIsNoNumberSaysSo) {
  EXPECT_EQ(text("%06.1f", std::nan("")), "   nan");
  EXPECT_EQ(text("%d", -std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(text("%G", std::numeric_limits<double>::infinity()), "INF");
}

TEST(NumberFormatTest, RefusesWhatIsNoFormatOfOneNumber) {
  for (const char* bad : {"",          "kg",
                          "%",         "%%",
                          "%.2",       "%5",
                          "%l",        "%s",
                          "%n",        "%c",
                          "%p",        "%*d",
                          "%.*f",      "%100f",
                          "%.100f",    "%f %f",
                          "%d%s",      "%f%",
                          "%'d",       "%1$d",
                          "%-",        "%99999999999d",
                          "%\xC2\xB5", "%F%n"}) {
    EXPECT_THROW(NumberFormat{bad}, std::invalid_argument) << bad;
  }
  try {
    NumberFormat("%s");
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "%s is no conversion of a number");
  }
}

/// What printf writes, but for the sign of zeros.
std::string printed(const std::string& format, double value, bool isInteger) {
  char buffer[1000];
  const int length = isInteger
                         ? std::snprintf(buffer, sizeof buffer, format.c_str(), std::llround(value))
                         : std::snprintf(buffer, sizeof buffer, format.c_str(), value);
  return {buffer, static_cast<std::size_t>(length)};
}

TEST(NumberFormatTest, AgreesWithPrintf) {
  std::mt19937 random(1);
  const auto chance = [&](int of) { return std::uniform_int_distribution<int>(0, of - 1)(random); };
  for (int i = 0; i < 100000; ++i) {
    const char conversion = "diuoxXeEfFgGaA"[chance(14)];
    const bool isInteger = std::string("diuoxX").find(conversion) != std::string::npos;
    const bool isHex = conversion == 'a' || conversion == 'A';
    std::string format = "<%";
    for (const char flag : {'-', '+', ' ', '0', '#'}) {
      // What follows has no sign or no such form.
      const bool isSign = flag == '+' || flag == ' ';
      const bool isUnsigned = std::string("uoxX").find(conversion) != std::string::npos;
      const bool hasForm = std::string("diu").find(conversion) == std::string::npos;
      if (chance(4) == 0 && !(isSign && isUnsigned) && (flag != '#' || hasForm)) {
        format += flag;
      }
    }
    if (chance(2) == 0) {
      format += std::to_string(1 + chance(30));
    }
    if (chance(2) == 0) {
      format += '.';
      format += std::to_string(isHex ? 13 + chance(20) : chance(25));
    }
    format += std::string(isInteger ? "ll" : "") + conversion + ">";
    double value = std::ldexp(std::uniform_real_distribution<double>(1, 2)(random),
                              isInteger ? chance(50) - 5 : chance(200) - 100);
    value = chance(20) == 0 ? std::round(value) : value;
    if (isInteger && conversion != 'd' && conversion != 'i') {
      value = std::round(value);
    } else if (chance(2) == 0 && std::round(value) != 0 && std::abs(value) > 1) {
      value = -value;
    }
    ASSERT_EQ(NumberFormat(format).text(value), printed(format, value, isInteger))
        << format << " of " << value;
  }
}

TEST(NumberFormatTest, HasAPointInEveryLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "C.UTF-8"}) {
    std::setlocale(LC_ALL, locale);
    EXPECT_EQ(text("%.1f", 0.5), "0.5");
  }
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace zyn::test
