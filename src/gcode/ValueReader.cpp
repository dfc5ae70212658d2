#include "gcode/ValueReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>

namespace zyn {

namespace {

constexpr int kDeepest = 100;
constexpr double kDegree = std::numbers::pi / 180;

/// Counts values within one another.
class Deeper {
 public:
  explicit Deeper(int& depth) : depth_(depth) { ++depth_; }
  Deeper(const Deeper&) = delete;
  Deeper& operator=(const Deeper&) = delete;
  ~Deeper() { --depth_; }

 private:
  int& depth_;
};

constexpr std::array<ValueReader::Function, 13> kFunctions = {{
    {"abs", [](double x) { return std::abs(x); }},
    {"acos", [](double x) { return std::acos(x) / kDegree; }},
    {"asin", [](double x) { return std::asin(x) / kDegree; }},
    {"atan", nullptr},
    {"cos", [](double x) { return std::cos(x * kDegree); }},
    {"exp", [](double x) { return std::exp(x); }},
    {"fix", [](double x) { return std::floor(x); }},
    {"fup", [](double x) { return std::ceil(x); }},
    {"ln", [](double x) { return std::log(x); }},
    {"round", [](double x) { return std::round(x); }},
    {"sin", [](double x) { return std::sin(x * kDegree); }},
    {"sqrt", [](double x) { return std::sqrt(x); }},
    {"tan", [](double x) { return std::tan(x * kDegree); }},
}};

/// The remainder that is never negative.
double modulo(double left, double right) {
  const double rest = std::fmod(left, right);
  return rest < 0 ? rest + std::abs(right) : rest;
}

double truth(bool holds) { return holds ? 1 : 0; }

}  // namespace

std::optional<int> wholeNumber(double value) {
  const double nearest = std::round(value);
  const bool isWhole = std::abs(nearest) <= 1e9 && std::abs(value - nearest) <= 1e-4;
  return isWhole ? std::optional(static_cast<int>(nearest)) : std::nullopt;
}

bool ValueReader::isNext() {
  const char c = text_.peek();
  if (!isLetter(c)) {
    return isDigit(c) || std::string_view("+-.[#").find(c) != std::string_view::npos;
  }
  const char* const begin = text_.place();
  const bool isFunction = passFunction() != nullptr;
  text_.goBack(begin);
  return isFunction;
}

double ValueReader::signedValue(const char* word) {
  const char sign = text_.peek();
  if (sign != '-' && sign != '+') {
    return unsignedValue(word);
  }
  text_.pass();
  const double value = unsignedValue(word);
  return sign == '-' ? -value : value;
}

double ValueReader::unsignedValue(const char* word) {
  const char c = text_.peek();
  if (isDigit(c) || c == '.') {
    return text_.number();
  }
  const char* const place = text_.place();
  const Deeper deeper(depth_);
  if (depth_ > kDeepest) {
    text_.fail(place, "more than " + std::to_string(kDeepest) + " values within one another");
  }
  if (c == '[') {
    return bracket();
  }
  if (c == '#') {
    text_.pass();
    const double value = parameters_[parameter(place)];
    if (std::isnan(value)) {
      text_.fail(place, "the parameter has no value yet");
    }
    return value;
  }
  if (const Function* const function = passFunction()) {
    const double x = bracket();
    return finite(place, function->of ? function->of(x) : arcTangent(x));
  }
  text_.fail(word ? word : place, "a number is missing");
}

int ValueReader::parameter(const char* hash) {
  if (text_.passIf('<')) {
    return namedParameter(hash);
  }
  const std::optional<int> number = wholeNumber(value(hash));
  if (!number || *number < 1 || *number > Parameters::kLast) {
    text_.fail(hash,
               "parameters have whole numbers from 1 to " + std::to_string(Parameters::kLast));
  }
  return *number;
}

int ValueReader::namedParameter(const char* hash) {
  std::string name;
  while (!text_.passIf('>')) {
    const char c = text_.peek();
    if (c == '\n') {
      text_.fail(hash, "> is missing");
    }
    name += lowerCase(c);
    text_.pass();
  }
  return parameters_.numberOf(name);
}

double ValueReader::bracket() {
  if (!text_.passIf('[')) {
    text_.fail(text_.place(), "[ is missing");
  }
  const double first = value(nullptr);
  readOperator();
  return climb(first, 1);
}

/// Takes all operators of at least the lowest level into `left`.
double ValueReader::climb(double left, int lowest) {
  while (next_.level >= lowest) {
    const OperatorHere now = next_;
    double right = value(nullptr);
    readOperator();
    if (next_.level > now.level) {
      right = climb(right, now.level + 1);
    }
    left = applied(now, left, right);
  }
  return left;
}

/// Reads letters until they are one of the names, none of which begins another; null where they
/// become none.
template <typename Named>
const Named* ValueReader::oneOf(const Named* begin, const Named* end) {
  char letters[5];
  for (std::size_t length = 0; length < sizeof letters && isLetter(text_.peek());) {
    letters[length++] = lowerCase(text_.peek());
    text_.pass();
    const std::string_view name(letters, length);
    const Named* const found =
        std::find_if(begin, end, [&](const Named& named) { return named.name == name; });
    if (found != end) {
      return found;
    }
  }
  return nullptr;
}

/// Passes over the name of a function that is next, a bracket behind it; null where there is none.
const ValueReader::Function* ValueReader::passFunction() {
  text_.peek();
  const char* const begin = text_.place();
  const Function* const found = oneOf(kFunctions.data(), kFunctions.data() + kFunctions.size());
  if (found && text_.peek() == '[') {
    return found;
  }
  text_.goBack(begin);
  return nullptr;
}

/// ATAN[y]/[x], behind its first bracket.
double ValueReader::arcTangent(double y) {
  if (!text_.passIf('/')) {
    text_.fail(text_.place(), "ATAN needs two values: ATAN[y]/[x]");
  }
  return std::atan2(y, bracket()) / kDegree;
}

void ValueReader::readOperator() {
  static constexpr std::array<Operator, 10> kNamed = {{
      {"mod", Kind::kModulo, 4},
      {"eq", Kind::kEqual, 2},
      {"ne", Kind::kNotEqual, 2},
      {"gt", Kind::kGreater, 2},
      {"ge", Kind::kGreaterOrEqual, 2},
      {"lt", Kind::kLess, 2},
      {"le", Kind::kLessOrEqual, 2},
      {"and", Kind::kAnd, 1},
      {"or", Kind::kOr, 1},
      {"xor", Kind::kXor, 1},
  }};
  const char c = text_.peek();
  const char* const place = text_.place();
  if (isLetter(c)) {
    const Operator* const found = oneOf(kNamed.data(), kNamed.data() + kNamed.size());
    next_ = {found ? *found : Operator(), place};
  } else if (c != '\n') {
    text_.pass();
    next_ = {signOf(c), place};
  }
  if (c == '\n') {
    text_.fail(place, "] is missing");
  }
  if (next_.kind == Kind::kNone) {
    text_.fail(place, "neither an operator nor ]");
  }
}

/// The operator that a character begins, which has been passed over.
ValueReader::Operator ValueReader::signOf(char c) {
  switch (c) {
    case ']':
      return {"]", Kind::kEnd, 0};
    case '*':
      return text_.passIf('*') ? Operator{"**", Kind::kPower, 5} : Operator{"*", Kind::kTimes, 4};
    case '/':
      return {"/", Kind::kOver, 4};
    case '+':
      return {"+", Kind::kPlus, 3};
    case '-':
      return {"-", Kind::kMinus, 3};
    default:
      return {};
  }
}

double ValueReader::applied(const OperatorHere& to, double left, double right) const {
  switch (to.kind) {
    case Kind::kPower:
      return finite(to.place, std::pow(left, right));
    case Kind::kTimes:
      return finite(to.place, left * right);
    case Kind::kOver:
      return finite(to.place, left / right);
    case Kind::kModulo:
      return finite(to.place, modulo(left, right));
    case Kind::kPlus:
      return finite(to.place, left + right);
    case Kind::kMinus:
      return finite(to.place, left - right);
    case Kind::kEqual:
      return truth(left == right);
    case Kind::kNotEqual:
      return truth(left != right);
    case Kind::kGreater:
      return truth(left > right);
    case Kind::kGreaterOrEqual:
      return truth(left >= right);
    case Kind::kLess:
      return truth(left < right);
    case Kind::kLessOrEqual:
      return truth(left <= right);
    case Kind::kAnd:
      return truth(left != 0 && right != 0);
    case Kind::kOr:
      return truth(left != 0 || right != 0);
    default:
      return truth((left != 0) != (right != 0));
  }
}

double ValueReader::finite(const char* place, double value) const {
  if (!std::isfinite(value)) {
    text_.fail(place, "the result is not a finite number");
  }
  return value;
}

}  // namespace zyn
