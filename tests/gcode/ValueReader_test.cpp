#include "gcode/ValueReader.h"

#include <gtest/gtest.h>

#include <string>

#include "support/MotionLog.h"

namespace zyn {
namespace {

using test::errorOf;
using test::valueOf;

TEST(ValueReader, numbersAreTheNearest) {
  for (const char* const number :
       {"123.456789", "0.1234567890123456789", "123456789.0123456789", "9007199254.740993",
        "0.30000000000000004", ".5", "1.", "000000000000000000000000000001.25", "0"}) {
    EXPECT_EQ(valueOf(number), std::stod(number)) << number;
    EXPECT_EQ(valueOf(std::string("-") + number), -std::stod(number)) << number;
  }
  EXPECT_EQ(valueOf("+.5"), 0.5);
  EXPECT_EQ(valueOf("-0"), 0);
  EXPECT_EQ(valueOf("0." + std::string(400, '0') + "1"), 0);
}

TEST(ValueReader, blanksWithinNumbersAndNames) {
  EXPECT_EQ(valueOf(" + 0. 12 3\t4"), 0.1234);
  EXPECT_EQ(valueOf("1 2"), 12);
  EXPECT_EQ(valueOf("a b s [ - 3 ]"), 3);
  EXPECT_EQ(valueOf("[2 * * 3 m o d 5]"), 3);
}

TEST(ValueReader, operatorsByTheirRankAndFromTheLeft) {
  EXPECT_EQ(valueOf("[2+3*4**2]"), 50);
  EXPECT_EQ(valueOf("[2**3**2]"), 64);
  EXPECT_EQ(valueOf("[2.0 / 3 * 1.5 - 5.5 / 11.0]"), 0.5);
  EXPECT_EQ(valueOf("[10-4-3]"), 3);
  EXPECT_EQ(valueOf("[100/10/5]"), 2);
  EXPECT_EQ(valueOf("[2*[3+4]]"), 14);
  EXPECT_EQ(valueOf("[-2**2]"), 4);
  EXPECT_EQ(valueOf("[1 - -2]"), 3);
  EXPECT_EQ(valueOf("-[1+2]"), -3);
}

TEST(ValueReader, theRemainderIsNeverNegative) {
  EXPECT_EQ(valueOf("[7 mod 3]"), 1);
  EXPECT_EQ(valueOf("[-7 mod 3]"), 2);
  EXPECT_EQ(valueOf("[7 mod -3]"), 1);
  EXPECT_EQ(valueOf("[-6 mod 3]"), 0);
}

TEST(ValueReader, comparisonsAndLogic) {
  EXPECT_EQ(valueOf("[1 lt 2 and 3 gt 2]"), 1);
  EXPECT_EQ(valueOf("[1 eq 1 xor 2 ne 3]"), 0);
  EXPECT_EQ(valueOf("[2 le 1 or 2 ge 2]"), 1);
  EXPECT_EQ(valueOf("[5 and 0]"), 0);
  EXPECT_EQ(valueOf("[1+1 eq 2]"), 1);
  EXPECT_EQ(valueOf("[1 and sin[30] gt .4]"), 1);
}

TEST(ValueReader, functions) {
  EXPECT_EQ(valueOf("abs[-3]"), 3);
  EXPECT_DOUBLE_EQ(valueOf("acos[0.5]"), 60);
  EXPECT_DOUBLE_EQ(valueOf("asin[-0.5]"), -30);
  EXPECT_DOUBLE_EQ(valueOf("atan[1]/[-1]"), 135);
  EXPECT_DOUBLE_EQ(valueOf("cos[60]"), 0.5);
  EXPECT_DOUBLE_EQ(valueOf("exp[1]"), 2.718281828459045);
  EXPECT_EQ(valueOf("fix[-2.5]"), -3);
  EXPECT_EQ(valueOf("fup[-2.5]"), -2);
  EXPECT_DOUBLE_EQ(valueOf("ln[10]"), 2.302585092994046);
  EXPECT_EQ(valueOf("round[-2.5]"), -3);
  EXPECT_EQ(valueOf("round[2.4]"), 2);
  EXPECT_DOUBLE_EQ(valueOf("SIN[30]"), 0.5);
  EXPECT_EQ(valueOf("sqrt[16]"), 4);
  EXPECT_DOUBLE_EQ(valueOf("tan[45]"), 1);
  EXPECT_DOUBLE_EQ(valueOf("[2*abs[-3]+sqrt[abs[-4]]]"), 8);
}

TEST(ValueReader, parameters) {
  const auto end = [](const char* program) { return test::readProgram(program).end[0]; };
  EXPECT_EQ(end("#1=5\n#2=[#1*2]\nG0 X#2"), 10);
  EXPECT_EQ(end("#3=15\n#3=6 G0 X#3"), 15) << "set when the line has been read";
  EXPECT_EQ(end("#3=6 #3=7\nG0 X#3"), 7);
  EXPECT_EQ(end("#1=2\n#2=9\nG0 X##1"), 9);
  EXPECT_EQ(end("#[1+1] = 4\nG0 X-#2"), -4);
  EXPECT_EQ(end("G0 X#5399"), 0);
  EXPECT_EQ(end("G0 X[#5220]"), 1);
}

TEST(ValueReader, parametersWithNames) {
  const auto end = [](const char* program) { return test::readProgram(program).end[0]; };
  EXPECT_EQ(end("#<depth>=2.5\nG0 X[-#<depth>*2]"), -5);
  EXPECT_EQ(end("#<a b>=1 #<c> = 2\n#<AB>=3 G0 X#< A b >"), 1);
  EXPECT_EQ(end("#<a>=4\n#4=7\nG0 X##<a>"), 7);
  EXPECT_EQ(errorOf("G0 X#<a>"), "1:5 the parameter has no value yet");
  EXPECT_EQ(errorOf("#<a>=#<a>"), "1:6 the parameter has no value yet");
  EXPECT_EQ(errorOf("#<a=1"), "1:1 > is missing");
}

TEST(ValueReader, whatIsNoValue) {
  EXPECT_EQ(errorOf("G0 X"), "1:4 a number is missing");
  EXPECT_EQ(errorOf("G0 X Y1"), "1:4 a number is missing");
  EXPECT_EQ(errorOf("G0 X--1"), "1:4 a number is missing");
  EXPECT_EQ(errorOf("G0 X."), "1:5 a point without digits");
  EXPECT_EQ(errorOf("G0 X1.2.3"), "1:8 a word cannot begin with this character");
  EXPECT_EQ(errorOf("G0 X" + std::string(400, '9')), "1:5 the number is too large");
  EXPECT_EQ(errorOf("G0 X[1+]"), "1:8 a number is missing");
  EXPECT_EQ(errorOf("G0 X[1"), "1:7 ] is missing");
  EXPECT_EQ(errorOf("G0 X[1 foo 2]"), "1:8 neither an operator nor ]");
  EXPECT_EQ(errorOf("G0 X[1 2 ~]"), "1:10 neither an operator nor ]");
  EXPECT_EQ(errorOf("G0 Xfoo[2]"), "1:4 a number is missing");
  EXPECT_EQ(errorOf("G0 Xsin 2"), "1:4 a number is missing");
  EXPECT_EQ(errorOf("G0 Xatan[1]/2"), "1:13 [ is missing");
  EXPECT_EQ(errorOf("G0 Xatan[1]"), "1:12 ATAN needs two values: ATAN[y]/[x]");
}

TEST(ValueReader, whatIsNotFinite) {
  const std::string cause = " the result is not a finite number";
  EXPECT_EQ(errorOf("G0 X[1/0]"), "1:7" + cause);
  EXPECT_EQ(errorOf("G0 X[2+sqrt[-1]]"), "1:8" + cause);
  EXPECT_EQ(errorOf("G0 Xln[0]"), "1:5" + cause);
  EXPECT_EQ(errorOf("G0 Xacos[2]"), "1:5" + cause);
  EXPECT_EQ(errorOf("G0 X[1 mod 0]"), "1:8" + cause);
  EXPECT_EQ(errorOf("G0 X[[-1]**.5]"), "1:10" + cause);
  EXPECT_EQ(errorOf("G0 X[10**400]"), "1:8" + cause);
  EXPECT_EQ(errorOf("#1=exp[1000]"), "1:4" + cause);
}

TEST(ValueReader, parametersHaveNumbers) {
  const std::string cause = " parameters have whole numbers from 1 to 5399";
  EXPECT_EQ(errorOf("#0=1"), "1:1" + cause);
  EXPECT_EQ(errorOf("G0 X#5400"), "1:5" + cause);
  EXPECT_EQ(errorOf("G0 X#1.5"), "1:5" + cause);
  EXPECT_EQ(errorOf("G0 X[1+#-1]"), "1:8" + cause);
  EXPECT_EQ(errorOf("#1 5"), "1:5 = is missing");
}

TEST(ValueReader, valuesWithinOneAnotherEnd) {
  const auto nested = [](std::size_t depth, const std::string& open, const std::string& close) {
    std::string program = "G0 X";
    for (std::size_t i = 0; i < depth; ++i) {
      program += open;
    }
    program += "1";
    for (std::size_t i = 0; i < depth; ++i) {
      program += close;
    }
    return program;
  };
  EXPECT_EQ(errorOf(nested(100, "[", "]")), "");
  EXPECT_EQ(errorOf(nested(101, "[", "]")), "1:105 more than 100 values within one another");
  EXPECT_EQ(errorOf(nested(1000000, "abs[", "]")).substr(0, 5), "1:405");
  EXPECT_EQ(errorOf(nested(1000000, "#", "")).substr(0, 5), "1:105");
  EXPECT_EQ(errorOf("G0 X[1" + std::string(1000000, '+') + "]").substr(0, 3), "1:9");
}

}  // namespace
}  // namespace zyn
