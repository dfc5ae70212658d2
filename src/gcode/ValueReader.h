#pragma once

#include <optional>
#include <string_view>

#include "gcode/Parameters.h"
#include "gcode/ProgramText.h"

namespace zyn {

/// The whole number that a value is meant to be, if it is near one.
std::optional<int> wholeNumber(double value);

/// Reads the values of words: numbers, parameters, functions and expressions in brackets, each with
/// a sign. Powers bind closest, then * / MOD, + -, comparisons, AND OR XOR; all from the left.
class ValueReader {
 public:
  ValueReader(ProgramText& text, Parameters& parameters) : text_(text), parameters_(parameters) {}

  /// Whether what is next may begin a value.
  bool isNext();

  /// Reads one, which is finite; errors that it is missing are told of the place of its word.
  double value(const char* word) {
    return isDigit(text_.peek()) ? text_.number() : signedValue(word);
  }

  /// Reads the number or the name of a parameter, behind its #; the answer is its number.
  int parameter(const char* hash);

  /// What a function of one value is called and makes; null for the one of two.
  struct Function {
    std::string_view name;
    double (*of)(double);
  };

 private:
  enum class Kind {
    kNone,
    kEnd,
    kPower,
    kTimes,
    kOver,
    kModulo,
    kPlus,
    kMinus,
    kEqual,
    kNotEqual,
    kGreater,
    kGreaterOrEqual,
    kLess,
    kLessOrEqual,
    kAnd,
    kOr,
    kXor
  };
  struct Operator {
    std::string_view name;
    Kind kind = Kind::kNone;
    int level = 0;
  };
  /// One that was read, and where.
  struct OperatorHere : Operator {
    const char* place = nullptr;
  };
  double signedValue(const char* word);
  double unsignedValue(const char* word);
  int namedParameter(const char* hash);
  double bracket();
  double climb(double left, int lowest);
  const Function* passFunction();
  double arcTangent(double y);
  template <typename Named>
  const Named* oneOf(const Named* begin, const Named* end);
  void readOperator();
  Operator signOf(char c);
  double applied(const OperatorHere& to, double left, double right) const;
  double finite(const char* place, double value) const;

  ProgramText& text_;
  Parameters& parameters_;
  OperatorHere next_;
  int depth_ = 0;
};

}  // namespace zyn
